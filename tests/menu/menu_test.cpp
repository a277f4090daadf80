#include <utility>
#include <vector>

#include "audio/music.h"
#include "controls/inputevaluator.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "menu/layout.h"
#include "menu/menu.h"
#include "menu/titlemenu.h"
#include "screen.h"
#include "vantorix.h"

using namespace vantorix;

namespace {

// The brightest pixel of a rectangle of a window screenshot (y upwards), as r + g + b, and its colour.
int brightest(const SurfacePtr& shot, const norvane::basic_Rect<float>& r, Rgba* colour = nullptr) {
    int best = 0;
    for (int y = static_cast<int>(r.y); y < r.y + r.height; y += 2) {
        for (int x = static_cast<int>(r.x); x < r.x + r.width; ++x) {
            const Rgba c = pixelAt(shot.get(), x, shot->h - 1 - y);
            if (c.r + c.g + c.b <= best) continue;
            best = c.r + c.g + c.b;
            if (colour) *colour = c;
        }
    }
    return best;
}

// Every visible widget of `panel` left its mark: buttons their blue fill, checkboxes their box,
// labels with a caption some bright text.
void expectDrawn(const SurfacePtr& shot, const norvane::gui::Component* panel) {
    for (const norvane::gui::Component* c : panel->getChildren()) {
        if (!c->getVisible()) continue;
        const norvane::basic_Rect<float> r = absoluteRect(c);
        const Rgba fill = pixelAt(shot.get(), static_cast<int>(r.x + 4), shot->h - 1 - static_cast<int>(r.y + r.height / 2));
        if (dynamic_cast<const norvane::gui::Button*>(c)) {  // filled left of the caption
            EXPECT_TRUE(fill.b > 80 && fill.b > fill.r + 40) << c->getName();
        } else if (dynamic_cast<const norvane::gui::Checkbox*>(c)) {
            EXPECT_GT(brightest(shot, {r.x - 20, r.y, 20, 20}), 300) << c->getName();
        } else if (auto* label = dynamic_cast<const norvane::gui::Label*>(c); label && !label->getCaption().empty()) {
            EXPECT_GT(brightest(shot, r), 350) << c->getName();
        }
    }
}

}  // namespace

TEST_F(TitleMenu, StartsOnTheCreditsAndQuitsAtOnceWhileLoading) {
    EXPECT_FALSE(resources->loaded || shown("pMainMenu") || resources->evaluatorMenu->enabled);
    EXPECT_TRUE(shown("pCredits"));
    keys({SDLK_ESCAPE});  // no menu keys yet: the credits panel's own button goes back
    ASSERT_NE(vantorix::menu, nullptr);
    keys({SDLK_RETURN});
    EXPECT_EQ(vantorix::menu, nullptr) << "back during loading ends the menu without asking";
}

TEST_F(TitleMenu, AttractPagesFollowTheirTimersAndAnyInputReturns) {
    finishLoading();
    std::vector<std::pair<int, int>> changes;  // (ms untouched, new page)
    int page = menu->page;
    for (int ms = 100; ms <= 130000; ms += 100) {
        menu->doPerform(0, 100);
        if (menu->page != page) changes.emplace_back(ms, page = menu->page);
        if (page == 1) {
            EXPECT_FALSE(resources->gui->getVisible() || resources->gui->getActive());
        }
    }
    EXPECT_EQ(changes, (std::vector<std::pair<int, int>>{{30000, 1}, {50000, 2}, {70000, 3}, {130000, 0}}));
    EXPECT_TRUE(resources->gui->getVisible() && resources->gui->getActive());

    for (int ms = 0; ms < 50000; ms += 100) menu->doPerform(0, 100);
    ASSERT_EQ(menu->page, 2);
    keys({SDLK_ESCAPE});
    EXPECT_EQ(menu->page, 0);
    EXPECT_TRUE(resources->gui->getVisible() && focusIs("btnSinglePlayerA"));
    EXPECT_GE(menu->pageTimer, 29990u);
    menu->doPerform(0, 20000);
    keys({SDLK_DOWN});  // a focus move counts as being there
    EXPECT_GE(menu->pageTimer, 29990u);
}

