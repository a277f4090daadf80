#include "menu/titlemenu.h"

#include "audio/core.h"
#include "framework/application.h"
#include "gui/standard.h"
#include "menu/menu.h"
#include "support/events.h"
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
    loop();  // states activate themselves in the application
    captured([this] {
        norvane::audio::init("", 44100);
        resources = new Resources;
        resources->setResolution(800, 600, 32, false);
        resources->init();
        vantorix::menu = menu = new Menu;
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
    frames();
    EXPECT_EQ(resources->logoColor.alpha, 1.0f) << "the logo, faded in while loading, stands whole";
}

void TitleMenu::keys(std::initializer_list<SDLKey> syms) {
    for (SDLKey sym : syms) {
        // Return, Tab and Backspace type their character; Escape none.
        push(keyEvent(sym, true, sym < 128 && sym != SDLK_ESCAPE ? static_cast<Uint16>(sym) : 0));
        push(keyEvent(sym, false));
        frames();
    }
}

void TitleMenu::joyAxis(Uint8 axis, Sint16 value) {
    for (Sint16 v : {value, Sint16{0}}) {
        push(joyAxisEvent(0, axis, v));
        frames();
    }
}

void TitleMenu::joyButtons(std::initializer_list<Uint8> buttons) {
    for (Uint8 button : buttons) {
        push(joyButtonEvent(0, button, true));
        push(joyButtonEvent(0, button, false));
        frames();
    }
}

void TitleMenu::mouseTo(int x, int y) {
    push(mouseMotionEvent(static_cast<Uint16>(x), static_cast<Uint16>(y)));
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
