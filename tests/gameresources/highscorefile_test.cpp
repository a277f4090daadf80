#include <cstdio>
#include <filesystem>
#include <fstream>

#include "files/sysdirs.h"
#include "gamedata.h"

using namespace vantorix;

namespace {

// The state directory made impossible to write, for root too: a plain file stands in its place.
class BlockedStateDirectory {
public:
    BlockedStateDirectory() : path(dirManager.getDir(norvane::sdState)) {
        path.pop_back();
        std::filesystem::remove_all(path);
        std::ofstream(path) << "not a directory";
    }
    ~BlockedStateDirectory() { std::remove(path.c_str()); }

private:
    std::string path;
};

}  // namespace

TEST_F(GameData, AHighscoreTheStateDirectoryRefusesStaysWithThePlayer) {
    installData();
    const std::string personal = dirManager.getSubDir(norvane::sdUser, "", true) + FILE_HIGHSCORES;
    std::remove(personal.c_str());
    {
        BlockedStateDirectory blocked;
        Resources first;
        first.initHighscores();
        first.highscores.singleA.add(HighscoreEntry("Ada", 123456));
        const std::string log = captured([&] { first.saveHighscores(); });
        EXPECT_NE(log.find("(warning) Could not save highscores to \"" + dirManager.getDir(norvane::sdState) +
                           "highscores.xml\"; saved them to \"" + personal + "\"."),
                  std::string::npos)
            << log;

        Resources next;  // the next run reads it back
        next.initHighscores();
        captured([&] { next.loadHighscores(); });
        EXPECT_EQ(next.highscores.singleA[0].name, "Ada");
    }
    // Once the shared table can be written again, it is the newer one and wins.
    Resources shared;
    shared.initHighscores();
    captured([&] { shared.loadHighscores(); });
    shared.highscores.singleA.add(HighscoreEntry("Bea", 999999));
    EXPECT_EQ(captured([&] { shared.saveHighscores(); }), "");
    Resources last;
    last.initHighscores();
    captured([&] { last.loadHighscores(); });
    EXPECT_EQ(last.highscores.singleA[0].name, "Bea");
    EXPECT_EQ(last.highscores.singleA[1].name, "Ada");
    std::remove(personal.c_str());
    std::remove((dirManager.getDir(norvane::sdState) + FILE_HIGHSCORES).c_str());
}