TEST_F(TitleMenu, AsksBeforeQuitting) {
    finishLoading();
    keys({SDLK_DOWN, SDLK_ESCAPE});
    EXPECT_TRUE(shown("pQuit") && !shown("pMainMenu"));
    EXPECT_TRUE(focusIs("btnQuit")) << "confirming quits";
    keys({SDLK_ESCAPE});
    EXPECT_TRUE(!shown("pQuit") && shown("pMainMenu"));
    EXPECT_TRUE(focusIs("btnSinglePlayerB")) << "the focus returns where it was";
    keys({SDLK_ESCAPE, SDLK_RIGHT, SDLK_RETURN});
    EXPECT_TRUE(shown("pMainMenu")) << "No";
    keys({SDLK_ESCAPE, SDLK_RETURN});
    EXPECT_EQ(vantorix::menu, nullptr);
}

// Rebinding acts on a copy: the live evaluator changes only when the dialog is confirmed.
TEST_F(TitleMenu, KeyCaptureRebindsTheCopy) {
    finishLoading();
    InputEvaluator* live = resources->evaluatorGamePlayerSingle;
    keys({SDLK_DOWN, SDLK_DOWN, SDLK_DOWN, SDLK_RETURN});  // Settings
    ASSERT_TRUE(shown("pSettings"));
    keys({SDLK_DOWN, SDLK_RETURN});  // single player controls
    ASSERT_TRUE(shown("pControls"));
    EXPECT_EQ(caption("labelControlsHeader") + "|" + caption("labelControlsLeft") + "|" + caption("labelControlsUpJoy"),
              "Single Player Controls|left|Joy 0; Axis 1 -");

    keys({SDLK_RETURN});  // Left
    EXPECT_TRUE(shown("pGetKey"));
    EXPECT_EQ(caption("lGetKeyTriggerName"), "Left");
    keys({SDLK_a});
    EXPECT_TRUE(!shown("pGetKey") && focusIs("btnControlsLeft"));
    EXPECT_EQ(caption("labelControlsLeft"), "a");
    EXPECT_EQ(caption("labelControlsRight"), "right") << "the other direction keeps its keys";

    keys({SDLK_DOWN, SDLK_DOWN, SDLK_RETURN});  // Up, bound to a stick: both directions move to the new axis
    joyAxis(3, -30000);
    EXPECT_EQ(caption("labelControlsUpJoy") + "|" + caption("labelControlsDownJoy"), "Joy 0; Axis 3 -|Joy 0; Axis 3 +");

    keys({SDLK_DOWN, SDLK_RETURN, SDLK_ESCAPE});  // Down: Escape keeps it
    EXPECT_EQ(caption("labelControlsDown"), "down");
    keys({SDLK_RETURN, SDLK_BACKSPACE});  // Backspace clears its keys and sticks of that direction only
    EXPECT_EQ(caption("labelControlsDown") + "|" + caption("labelControlsDownJoy") + "|" + caption("labelControlsUpJoy"),
              "||Joy 0; Axis 3 -");

    keys({SDLK_DOWN, SDLK_RETURN});  // Fire, on a gamepad button
    joyButtons({5});
    EXPECT_EQ(caption("labelControlsFireJoy"), "Joy 0; Btn 5");
    EXPECT_EQ(live->find("x")->keysToString(-1), "left") << "nothing applied yet";

    keys({SDLK_ESCAPE});  // cancelled
    EXPECT_TRUE(!shown("pControls") && shown("pSettings") && focusIs("btnControlsSinglePlayer"));
    EXPECT_EQ(live->find("x")->keysToString(-1), "left");
    EXPECT_TRUE(menu->controlsChanged) << "a cancelled edit still counts";

    keys({SDLK_RETURN, SDLK_RETURN, SDLK_a, SDLK_TAB});
    for (int i = 0; i < 12 && !focusIs("btnControlsOk"); ++i) keys({SDLK_TAB});
    keys({SDLK_RETURN});  // confirmed
    EXPECT_EQ(live->find("x")->keysToString(-1), "a");
    keys({SDLK_ESCAPE});  // closing the settings saves them
    EXPECT_TRUE(shown("pMainMenu") && !menu->controlsChanged);
    EXPECT_NE(readFile(settingsPath()).find("key=\"a\""), std::string::npos);
}

