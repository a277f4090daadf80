#include "files/sysdirs.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

using norvane::SysDirManager;

namespace {

const std::string ROOT = NORVANE_FS_ROOT;

bool isDir(const std::string& path) {
    struct stat info;
    return stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

}  // namespace

TEST(SysDirs, GamesAndApplicationsLiveInTheirOwnPlaces) {
    const SysDirManager game("x", norvane::sdcGame);
    const SysDirManager app("x", norvane::sdcApplication);
    EXPECT_EQ(game.getDir(norvane::sdConfig), ROOT + "/etc/x/");
    EXPECT_EQ(game.getDir(norvane::sdData), ROOT + "/usr/share/games/x/");
    EXPECT_EQ(game.getDir(norvane::sdState), ROOT + "/var/games/x/");
    EXPECT_EQ(app.getDir(norvane::sdConfig), ROOT + "/etc/x/");
    EXPECT_EQ(app.getDir(norvane::sdData), ROOT + "/usr/share/x/");
    EXPECT_EQ(app.getDir(norvane::sdState), ROOT + "/var/lib/x/");
    EXPECT_EQ(game.getSubDir(norvane::sdData, "images", false), ROOT + "/usr/share/games/x/images/");
    EXPECT_EQ(game.getSubDir(norvane::sdData, "images/", false), ROOT + "/usr/share/games/x/images/");
    EXPECT_EQ(game.getSubDir(norvane::sdData, "", false), ROOT + "/usr/share/games/x/");
    EXPECT_FALSE(isDir(ROOT + "/usr/share/games/x/images"));
}

TEST(SysDirs, UserDirectoryComesFromThePasswordDatabase) {
    EXPECT_EQ(norvane::userDirectory("/home/u", "x"), "/home/u/.x/");
    EXPECT_EQ(norvane::userDirectory("/home/u/", "x"), "/home/u/.x/");
    EXPECT_EQ(norvane::userDirectory("/", "x"), "/.x/");

    setenv("HOME", "/somewhere/else", 1);
    const passwd* entry = getpwuid(getuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(SysDirManager("x", norvane::sdcGame).getDir(norvane::sdUser),
              ROOT + norvane::userDirectory(entry->pw_dir, "x"));

    if (getuid() != 0) return;
    // As another user, the other user's home: Debian's "nobody" lives in /nonexistent.
    const passwd* nobody = getpwnam("nobody");
    ASSERT_NE(nobody, nullptr);
    const std::string expected = ROOT + norvane::userDirectory(nobody->pw_dir, "x");
    const uid_t uid = nobody->pw_uid;
    const pid_t pid = fork();
    if (pid == 0) {
        if (setuid(uid) != 0) _exit(2);
        _exit(SysDirManager("x", norvane::sdcGame).getDir(norvane::sdUser) == expected ? 0 : 1);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

TEST(SysDirs, MkdirsCreatesNestedPathsButNotFiles) {
    const std::string base = std::string(TEST_TMP_DIR) + "/mkdirs";
    EXPECT_TRUE(norvane::mkdirs(""));
    EXPECT_TRUE(norvane::mkdirs("plain"));
    EXPECT_FALSE(isDir("plain"));

    EXPECT_TRUE(norvane::mkdirs(base + "/a/b/c.xml"));
    EXPECT_TRUE(isDir(base + "/a/b"));
    EXPECT_FALSE(isDir(base + "/a/b/c.xml"));
    EXPECT_TRUE(norvane::mkdirs(base + "/a/b/"));  // all there already

    const SysDirManager game("created", norvane::sdcGame);
    const std::string made = game.getSubDir(norvane::sdState, "scores", true);
    EXPECT_TRUE(isDir(made));

    // A file in the way, or a directory it may not write into.
    std::ofstream(base + "/file") << "x";
    EXPECT_FALSE(norvane::mkdirs(base + "/file/sub/"));
    EXPECT_FALSE(norvane::mkdirs("/proc/vantorix-test/sub/"));
}
