#include "files/groupprivilege.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <cstring>
#include <string>

namespace norvane {

namespace {

// Only the effective group moves; the saved one keeps the installed group for later.
bool setEffectiveGroup(gid_t group) { return setresgid(-1, group, -1) == 0 && getegid() == group; }

}  // namespace

void dropGroupPrivilege() {
    if (!setEffectiveGroup(getgid()))
        throw std::string("Couldn't give up the group privilege: ") + std::strerror(errno);
}

GroupPrivilege::GroupPrivilege() : previousMask(umask(002)) {
    gid_t real, effective, saved;
    const bool taken = getresgid(&real, &effective, &saved) == 0 && setEffectiveGroup(saved);
    assert(taken);  // the saved group is always allowed; without it the write just fails
    (void)taken;
}

GroupPrivilege::~GroupPrivilege() {
    // Dropping to the real group cannot fail for an unprivileged process.
    const bool dropped = setEffectiveGroup(getgid());
    assert(dropped);
    (void)dropped;
    umask(previousMask);
}

}  // namespace norvane
