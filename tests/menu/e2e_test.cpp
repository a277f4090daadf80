#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>

#include "gameresources/gamedata.h"
#include "menu/layout.h"
#include "menu/program.h"
#include "support/files.h"
#include "xml/xml.h"

namespace {

const std::string WORK = TEST_TMP_DIR "/menu-run";

bool exists(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0;
}

// The real program on the test display, driven with xdotool like a player at the keyboard.
class Session : public GameData {
protected:
    void SetUp() override {
        GameData::SetUp();
        if (IsSkipped()) return;
        installData();
        // Away from the window: the GUI focuses whatever the pointer rests on.
        ASSERT_TRUE(xdotool("mousemove 1020 760"));
    }

    // Far enough apart that each key is handled in a frame of its own, also on a busy machine: a key
    // that opens a dialog acts through a trigger, after the other events of its frame.
    void keys(const std::string& names) { ASSERT_TRUE(xdotool("key --delay 250 " + names)); }

    // Presses the screenshot key and reads what the game saved; a copy named `name` stays for a look.
    std::unique_ptr<Picture> shot(Program& program, const std::string& name) {
        const std::string path = program.dir + "/screenshot.png";
        std::remove(path.c_str());
        keys("F12");
        for (int i = 0; i < 500 && !exists(path); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));  // written whole before it is renamed
        std::ifstream in(path, std::ios::binary);
        std::ofstream(program.dir + "/" + name + ".png", std::ios::binary) << in.rdbuf();
        return std::make_unique<Picture>(path);
    }

    // The buttons of the art set are filled with blue; focused ones with a brighter blue.
    static bool buttonAt(const Picture& p, norvane::basic_Vector2D<float> at) {
        int c[3];
        p.rgb(static_cast<int>(at.x), static_cast<int>(at.y), c);
        return c[2] > 80 && c[2] > c[0] + 40;
    }
    bool mainMenuShown(const Picture& p) const {
        for (const char* name : {"btnSinglePlayerA", "btnSinglePlayerB", "btnMultiplayer", "btnSettings", "btnCredits",
                                 "btnMainQuit"}) {
            if (!buttonAt(p, layout.centre(name))) return false;
        }
        return true;
    }
    static int brightness(const Picture& p, int x, int y) {
        int c[3];
        p.rgb(x, y, c);
        return c[0] + c[1] + c[2];
    }

    Layout layout;
};

}  // namespace

TEST_F(Session, ThroughTheMenusWithTheKeyboard) {
    Program game(WORK);
    ASSERT_FALSE(game.window().empty()) << game.output();
    // While the images load, the credits show, with their button and without the main menu.
    std::unique_ptr<Picture> loading;  // the first screenshots may come before the first frame
    for (int i = 0; i < 50 && !(loading && loading->valid() && (buttonAt(*loading, layout.centre("btnCreditsBack")) ||
                                                                 mainMenuShown(*loading)));
         ++i) {
        loading = shot(game, "loading");
    }
    EXPECT_TRUE(buttonAt(*loading, layout.centre("btnCreditsBack")));
    EXPECT_FALSE(mainMenuShown(*loading));

    std::unique_ptr<Picture> menu;
    for (int i = 0; i < 200 && !(menu && menu->valid() && mainMenuShown(*menu)); ++i) menu = shot(game, "menu");
    ASSERT_TRUE(mainMenuShown(*menu)) << game.output();

    // Left alone for half a minute, the menu gives way to the highscores. (A slow frame counts for
    // at most 100 ms of the game's time, and a screenshot makes one: none are taken meanwhile.)
    std::this_thread::sleep_for(std::chrono::seconds(27));
    EXPECT_TRUE(mainMenuShown(*shot(game, "menu-27s")));
    std::this_thread::sleep_for(std::chrono::seconds(6));
    auto page = shot(game, "highscores");
    EXPECT_FALSE(mainMenuShown(*page));
    int header = 0;
    for (int x = 150; x < 650; ++x) {
        for (int y = 525; y < 570; y += 3) header = std::max(header, brightness(*page, x, y));
    }
    EXPECT_GT(header, 700) << "the white highscore header";
    keys("Escape");

    // Settings, single player controls, Left rebound to "a".
    keys("Down Down Down Return");
    keys("Down Return");
    auto before = shot(game, "controls");
    keys("Return a");
    auto after = shot(game, "controls-rebound");
    const norvane::basic_Rect<float> label = layout.rect("labelControlsLeft");
    int changed = 0;
    for (int x = static_cast<int>(label.x); x < label.x + label.width; ++x) {
        const int y = static_cast<int>(label.y + label.height / 2);
        changed += brightness(*before, x, y) != brightness(*after, x, y);
    }
    EXPECT_GT(changed, 10) << "the label of Left shows the new key";
    keys("Up Up Return");  // past the tabs of the three sets to OK

    // Both volumes down a notch, through the sound dialog.
    keys("Up Right Return Up Left Left Up Left Down Down Return");
    // Full screen and back.
    keys("F11");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    keys("F11");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    auto settings = shot(game, "settings-after-fullscreen");
    ASSERT_TRUE(settings->valid());
    EXPECT_EQ(settings->width(), 800);
    EXPECT_TRUE(buttonAt(*settings, layout.centre("btnSettingsDone")));

    // Quitting asks first.
    keys("Escape Escape");
    auto question = shot(game, "quit");
    EXPECT_TRUE(buttonAt(*question, layout.centre("btnQuit")));
    EXPECT_FALSE(mainMenuShown(*question));
    keys("Return");
    EXPECT_EQ(game.wait(), 0) << game.output();
    const std::string saved = readFile(settingsPath());
    EXPECT_NE(saved.find("volumeSfx=\"65\""), std::string::npos) << saved;
    EXPECT_NE(saved.find("volumeMusic=\"90\""), std::string::npos) << saved;
    EXPECT_NE(saved.find("key=\"a\" value=\"-1\""), std::string::npos) << saved;
    EXPECT_NE(saved.find("fullscreen=\"false\""), std::string::npos) << saved;
}

