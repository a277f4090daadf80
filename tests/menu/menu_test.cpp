#include <cmath>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

#include "audio/music.h"
#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "menu/menu.h"
#include "menu/layout.h"
#include "menu/program.h"
#include "menu/titlemenu.h"
#include "resources/resources.h"
#include "support/files.h"
#include "screen.h"
#include "vantorix.h"

using namespace vantorix;

TEST_F(TitleMenu, StartsOnTheCreditsAndQuitsAtOnceWhileLoading) {
    EXPECT_FALSE(resources->loaded);
    EXPECT_TRUE(shown("pCredits"));
    EXPECT_FALSE(shown("pMainMenu"));
    EXPECT_FALSE(resources->evaluatorMenu->enabled);
    key(SDLK_ESCAPE);  // no menu keys yet: the credits panel's own button goes back
    EXPECT_NE(vantorix::menu, nullptr);
    key(SDLK_RETURN, 13);
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
    key(SDLK_ESCAPE);
    EXPECT_EQ(menu->page, 0);
    EXPECT_TRUE(resources->gui->getVisible() && focusIs("btnSinglePlayerA"));
    EXPECT_GE(menu->pageTimer, 29990u);
    menu->doPerform(0, 20000);
    key(SDLK_DOWN);  // a focus move counts as being there
    EXPECT_GE(menu->pageTimer, 29990u);
}

TEST_F(TitleMenu, AsksBeforeQuitting) {
    finishLoading();
    key(SDLK_DOWN);
    key(SDLK_ESCAPE);
    EXPECT_TRUE(shown("pQuit"));
    EXPECT_FALSE(shown("pMainMenu"));
    EXPECT_TRUE(focusIs("btnQuit")) << "confirming quits";
    key(SDLK_ESCAPE);
    EXPECT_FALSE(shown("pQuit"));
    EXPECT_TRUE(shown("pMainMenu"));
    EXPECT_TRUE(focusIs("btnSinglePlayerB")) << "the focus returns where it was";
    key(SDLK_ESCAPE);
    key(SDLK_RIGHT);
    key(SDLK_RETURN, 13);
    EXPECT_TRUE(shown("pMainMenu")) << "No";
    key(SDLK_ESCAPE);
    key(SDLK_RETURN, 13);
    EXPECT_EQ(vantorix::menu, nullptr);
}

TEST_F(TitleMenu, AMouseRestingOnAPanelDoesNotLockOutTheKeys) {
    finishLoading();
    key(SDLK_DOWN);
    mouseTo(400, 580);  // the main menu panel's lower border, below its last button
    EXPECT_FALSE(resources->gui->getFocused()->focusable) << "hovering focuses the panel";
    key(SDLK_DOWN);
    EXPECT_TRUE(focusIs("btnMultiplayer"));
}

