#include "gamedata.h"

#include "controls/queue.h"

namespace {

void startClean() {
    if (std::string(NORVANE_FS_ROOT).empty()) GTEST_SKIP() << "needs a build with NORVANE_FS_ROOT";
    std::remove(settingsPath().c_str());
    norvane::mkdirs(TEST_TMP_DIR "/");  // where the audio writes its wave file
}

// A finished test's evaluators and image loader must not reach the next one.
void forgetGame() {
    norvane::queue.evaluators.clear();
    norvane::queue.focusLostTrigger = nullptr;
    norvane::cleanUp();
}

}  // namespace

void GameData::SetUp() {
    captured([] { norvane::init(0, false); });
    startClean();
}

void GameData::TearDown() { forgetGame(); }

void GameWindow::SetUp() {
    WindowTest::SetUp();
    startClean();
}

void GameWindow::TearDown() { forgetGame(); }

std::string settingsPath() {
    return vantorix::dirManager.getSubDir(norvane::sdUser, "", true) + vantorix::FILE_SETTINGS;
}

void writeSettings(const std::string& content) { std::ofstream(settingsPath(), std::ios::binary) << content; }
