#ifndef TESTS_GAMERESOURCES_GAMEDATA_H
#define TESTS_GAMERESOURCES_GAMEDATA_H

#include <gtest/gtest.h>

#include <string>

#include "resources/resources.h"
#include "support/captured.h"
#include "support/gamedata.h"
#include "support/window.h"

// The game's data directory and settings file in the build's throwaway tree. Each test starts
// without a settings file; as in the game, the banks a Resources loads outlive it.
class GameData : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
};

class GameWindow : public WindowTest {
protected:
    void SetUp() override;
    void TearDown() override;
};

std::string settingsPath();
void writeSettings(const std::string& content);

#endif