// Rebinding acts on a copy: the live evaluator changes only when the dialog is confirmed.
TEST_F(TitleMenu, KeyCaptureRebindsTheCopy) {
    finishLoading();
    InputEvaluator* live = resources->evaluatorGamePlayerSingle;
    key(SDLK_DOWN);
    key(SDLK_DOWN);
    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);  // Settings
    ASSERT_TRUE(shown("pSettings"));
    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);  // single player controls
    ASSERT_TRUE(shown("pControls"));
    EXPECT_EQ(caption("labelControlsHeader"), "Single Player Controls");
    EXPECT_EQ(caption("labelControlsLeft"), "left");
    EXPECT_EQ(caption("labelControlsUpJoy"), "Joy 0; Axis 1 -");

    key(SDLK_RETURN, 13);  // Left
    EXPECT_TRUE(shown("pGetKey"));
    EXPECT_EQ(caption("lGetKeyTriggerName"), "Left");
    key(SDLK_a, 'a');
    EXPECT_FALSE(shown("pGetKey"));
    EXPECT_TRUE(focusIs("btnControlsLeft"));
    EXPECT_EQ(caption("labelControlsLeft"), "a");
    EXPECT_EQ(caption("labelControlsRight"), "right") << "the other direction keeps its keys";

    key(SDLK_DOWN);
    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);  // Up, bound to a stick: both directions move to the new axis
    joyAxis(3, -30000);
    EXPECT_EQ(caption("labelControlsUpJoy"), "Joy 0; Axis 3 -");
    EXPECT_EQ(caption("labelControlsDownJoy"), "Joy 0; Axis 3 +");

    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);  // Down: Escape keeps it
    key(SDLK_ESCAPE);
    EXPECT_EQ(caption("labelControlsDown"), "down");
    key(SDLK_RETURN, 13);  // Backspace clears its keys and sticks of that direction only
    key(SDLK_BACKSPACE, 8);
    EXPECT_EQ(caption("labelControlsDown"), "");
    EXPECT_EQ(caption("labelControlsDownJoy"), "");
    EXPECT_EQ(caption("labelControlsUpJoy"), "Joy 0; Axis 3 -");

    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);  // Fire, on a gamepad button
    joyButton(5);
    EXPECT_EQ(caption("labelControlsFireJoy"), "Joy 0; Btn 5");
    EXPECT_EQ(live->find("x")->keysToString(-1), "left") << "nothing applied yet";

    key(SDLK_ESCAPE);  // cancelled
    EXPECT_FALSE(shown("pControls"));
    EXPECT_TRUE(shown("pSettings"));
    EXPECT_TRUE(focusIs("btnControlsSinglePlayer"));
    EXPECT_EQ(live->find("x")->keysToString(-1), "left");
    EXPECT_TRUE(menu->controlsChanged) << "a cancelled edit still counts";

    key(SDLK_RETURN, 13);
    key(SDLK_RETURN, 13);
    key(SDLK_a, 'a');
    key(SDLK_TAB);
    for (int i = 0; i < 12 && !focusIs("btnControlsOk"); ++i) key(SDLK_TAB);
    key(SDLK_RETURN, 13);  // confirmed
    EXPECT_EQ(live->find("x")->keysToString(-1), "a");
    key(SDLK_ESCAPE);  // closing the settings saves them
    EXPECT_TRUE(shown("pMainMenu"));
    EXPECT_FALSE(menu->controlsChanged);
    EXPECT_NE(readFile(settingsPath()).find("key=\"a\""), std::string::npos);
}

TEST_F(TitleMenu, SoundDialogStopsAndRestartsTheMusic) {
    finishLoading();
    ASSERT_NE(resources->musicManager, nullptr);
    EXPECT_TRUE(resources->musicManager->isPlaying());
    menu->handleEvent(resources->evaluatorMenu->find("back"));  // harmless: asks to quit
    key(SDLK_ESCAPE);
    component("btnSettings")->setFocused(true);
    key(SDLK_RETURN, 13);
    component("btnSoundSettings")->setFocused(true);
    key(SDLK_RETURN, 13);
    ASSERT_TRUE(shown("pSoundSettings"));
    EXPECT_TRUE(focusIs("btnSoundSettingsOk"));
    EXPECT_EQ(caption("lVolumeSoundsValue"), "70");

    key(SDLK_UP);
    key(SDLK_UP);
    ASSERT_TRUE(focusIs("sVolumeSounds"));
    key(SDLK_LEFT);
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    EXPECT_EQ(caption("lVolumeSoundsValue"), "65");
    key(SDLK_DOWN);
    key(SDLK_HOME);  // music off
    EXPECT_EQ(resources->currentVolumeMusic, 0);
    key(SDLK_DOWN);
    key(SDLK_RETURN, 13);
    EXPECT_EQ(resources->musicManager, nullptr) << "confirmed at 0, the music goes";
    EXPECT_EQ(resources->settings.volumeSfx, 65);
    EXPECT_TRUE(focusIs("btnSoundSettings"));

    key(SDLK_RETURN, 13);
    key(SDLK_UP);
    key(SDLK_RIGHT);
    ASSERT_NE(resources->musicManager, nullptr) << "raising it again makes a new manager";
    EXPECT_TRUE(resources->musicManager->isPlaying());
    // Dragged with the mouse, a slider fires nothing: the dialog still follows it.
    auto* sounds = dynamic_cast<norvane::gui::Slider<int>*>(component("sVolumeSounds"));
    sounds->setValue(20);
    frames();
    EXPECT_EQ(resources->currentVolumeSfx, 20);
    key(SDLK_ESCAPE);  // cancelled: the saved volumes come back
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    EXPECT_EQ(resources->currentVolumeMusic, 0);
}

