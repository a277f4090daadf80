#include "menu/titlemenu.h"

#include "audio/core.h"
#include "controls/queue.h"
#include "files/sysdirs.h"
#include "framework/application.h"
#include "gui/standard.h"
#include "menu/menu.h"
#include "resources/resources.h"
#include "screenshot.h"
#include "vantorix.h"

using namespace vantorix;

namespace {

// Destroying an application ends the process, so one lives for all tests.
norvane::FrameRateLimitedApplication* loop() {
    static auto* app = new norvane::FrameRateLimitedApplication;
    return app;
}

void push(SDL_Event event) { ASSERT_EQ(SDL_PushEvent(&event), 0); }

}  // namespace

void TitleMenu::SetUp() {
    GameWindow::SetUp();
    if (HasFatalFailure() || IsSkipped()) return;
    installData();
    norvane::mkdirs(TEST_TMP_DIR "/");  // the wave writer's file goes there
    loop();                             // states activate themselves in the application
    captured([this] {
        norvane::audio::init("", 44100);
        resources = new Resources;
        resources->setResolution(800, 600, 32, false);
        resources->init();
        menu = new Menu;
        vantorix::menu = menu;
        menu->activate();
    });
    loop()->queue = resources->queue;
}

void TitleMenu::TearDown() {
    delete vantorix::menu;
    delete resources;
    resources = nullptr;
    norvane::audio::cleanUp();
    GameWindow::TearDown();
}

void TitleMenu::frames(int count) {
    for (int i = 0; i < count && loop()->state; ++i) loop()->perform(10);
}

void TitleMenu::finishLoading() {
    for (int i = 0; i < 3000 && !resources->loaded; ++i) frames();
    ASSERT_TRUE(resources->loaded);
}

void TitleMenu::key(SDLKey sym, Uint16 unicode) {
    SDL_Event event{};
    event.key.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.keysym.sym = sym;
    event.key.keysym.unicode = unicode;
    push(event);
    event.key.type = SDL_KEYUP;
    event.key.state = SDL_RELEASED;
    event.key.keysym.unicode = 0;
    push(event);
    frames();
}

void TitleMenu::joyAxis(Uint8 axis, Sint16 value) {
    SDL_Event event{};
    event.jaxis.type = SDL_JOYAXISMOTION;
    event.jaxis.which = 0;
    event.jaxis.axis = axis;
    event.jaxis.value = value;
    push(event);
    frames();
    event.jaxis.value = 0;
    push(event);
    frames();
}

void TitleMenu::joyButton(Uint8 button) {
    SDL_Event event{};
    event.jbutton.type = SDL_JOYBUTTONDOWN;
    event.jbutton.which = 0;
    event.jbutton.button = button;
    event.jbutton.state = SDL_PRESSED;
    push(event);
    event.jbutton.type = SDL_JOYBUTTONUP;
    event.jbutton.state = SDL_RELEASED;
    push(event);
    frames();
}

void TitleMenu::mouseTo(int x, int y) {
    SDL_Event event{};
    event.motion.type = SDL_MOUSEMOTION;
    event.motion.x = static_cast<Uint16>(x);
    event.motion.y = static_cast<Uint16>(y);
    push(event);
    frames();
}

norvane::gui::Component* TitleMenu::component(const std::string& name) const {
    norvane::gui::Component* found = (*resources->gui)[name];
    EXPECT_NE(found, nullptr) << name;
    return found;
}

bool TitleMenu::focusIs(const std::string& name) const { return resources->gui->getFocused() == component(name); }

bool TitleMenu::shown(const std::string& name) const {
    const norvane::gui::Component* c = component(name);
    return c && c->getVisible();
}

std::string TitleMenu::caption(const std::string& labelName) const {
    auto* label = dynamic_cast<norvane::gui::Label*>(component(labelName));
    return label ? label->getCaption() : "(no label)";
}

std::string TitleMenu::screenshot(const std::string& name) {
    const std::string dir = TEST_TMP_DIR "/menu/";
    norvane::mkdirs(dir);
    const std::string path = dir + name + ".png";
    norvane::saveScreenshot(path.c_str());
    return path;
}