TEST_F(Session, ClosingTheWindowQuits) {
    Program game(WORK);
    ASSERT_FALSE(game.window().empty()) << game.output();
    game.requestClose();
    EXPECT_EQ(game.wait(), 0) << game.output();
    EXPECT_TRUE(exists(settingsPath())) << game.output();
}

TEST_F(Session, WithoutAnAudioDeviceItSaysSoAndEnds) {
    Program game(WORK, {"ALSOFT_DRIVERS=none"});
    EXPECT_EQ(game.wait(), 0);
    EXPECT_NE(game.output().find("[vantorix:core] (critical) Could not intialize norvane:audio: "), std::string::npos)
        << game.output();
    EXPECT_TRUE(exists(settingsPath())) << "the settings are still written";
}

TEST_F(Session, WithABrokenDataSetItSaysSoAndEnds) {
    installData([](norvane::xml::Node* root) {
        norvane::xml::Node* sounds = bankElement(root, "sounds");
        *root -= sounds;
        delete sounds;
    });
    Program game(WORK);
    EXPECT_EQ(game.wait(), 0);
    EXPECT_NE(game.output().find("[vantorix:core] (critical) Could not load resources: samples not found"),
              std::string::npos)
        << game.output();
    EXPECT_FALSE(exists(settingsPath())) << "no resources, no settings to save";
}

// A display without OpenGL cannot give the window the game asks for.
TEST_F(Session, WhenTheScreenModeIsRefusedItSaysSoAndEnds) {
    std::unique_ptr<Program> server;
    std::string display;
    for (int n = 100 + getpid() % 300; !server && n < 1000; n += 7) {
        display = ":" + std::to_string(n);
        auto candidate = std::make_unique<Program>(
            WORK + "-xvfb", std::vector<std::string>{},
            std::vector<std::string>{"/usr/bin/Xvfb", display, "-screen", "0", "1024x768x24", "-extension", "GLX",
                                     "-nolisten", "tcp"});
        const std::string socket = "/tmp/.X11-unix/X" + display.substr(1);
        for (int i = 0; i < 300 && !exists(socket) && candidate->wait(0.01) == -1; ++i) {
        }
        if (exists(socket) && candidate->wait(0.1) == -1) server = std::move(candidate);
    }
    ASSERT_TRUE(server) << "no display could be started";
    Program game(WORK, {"DISPLAY=" + display});
    EXPECT_EQ(game.wait(), 0);
    EXPECT_NE(game.output().find("[vantorix:core] (critical) InitScreen() failed: "), std::string::npos)
        << game.output();
    EXPECT_TRUE(exists(settingsPath())) << "the settings are still written";
}