TEST_F(TitleMenu, FullScreenTwiceReturnsToTheWindow) {
    finishLoading();
    auto* box = dynamic_cast<norvane::gui::Checkbox*>(component("cbFullscreen"));
    menu->handleEvent(resources->evaluatorCore->find("fullscreen"));
    EXPECT_TRUE(resources->settings.fullscreen && norvane::fullscreen && box->getChecked());
    menu->handleEvent(resources->evaluatorCore->find("fullscreen"));
    EXPECT_FALSE(resources->settings.fullscreen || norvane::fullscreen || box->getChecked());
    EXPECT_EQ(norvane::vpScreen.width, 800.0f);
    EXPECT_EQ(resources->rcGui.size.y, 600.0f);
    frames(2);
    Picture shot(screenshot("after-fullscreen"));
    ASSERT_EQ(shot.width(), 800);
    int brightest = 0;
    for (int x = 150; x < 650; ++x) {
        int c[3];
        shot.rgb(x, 530, c);
        brightest = std::max(brightest, c[0] + c[1] + c[2]);
    }
    EXPECT_GT(brightest, 600) << "the logo is still drawn after the mode changes";
    // The mode change moves the pointer, and the GUI focuses what lies under it; the keys still
    // move the focus from widget to widget.
    key(SDLK_DOWN);
    EXPECT_TRUE(resources->gui->getFocused()->focusable) << resources->gui->getFocused()->getName();
}

// Row colours of a highscore table: the marked rows pulse between white and red or blue.
TEST_F(TitleMenu, HighscoreRowsPulse) {
    finishLoading();
    resources->rcGame.apply();
    norvane::clearScreen();
    menu->phase = 0.0f;  // sin 0: the pulse is at its red (blue) end
    menu->displayHighscores(400, 300, &resources->highscores.singleA, 0, 2);
    norvane::flipScreen();
    Picture shot(screenshot("highscore-rows"));
    auto rowColour = [&](int row) {
        const int y = 300 + 150 - 30 * row + 8;
        int best[3] = {0, 0, 0};
        for (int x = 300; x < 530; ++x) {
            int c[3];
            shot.rgb(x, y, c);
            if (c[0] + c[1] + c[2] > best[0] + best[1] + best[2]) std::copy(c, c + 3, best);
        }
        return std::vector<int>(best, best + 3);
    };
    const auto top = rowColour(0), second = rowColour(1), third = rowColour(2);
    EXPECT_GT(top[0], 200);
    EXPECT_LT(top[1] + top[2], 60) << "row 1 is red";
    EXPECT_GT(second[0], 200);
    EXPECT_GT(second[1], 200);
    EXPECT_LT(second[2], 60) << "row 2 is yellow";
    EXPECT_GT(third[2], 200);
    EXPECT_LT(third[0] + third[1], 60) << "row 3 is blue";
}

// Players of this genre play with a gamepad alone: every menu and dialog, and the key capture,
// answer the stick and two buttons (0 confirms, 1 goes back), here as SDL joystick events.
TEST_F(TitleMenu, EverythingWorksWithAGamepadAlone) {
    finishLoading();
    for (int i = 0; i < 3; ++i) joyAxis(1, 30000);
    EXPECT_TRUE(focusIs("btnSettings"));
    joyButton(0);
    ASSERT_TRUE(shown("pSettings"));
    joyAxis(0, 30000);
    joyButton(0);  // the sound dialog: the stick sets a volume
    ASSERT_TRUE(shown("pSoundSettings"));
    joyAxis(1, -30000);
    joyAxis(1, -30000);
    joyAxis(0, -30000);
    EXPECT_EQ(resources->currentVolumeSfx, 65);
    joyButton(1);  // back: cancelled
    EXPECT_EQ(resources->currentVolumeSfx, 70);
    EXPECT_TRUE(focusIs("btnSoundSettings"));

    joyAxis(0, -30000);
    joyAxis(1, 30000);
    joyButton(0);  // single player controls
    ASSERT_TRUE(shown("pControls"));
    joyButton(0);  // Left, caught from a button
    ASSERT_TRUE(shown("pGetKey"));
    joyButton(4);
    EXPECT_EQ(caption("labelControlsLeftJoy"), "Joy 0; Btn 4") << "it replaces the stick's left";
    joyAxis(1, 30000);
    joyAxis(1, 30000);
    joyButton(0);  // Up, caught from another stick
    joyAxis(4, 30000);
    EXPECT_EQ(caption("labelControlsUpJoy"), "Joy 0; Axis 4 -");
    for (int i = 0; i < 4; ++i) joyAxis(1, -30000);
    EXPECT_TRUE(focusIs("btnControlsOk")) << "up from Up, past the tabs of the three sets";
    joyButton(0);
    EXPECT_FALSE(shown("pControls"));
    EXPECT_EQ(resources->evaluatorGamePlayerSingle->find("y")->joyToString(-1, -1), "Joy 0; Axis 4 -");

    joyButton(1);
    EXPECT_TRUE(shown("pMainMenu"));
    joyButton(1);
    EXPECT_TRUE(shown("pQuit"));
    joyButton(0);
    EXPECT_EQ(vantorix::menu, nullptr);
}

