#include "files/groupprivilege.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "files/atomicfile.h"
#include "files/sysdirs.h"

namespace {

struct Groups {
    gid_t real, effective, saved;
};

Groups groups() {
    Groups g{};
    getresgid(&g.real, &g.effective, &g.saved);
    return g;
}

bool create(const std::string& path) {
    norvane::AtomicFile file(path);
    return file.get() && std::fputs("x", file.get()) >= 0 && file.commit();
}

struct stat info(const std::string& path) {
    struct stat result{};
    stat(path.c_str(), &result);
    return result;
}

// Fails the child with a message the death test prints.
void check(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "failed: %s\n", what);
    _exit(1);
}

// Plays the setgid program's part in a child: `check` ends it with a message on the first fault.
void playSetgidNobody(uid_t user, gid_t userGroup, gid_t shared, const std::string& state,
                      const std::string& home) {
    check(setgroups(0, nullptr) == 0 && setresgid(userGroup, shared, shared) == 0 &&
              setresuid(user, user, user) == 0,
          "becoming nobody with the shared group");
    norvane::dropGroupPrivilege();
    check(groups().effective == userGroup && groups().saved == shared, "dropped at start");
    check(create(home + "settings"), "the home is the user's");
    check(!create(state + "early"), "the shared directory is closed after the drop");
    {
        norvane::GroupPrivilege privilege;
        check(groups().effective == shared, "held");
        check(create(state + "scores"), "the shared directory is open while held");
        check(create(state + "scores"), "a file of the group is replaced while held");
    }
    check(groups().effective == userGroup && groups().saved == shared, "dropped again");
    check(!create(state + "late"), "the shared directory is closed again");
    check(create(home + "screenshot"), "the home is still the user's");
    const struct stat scores = info(state + "scores"), settings = info(home + "settings");
    check(scores.st_gid == shared && (scores.st_mode & 0777) == 0664, "scores are games 0664");
    check(settings.st_uid == user && settings.st_gid == userGroup, "settings are the user's");
    std::fflush(stderr);
    _exit(0);
}

}  // namespace

TEST(GroupPrivilege, WithoutSetgidOnlyTheMaskChangesWhileHeld) {
    const std::string dir = std::string(TEST_TMP_DIR) + "/privilege-plain/";
    ASSERT_TRUE(norvane::mkdirs(dir));
    const Groups before = groups();
    const mode_t mask = umask(077);

    norvane::dropGroupPrivilege();
    {
        norvane::GroupPrivilege privilege;
        EXPECT_EQ(groups().effective, before.effective);
        ASSERT_TRUE(create(dir + "shared"));
    }
    EXPECT_EQ(groups().effective, before.effective);
    EXPECT_EQ(groups().saved, before.saved);
    ASSERT_TRUE(create(dir + "own"));
    EXPECT_EQ(info(dir + "shared").st_mode & 0777, 0664u);
    EXPECT_EQ(info(dir + "own").st_mode & 0777, 0600u);  // the user's mask is back
    umask(mask);
}

// A setgid run as the user nobody: the real group is the user's, effective and saved are games.
TEST(GroupPrivilege, SetgidProgramWritesTheSharedDirectoryOnlyWhileHeld) {
    if (getuid() != 0) GTEST_SKIP() << "needs root to become another user with another group";
    const passwd* nobody = getpwnam("nobody");
    const group* games = getgrnam("games");
    ASSERT_TRUE(nobody && games);
    const uid_t user = nobody->pw_uid;
    const gid_t userGroup = nobody->pw_gid, shared = games->gr_gid;

    const std::string base = std::string(TEST_TMP_DIR) + "/privilege-setgid/";
    const std::string state = base + "state/", home = base + "home/";
    std::system(("rm -rf " + base).c_str());
    ASSERT_TRUE(norvane::mkdirs(state) && norvane::mkdirs(home));
    ASSERT_EQ(chmod(TEST_TMP_DIR, 0755), 0);  // made by root's mkdirs: closed to others
    ASSERT_EQ(chmod(base.c_str(), 0755), 0);
    ASSERT_EQ(chown(state.c_str(), 0, shared), 0);
    ASSERT_EQ(chmod(state.c_str(), 02775), 0);
    ASSERT_EQ(chown(home.c_str(), user, userGroup), 0);

    EXPECT_EXIT(playSetgidNobody(user, userGroup, shared, state, home), ::testing::ExitedWithCode(0),
                "");
}