TEST_F(TitleMenu, SoundDialogStopsAndRestartsTheMusic) {
    finishLoading();
    ASSERT_NE(resources->musicManager, nullptr);
    EXPECT_TRUE(resources->musicManager->isPlaying());
    menu->handleEvent(resources->evaluatorMenu->find("back"));  // harmless: asks to quit
    keys({SDLK_ESCAPE});
    component("btnSettings")->setFocused(true);
    keys({SDLK_RETURN});
    component("btnSoundSettings")->setFocused(true);
    keys({SDLK_RETURN});
    ASSERT_TRUE(shown("pSoundSettings"));
    EXPECT_TRUE(focusIs("btnSoundSettingsOk"));
    EXPECT_EQ(caption("lVolumeSoundsValue"), "70");

    keys({SDLK_UP, SDLK_UP});
    ASSERT_TRUE(focusIs("sVolumeSounds"));
    keys({SDLK_LEFT});
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    EXPECT_EQ(caption("lVolumeSoundsValue"), "65");
    keys({SDLK_DOWN, SDLK_HOME});  // music off
    EXPECT_EQ(resources->currentVolumeMusic, 0);
    keys({SDLK_DOWN, SDLK_RETURN});
    EXPECT_EQ(resources->musicManager, nullptr) << "confirmed at 0, the music goes";
    EXPECT_EQ(resources->settings.volumeSfx, 65);
    EXPECT_TRUE(focusIs("btnSoundSettings"));

    keys({SDLK_RETURN, SDLK_UP, SDLK_RIGHT});
    ASSERT_NE(resources->musicManager, nullptr) << "raising it again makes a new manager";
    EXPECT_TRUE(resources->musicManager->isPlaying());
    // Dragged with the mouse, a slider fires nothing: the dialog still follows it.
    dynamic_cast<norvane::gui::Slider<int>*>(component("sVolumeSounds"))->setValue(20);
    frames();
    EXPECT_EQ(resources->currentVolumeSfx, 20);
    keys({SDLK_ESCAPE});  // cancelled: the saved volumes come back
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    EXPECT_EQ(resources->currentVolumeMusic, 0);
}

// The mode change moves the pointer, and the GUI focuses what lies under it, a panel too; the keys
// still move the focus from widget to widget.
TEST_F(TitleMenu, FullScreenTwiceReturnsToTheWindowAndAPointerOnAPanelLocksNoKeys) {
    finishLoading();
    keys({SDLK_DOWN});
    mouseTo(400, 580);  // the main menu panel's lower border, below its last button
    EXPECT_FALSE(resources->gui->getFocused()->focusable) << "hovering focuses the panel";
    keys({SDLK_DOWN});
    EXPECT_TRUE(focusIs("btnMultiplayer"));

    auto* box = dynamic_cast<norvane::gui::Checkbox*>(component("cbFullscreen"));
    menu->handleEvent(resources->evaluatorCore->find("fullscreen"));
    EXPECT_TRUE(resources->settings.fullscreen && norvane::fullscreen && box->getChecked());
    menu->handleEvent(resources->evaluatorCore->find("fullscreen"));
    EXPECT_FALSE(resources->settings.fullscreen || norvane::fullscreen || box->getChecked());
    EXPECT_EQ(std::make_pair(norvane::vpScreen.width, resources->rcGui.size.y), std::make_pair(800.0f, 600.0f));
    frames(2);
    SurfacePtr shot = screenshot("after-fullscreen.png");
    ASSERT_EQ(shot->w, 800);
    EXPECT_GT(brightest(shot, {150, 530, 500, 1}), 600) << "the logo is still drawn after the mode changes";
    keys({SDLK_DOWN});
    EXPECT_TRUE(resources->gui->getFocused()->focusable) << resources->gui->getFocused()->getName();
}

// Players of this genre play with a gamepad alone: every menu and dialog, and the key capture,
// answer the stick and two buttons (0 confirms, 1 goes back), here as SDL joystick events.
TEST_F(TitleMenu, EverythingWorksWithAGamepadAlone) {
    finishLoading();
    for (int i = 0; i < 3; ++i) joyAxis(1, 30000);
    EXPECT_TRUE(focusIs("btnSettings"));
    joyButtons({0});
    ASSERT_TRUE(shown("pSettings"));
    joyAxis(0, 30000);
    joyButtons({0});  // the sound dialog: the stick sets a volume
    ASSERT_TRUE(shown("pSoundSettings"));
    for (Uint8 axis : {1, 1, 0}) joyAxis(axis, -30000);
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    joyButtons({1});  // back: cancelled
    EXPECT_EQ(resources->currentVolumeSfx, 70);
    EXPECT_TRUE(focusIs("btnSoundSettings"));

    joyAxis(0, -30000);
    joyAxis(1, 30000);
    joyButtons({0, 0});  // single player controls, then Left, caught from a button
    ASSERT_TRUE(shown("pGetKey"));
    joyButtons({4});
    EXPECT_EQ(caption("labelControlsLeftJoy"), "Joy 0; Btn 4") << "it replaces the stick's left";
    for (int i = 0; i < 2; ++i) joyAxis(1, 30000);
    joyButtons({0});  // Up, caught from another stick
    joyAxis(4, 30000);
    EXPECT_EQ(caption("labelControlsUpJoy"), "Joy 0; Axis 4 -");
    for (int i = 0; i < 4; ++i) joyAxis(1, -30000);
    EXPECT_TRUE(focusIs("btnControlsOk")) << "up from Up, past the tabs of the three sets";
    joyButtons({0});
    EXPECT_FALSE(shown("pControls"));
    EXPECT_EQ(resources->evaluatorGamePlayerSingle->find("y")->joyToString(-1, -1), "Joy 0; Axis 4 -");
    joyButtons({1});
    EXPECT_TRUE(shown("pMainMenu"));
    joyButtons({1});
    EXPECT_TRUE(shown("pQuit"));
    joyButtons({0});
    EXPECT_EQ(vantorix::menu, nullptr);
}