namespace {

int brightest(const Picture& shot, const norvane::basic_Rect<float>& r) {
    int best = 0;
    for (int y = static_cast<int>(r.y); y < r.y + r.height; y += 2) {
        for (int x = static_cast<int>(r.x); x < r.x + r.width; ++x) {
            int c[3];
            shot.rgb(x, y, c);
            best = std::max(best, c[0] + c[1] + c[2]);
        }
    }
    return best;
}

// Every visible widget of `panel` left its mark: buttons their blue fill, checkboxes their box,
// labels with a caption some bright text.
void expectDrawn(const Picture& shot, const norvane::gui::Component* panel) {
    for (const norvane::gui::Component* c : panel->getChildren()) {
        if (!c->getVisible()) continue;
        const norvane::basic_Rect<float> r = absoluteRect(c);
        int fill[3];  // left of the caption
        shot.rgb(static_cast<int>(r.x + 4), static_cast<int>(r.y + r.height / 2), fill);
        if (dynamic_cast<const norvane::gui::Button*>(c)) {
            EXPECT_TRUE(fill[2] > 80 && fill[2] > fill[0] + 40) << c->getName();
        } else if (dynamic_cast<const norvane::gui::Checkbox*>(c)) {
            EXPECT_GT(brightest(shot, {r.x - 20, r.y, 20, 20}), 300) << c->getName();
        } else if (auto* label = dynamic_cast<const norvane::gui::Label*>(c); label && !label->getCaption().empty()) {
            EXPECT_GT(brightest(shot, r), 350) << c->getName();
        }
    }
}

}  // namespace

// Each screenshot stays in the build's scratch directory (tests/tmp/menu/) for a look.
TEST_F(TitleMenu, EveryPanelDialogAndPageIsDrawn) {
    frames();
    expectDrawn(Picture(screenshot("credits-loading")), component("pCredits"));
    finishLoading();
    frames(5);
    Picture menuShot(screenshot("main-menu"));
    expectDrawn(menuShot, component("pMainMenu"));
    EXPECT_GT(brightest(menuShot, {150, 480, 500, 80}), 600) << "the logo";

    auto* guiTriggers = dynamic_cast<InputEvaluator*>(resources->banks["evaluatorGui"]);
    menu->handleEvent(guiTriggers->find("controlsSingle"));  // labels with the bindings
    const char* panels[] = {"pSettings", "pCredits", "pQuit", "pSoundSettings", "pControls", "pGetKey",
                            "pEnterName", "pInGame"};
    key(SDLK_LSHIFT);  // a key hides the mouse cursor, which would cover what is checked
    for (const std::string name : panels) {
        for (const char* other : panels) component(other)->setVisible(other == name);
        resources->pMainMenu->setVisible(false);
        if (name == "pGetKey") menu->handleEvent(guiTriggers->find("rebindTimeWarp"));
        if (name == "pSoundSettings") menu->handleEvent(guiTriggers->find("soundSettings"));
        frames();
        expectDrawn(Picture(screenshot(name)), component(name));
        if (name == "pGetKey") key(SDLK_ESCAPE);
    }
    for (const char* other : panels) component(other)->setVisible(false);
    resources->pMainMenu->setVisible(true);

    const char* pages[] = {"highscores", "highscores-multiplayer", "help"};
    for (int page = 1; page <= 3; ++page) {
        while (menu->page != page) menu->doPerform(0, menu->pageTimer);
        frames();
        Picture shot(screenshot(pages[page - 1]));
        EXPECT_GT(brightest(shot, {150, 525, 500, 45}), 600) << pages[page - 1];
        if (page < 3) {
            int yellow[3];
            int found = 0;
            for (int x = 0; x < 800; ++x) {
                shot.rgb(x, 380 + 8, yellow);
                found += yellow[0] > 200 && yellow[1] > 200 && yellow[2] < 80;
            }
            EXPECT_GT(found, 20) << "the table's first row, in yellow";
        } else {
            for (auto [x, y] : {std::pair{50, 530}, {250, 530}, {450, 530}, {100, 430}, {300, 430}, {150, 330}}) {
                EXPECT_GT(brightest(shot, {float(x) - 16, float(y) - 16, 32, 32}), 200) << x << "," << y;
            }
        }
    }
}
