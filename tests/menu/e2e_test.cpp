#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <thread>

#include "gameresources/gamedata.h"
#include "menu/layout.h"
#include "menu/program.h"
#include "resources/highscores.h"
#include "support/files.h"
#include "support/surfaces.h"
#include "xml/xml.h"

namespace {

const std::string WORK = TEST_TMP_DIR "/menu-run";

bool exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

void nap(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

// Pixel (x, y) of a screenshot counted from the lower left, as the game places things.
Rgba at(const SurfacePtr& p, float x, float y) { return pixelAt(p.get(), int(x), p->h - 1 - int(y)); }

// Pixels of `area` of a screenshot that `match`.
template <typename Match>
int count(const SurfacePtr& p, const norvane::basic_Rect<float>& area, Match match) {
    int n = 0;
    for (float y = area.y; p && y < area.y + area.height; ++y) {
        for (float x = area.x; x < area.x + area.width; ++x) n += match(at(p, x, y));
    }
    return n;
}

bool yellow(const Rgba& c) { return near(c, 255, 255, 0, c.a, 60); }
bool bright(const Rgba& c) { return c.r + c.g + c.b > 300; }

// The mean column of the bright shapes between x `from` and `to` in the band where the ships fly
// at first, or -1; stars are single pixels and too few in a column to count.
float shipX(const SurfacePtr& p, int from, int to) {
    float sum = 0.0f, columns = 0.0f;
    for (int x = from; p && x < to; ++x) {
        if (count(p, {float(x), 20, 1, 80}, bright) >= 4) sum += x, ++columns;
    }
    return columns > 0 ? sum / columns : -1.0f;
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
    void TearDown() override {
        std::remove(highscoresPath().c_str());  // the other tests expect the shipped tables
        GameData::TearDown();
    }
    static std::string highscoresPath() {
        return vantorix::dirManager.getSubDir(norvane::sdState, "", true) + vantorix::FILE_HIGHSCORES;
    }

    // Far enough apart that each key is handled in a frame of its own, also on a busy machine: a key
    // that opens a dialog acts through a trigger, after the other events of its frame.
    void keys(const std::string& names) { ASSERT_TRUE(xdotool("key --delay 250 " + names)); }
    // Ends with status 0 after logging `line`.
    static void expectEnds(Program& game, const std::string& line) {
        EXPECT_EQ(game.wait(), 0);
        EXPECT_NE(game.output().find("[vantorix:core] (critical) " + line), std::string::npos) << game.output();
    }

    // Presses the screenshot key and reads what the game saved (null before the first frame); a copy
    // named `name` stays for a look.
    SurfacePtr shot(Program& program, const std::string& name) {
        const std::string path = program.dir + "/screenshot.png";
        std::remove(path.c_str());
        keys("F12");
        for (int i = 0; i < 500 && !exists(path); ++i) nap(0.01);
        nap(0.1);  // written whole before it is renamed
        std::ifstream in(path, std::ios::binary);
        std::ofstream(program.dir + "/" + name + ".png", std::ios::binary) << in.rdbuf();
        return SurfacePtr(IMG_Load(path.c_str()));
    }

    // The buttons of the art set are filled with blue, left of their caption.
    bool buttonAt(const SurfacePtr& p, const char* name) const {
        const norvane::basic_Rect<float> r = layout.rect(name);
        const Rgba c = p ? at(p, r.x + 6, r.y + r.height / 2) : Rgba{};
        return c.b > 80 && c.b > c.r + 40;
    }
    // Panels are filled with a dark blue, which nothing of the game has.
    bool panelShown(const SurfacePtr& p, const char* name) const {
        const norvane::basic_Rect<float> r = layout.rect(name);
        return count(p, r, [](const Rgba& c) { return c.b >= c.r + 8 && c.b < 60; }) > 0.6f * r.width * r.height;
    }
    bool mainMenuShown(const SurfacePtr& p) const {
        const char* names[] = {"btnSinglePlayerA", "btnSinglePlayerB", "btnMultiplayer", "btnSettings", "btnCredits", "btnMainQuit"};
        return std::all_of(std::begin(names), std::end(names), [&](const char* name) { return buttonAt(p, name); });
    }
    SurfacePtr untilMainMenu(Program& game, const std::string& name) {
        SurfacePtr menu = shot(game, name);
        for (int i = 0; i < 100 && !mainMenuShown(menu); ++i) menu = shot(game, name);
        return menu;
    }

    Layout layout;
};

}  // namespace

TEST_F(Session, ThroughTheMenusWithTheKeyboard) {
    Program game(WORK);
    ASSERT_FALSE(game.window().empty()) << game.output();
    // While the images load, the credits show, with their button and without the main menu.
    SurfacePtr loading = shot(game, "loading");
    for (int i = 0; i < 50 && !buttonAt(loading, "btnCreditsBack") && !mainMenuShown(loading); ++i) {
        loading = shot(game, "loading");
    }
    EXPECT_TRUE(buttonAt(loading, "btnCreditsBack") && !mainMenuShown(loading));
    ASSERT_TRUE(mainMenuShown(untilMainMenu(game, "menu"))) << game.output();

    // Left alone for half a minute, the menu gives way to the highscores with their white header. A
    // slow frame counts for at most 100 ms of the game's time, and a screenshot makes one: none meanwhile.
    nap(27);
    EXPECT_TRUE(mainMenuShown(shot(game, "menu-27s")));
    nap(6);
    SurfacePtr page = shot(game, "highscores");
    EXPECT_FALSE(mainMenuShown(page));
    EXPECT_GT(count(page, {150, 525, 500, 45}, [](const Rgba& c) { return c.r + c.g + c.b > 700; }), 20);
    keys("Escape");

    // Settings, single player controls, Left rebound to "a".
    keys("Down Down Down Return");
    keys("Down Return");
    SurfacePtr before = shot(game, "controls");
    keys("Return a");
    SurfacePtr after = shot(game, "controls-rebound");
    ASSERT_TRUE(before && after);
    const norvane::basic_Rect<float> label = layout.rect("labelControlsLeft");
    int changed = 0;
    for (float x = label.x; x < label.x + label.width; ++x) {
        const Rgba a = at(before, x, label.y + label.height / 2), b = at(after, x, label.y + label.height / 2);
        changed += a.r != b.r || a.g != b.g || a.b != b.b;
    }
    EXPECT_GT(changed, 10) << "the label of Left shows the new key";
    keys("Up Up Return");  // past the tabs of the three sets to OK

    // Both volumes down a notch, through the sound dialog; full screen and back.
    keys("Up Right Return Up Left Left Up Left Down Down Return");
    ASSERT_TRUE(xdotool("key F11 sleep 0.5 key F11 sleep 0.5"));
    SurfacePtr settings = shot(game, "settings-after-fullscreen");
    ASSERT_TRUE(settings);
    EXPECT_EQ(settings->w, 800);
    EXPECT_TRUE(buttonAt(settings, "btnSettingsDone"));

    // Quitting asks first.
    keys("Escape Escape");
    SurfacePtr question = shot(game, "quit");
    EXPECT_TRUE(buttonAt(question, "btnQuit") && !mainMenuShown(question));
    keys("Return");
    EXPECT_EQ(game.wait(), 0) << game.output();
    const std::string saved = readFile(settingsPath());
    for (const char* entry : {"volumeSfx=\"65\"", "volumeMusic=\"90\"", "key=\"a\" value=\"-1\"", "fullscreen=\"false\""}) {
        EXPECT_NE(saved.find(entry), std::string::npos) << entry << "\n" << saved;
    }
}

// The three modes from the title menu: flying, firing, pausing, quitting, dying, a name entered.
TEST_F(Session, PlaysEachModeFromTheTitleMenu) {
    // Tables of nobodies: any score of the first game over enters them.
    const std::string table = highscoresPath();
    std::remove((vantorix::dirManager.getSubDir(norvane::sdUser, "", true) + vantorix::FILE_HIGHSCORES).c_str());
    vantorix::Highscores nobodies;
    nobodies.clear();
    nobodies.save(table);
    Program game(WORK);
    ASSERT_FALSE(game.window().empty()) << game.output();
    ASSERT_TRUE(mainMenuShown(untilMainMenu(game, "menu"))) << game.output();

    // Mode A. Everything at once, before the first asteroids come down; the pause holds the rest.
    keys("Return");
    const float startX = shipX(shot(game, "a-start"), 0, 800);
    EXPECT_NEAR(startX, 400.0f, 20.0f);
    ASSERT_TRUE(xdotool("keydown Right sleep 0.3 keyup Right key --delay 100 space p"));
    SurfacePtr paused = shot(game, "a-fired-paused");
    const float movedX = shipX(paused, 0, 800);
    EXPECT_GT(movedX, startX + 30.0f) << "flown to the right";
    const int laser = count(paused, {movedX - 40, 60, 80, 540}, [](const Rgba& c) {
        return c.g > 150 && c.g > c.r + 40 && c.g > c.b + 30;
    });
    EXPECT_GT(laser, 10) << "green shots above the ship";
    EXPECT_TRUE(buttonAt(paused, "btnContinue"));
    keys("Escape");
    EXPECT_FALSE(buttonAt(shot(game, "a-resumed"), "btnContinue"));
    keys("p Up Return");  // up wraps to "Quit Game"
    const int red = count(shot(game, "a-quit"), {250, 525, 300, 30}, [](const Rgba& c) {
        return near(c, 255, 77, 77, c.a, 60);
    });
    EXPECT_GT(red, 10) << "G A M E   O V E R";
    keys("Escape");
    EXPECT_TRUE(mainMenuShown(untilMainMenu(game, "menu-after-a")));

    // Mode B: no shots; the ship waits for an asteroid. Its score rises with the speed.
    keys("Down Return");
    SurfacePtr entry;
    for (int i = 0; i < 60 && !panelShown(entry, "pEnterName"); ++i) entry = shot(game, "b-name-entry");
    ASSERT_TRUE(panelShown(entry, "pEnterName")) << "killed and asked for a name";
    keys("A c e Return");
    SurfacePtr scores = shot(game, "b-highscores");
    // The new first row pulses between white and red; the others stay yellow.
    EXPECT_EQ(count(scores, {260, 450, 280, 16}, yellow), 0);
    EXPECT_GT(count(scores, {260, 420, 280, 16}, yellow), 10);
    EXPECT_NE(readFile(table).find("name=\"Ace\""), std::string::npos) << readFile(table);
    keys("Escape");
    EXPECT_TRUE(mainMenuShown(untilMainMenu(game, "menu-after-b")));

    // Two ships; closing the window ends the game, not the program.
    keys("Down Return");
    SurfacePtr two = shot(game, "multi-start");
    const float left = shipX(two, 0, 400), right = shipX(two, 400, 800);
    EXPECT_TRUE(left > 0 && left < 300 && right > 500) << left << " " << right;
    game.requestClose();
    EXPECT_TRUE(mainMenuShown(untilMainMenu(game, "menu-after-multi")));
    keys("Escape Return");
    EXPECT_EQ(game.wait(), 0) << game.output();
}

TEST_F(Session, ClosingTheWindowQuitsAndWithoutAnAudioDeviceItSaysSoAndEnds) {
    Program game(WORK);
    ASSERT_FALSE(game.window().empty()) << game.output();
    game.requestClose();
    EXPECT_EQ(game.wait(), 0) << game.output();
    EXPECT_TRUE(exists(settingsPath())) << game.output();
    std::remove(settingsPath().c_str());
    Program silent(WORK, {"ALSOFT_DRIVERS=none"});
    expectEnds(silent, "Could not intialize norvane:audio: ");
    EXPECT_TRUE(exists(settingsPath())) << "the settings are still written";
}

TEST_F(Session, WithABrokenDataSetItSaysSoAndEnds) {
    installData([](norvane::xml::Node* root) {
        norvane::xml::Node* sounds = bankElement(root, "sounds");
        *root -= sounds;
        delete sounds;
    });
    Program game(WORK);
    expectEnds(game, "Could not load resources: samples not found");
    EXPECT_FALSE(exists(settingsPath())) << "no resources, no settings to save";
}

// A display without OpenGL cannot give the window the game asks for.
TEST_F(Session, WhenTheScreenModeIsRefusedItSaysSoAndEnds) {
    std::unique_ptr<Program> server;
    std::string display;
    for (int n = 100 + getpid() % 300; !server && n < 1000; n += 7) {
        display = ":" + std::to_string(n);
        const std::string socket = "/tmp/.X11-unix/X" + display.substr(1);
        // A server killed before it could clean up leaves its lock and socket behind: skip those.
        if (exists("/tmp/.X" + display.substr(1) + "-lock") || exists(socket)) continue;
        auto candidate = std::make_unique<Program>(
            WORK + "-xvfb", std::vector<std::string>{},
            std::vector<std::string>{"/usr/bin/Xvfb", display, "-screen", "0", "1024x768x24", "-extension", "GLX",
                                     "-nolisten", "tcp"});
        for (int i = 0; i < 300 && !exists(socket) && candidate->wait(0.01) == -1; ++i) {
        }
        if (exists(socket) && candidate->wait(0.1) == -1) server = std::move(candidate);
    }
    ASSERT_TRUE(server) << "no display could be started";
    Program game(WORK, {"DISPLAY=" + display});
    expectEnds(game, "InitScreen() failed: ");
    EXPECT_TRUE(exists(settingsPath())) << "the settings are still written";
}