// Each screenshot stays in the test's scratch directory for a look.
TEST_F(TitleMenu, EveryPanelDialogAndPageIsDrawn) {
    frames();
    expectDrawn(screenshot("credits-loading.png"), component("pCredits"));
    finishLoading();
    frames(5);
    const SurfacePtr menuShot = screenshot("main-menu.png");
    expectDrawn(menuShot, component("pMainMenu"));
    EXPECT_GT(brightest(menuShot, {150, 480, 500, 80}), 600) << "the logo";

    auto* guiTriggers = dynamic_cast<InputEvaluator*>(resources->banks["evaluatorGui"]);
    menu->handleEvent(guiTriggers->find("controlsSingle"));  // labels with the bindings
    const char* panels[] = {"pSettings", "pCredits", "pQuit", "pSoundSettings", "pControls", "pGetKey",
                            "pEnterName", "pInGame"};
    keys({SDLK_LSHIFT});  // a key hides the mouse cursor, which would cover what is checked
    for (const std::string name : panels) {
        for (const char* other : panels) component(other)->setVisible(other == name);
        resources->pMainMenu->setVisible(false);
        if (name == "pGetKey") menu->handleEvent(guiTriggers->find("rebindTimeWarp"));
        if (name == "pSoundSettings") menu->handleEvent(guiTriggers->find("soundSettings"));
        frames();
        expectDrawn(screenshot(name + ".png"), component(name));
        if (name == "pGetKey") keys({SDLK_ESCAPE});
    }
    for (const char* other : panels) component(other)->setVisible(false);
    resources->pMainMenu->setVisible(true);

    const char* pages[] = {"highscores", "highscores-multiplayer", "help"};
    for (int page = 1; page <= 3; ++page) {
        while (menu->page != page) menu->doPerform(0, menu->pageTimer);
        frames();
        const SurfacePtr shot = screenshot(pages[page - 1] + std::string(".png"));
        EXPECT_GT(brightest(shot, {150, 525, 500, 45}), 600) << pages[page - 1];
        int yellow = 0;
        for (int x = 0; x < 800; ++x) yellow += near(pixelAt(shot.get(), x, 599 - 388), 255, 255, 0, 255, 60);
        EXPECT_EQ(yellow > 20, page < 3) << "the table's first row, in yellow";
        if (page == 3) {
            for (auto [x, y] : {std::pair{50, 530}, {250, 530}, {450, 530}, {100, 430}, {300, 430}, {150, 330}}) {
                EXPECT_GT(brightest(shot, {float(x) - 16, float(y) - 16, 32, 32}), 200) << x << "," << y;
            }
        }
    }

    // The table's rows are yellow; a marked row pulses between white and red (the first mark) or blue.
    resources->rcGame.apply();
    norvane::clearScreen();
    menu->phase = 0.0f;  // sin 0: the pulse is at its red (blue) end
    menu->displayHighscores(400, 300, &resources->highscores.singleA, 0, 2);
    norvane::flipScreen();
    const SurfacePtr rows = screenshot("highscore-rows.png");
    std::string colours;  // of the brightest pixel of each row: its channels above 200
    for (int row = 0; row < 3; ++row) {
        Rgba c;
        brightest(rows, {300, float(300 + 150 - 30 * row + 8), 230, 1}, &c);
        colours += std::string(c.r > 200 ? "r" : "") + (c.g > 200 ? "g" : "") + (c.b > 200 ? "b" : "") + " ";
    }
    EXPECT_EQ(colours, "r rg b ") << "red, yellow, blue";
}
