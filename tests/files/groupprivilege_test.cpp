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

bool create(const std::string& path) {
    norvane::AtomicFile file(path);
    return file.get() && std::fputs("x", file.get()) >= 0 && file.commit();
}

struct stat info(const std::string& path) {
    struct stat result{};
    stat(path.c_str(), &result);
    return result;
}

// Plays the setgid program's part in a child; true when every step went as it should.
bool playSetgidNobody(const passwd* nobody, const group* games, const std::string& state, const std::string& home) {
    setgroups(0, nullptr);
    if (setresgid(nobody->pw_gid, games->gr_gid, games->gr_gid) != 0) return false;
    if (setresuid(nobody->pw_uid, nobody->pw_uid, nobody->pw_uid) != 0) return false;
    norvane::dropGroupPrivilege();
    bool ok = getegid() == nobody->pw_gid && create(home + "settings") && !create(state + "early");
    {
        norvane::GroupPrivilege privilege;
        ok = ok && getegid() == games->gr_gid && create(state + "scores") && create(state + "scores");
    }
    ok = ok && getegid() == nobody->pw_gid && !create(state + "late") && create(home + "shot");
    const struct stat scores = info(state + "scores"), settings = info(home + "settings");
    return ok && scores.st_gid == games->gr_gid && (scores.st_mode & 0777) == 0664 &&
           settings.st_uid == nobody->pw_uid && settings.st_gid == nobody->pw_gid;
}

}  // namespace

TEST(GroupPrivilege, OnlyTheMaskChangesWithoutSetgidAndTheSharedDirectoryIsWritableOnlyWhileHeld) {
    const std::string dir = std::string(TEST_TMP_DIR) + "/privilege-plain/";
    ASSERT_TRUE(norvane::mkdirs(dir));
    const gid_t before = getegid();
    const mode_t mask = umask(077);
    norvane::dropGroupPrivilege();
    {
        norvane::GroupPrivilege privilege;
        EXPECT_EQ(getegid(), before);
        ASSERT_TRUE(create(dir + "shared"));
    }
    ASSERT_TRUE(getegid() == before && create(dir + "own"));
    EXPECT_EQ(info(dir + "shared").st_mode & 0777, 0664u);
    EXPECT_EQ(info(dir + "own").st_mode & 0777, 0600u);  // the user's mask is back
    umask(mask);

    // A setgid run as the user nobody: the real group is the user's, effective and saved are games.
    // The shared directory is writable only while the privilege is held; the user's home always.
    if (getuid() != 0) GTEST_SKIP() << "needs root to become another user with another group";
    const passwd* nobody = getpwnam("nobody");
    const group* games = getgrnam("games");
    ASSERT_TRUE(nobody && games);
    const std::string base = std::string(TEST_TMP_DIR) + "/privilege-setgid/";
    const std::string state = base + "state/", home = base + "home/";
    std::system(("rm -rf " + base).c_str());
    ASSERT_TRUE(norvane::mkdirs(state) && norvane::mkdirs(home));
    ASSERT_EQ(chmod(TEST_TMP_DIR, 0755) | chmod(base.c_str(), 0755), 0);  // root's mkdirs closes them to others
    ASSERT_EQ(chown(state.c_str(), 0, games->gr_gid) | chmod(state.c_str(), 02775), 0);
    ASSERT_EQ(chown(home.c_str(), nobody->pw_uid, nobody->pw_gid), 0);
    EXPECT_EXIT(_exit(playSetgidNobody(nobody, games, state, home) ? 0 : 1), testing::ExitedWithCode(0), "");
}
