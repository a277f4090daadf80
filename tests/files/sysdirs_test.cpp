#include "files/sysdirs.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/files.h"

using norvane::SysDirManager;

namespace {

const std::string ROOT = NORVANE_FS_ROOT;

bool isDir(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

TEST(SysDirs, GamesAndApplicationsLiveInTheirOwnPlacesAndUsersInTheirHomes) {
    const SysDirManager game("x", norvane::sdcGame), app("x", norvane::sdcApplication);
    const std::pair<std::string, std::string> dirs[] = {
        {game.getDir(norvane::sdConfig), "/etc/x/"},           {app.getDir(norvane::sdConfig), "/etc/x/"},
        {game.getDir(norvane::sdData), "/usr/share/games/x/"}, {app.getDir(norvane::sdData), "/usr/share/x/"},
        {game.getDir(norvane::sdState), "/var/games/x/"},      {app.getDir(norvane::sdState), "/var/lib/x/"},
        {game.getSubDir(norvane::sdData, "images", false), "/usr/share/games/x/images/"},
        {game.getSubDir(norvane::sdData, "images/", false), "/usr/share/games/x/images/"},
        {game.getSubDir(norvane::sdData, "", false), "/usr/share/games/x/"}};
    for (const auto& [dir, expected] : dirs) EXPECT_EQ(dir, ROOT + expected);
    EXPECT_FALSE(isDir(ROOT + "/usr/share/games/x/images"));
    EXPECT_TRUE(isDir(SysDirManager("created", norvane::sdcGame).getSubDir(norvane::sdState, "scores", true)));

    EXPECT_EQ(norvane::userDirectory("/home/u", "x") + norvane::userDirectory("/home/u/", "x"), "/home/u/.x//home/u/.x/");
    EXPECT_EQ(norvane::userDirectory("/", "x"), "/.x/");
    setenv("HOME", "/somewhere/else", 1);  // the password database decides
    EXPECT_EQ(game.getDir(norvane::sdUser), ROOT + norvane::userDirectory(getpwuid(getuid())->pw_dir, "x"));

    const std::string base = scratchPath("");
    EXPECT_TRUE(norvane::mkdirs("") && norvane::mkdirs("plain"));
    EXPECT_FALSE(isDir("plain"));
    EXPECT_TRUE(norvane::mkdirs(base + "a/b/c.xml") && isDir(base + "a/b") && !isDir(base + "a/b/c.xml"));
    EXPECT_TRUE(norvane::mkdirs(base + "a/b/"));  // all there already
    // A file in the way, or a directory it may not write into.
    writeFile("file", "x");
    EXPECT_FALSE(norvane::mkdirs(base + "file/sub/"));
    EXPECT_FALSE(norvane::mkdirs("/proc/vantorix-test/sub/"));
}
