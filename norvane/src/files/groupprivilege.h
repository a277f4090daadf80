#ifndef NORVANE_FILES_GROUPPRIVILEGE_H
#define NORVANE_FILES_GROUPPRIVILEGE_H

#include <sys/types.h>

namespace norvane {

// A program installed setgid (group "games") writes its shared state with that group and
// everything else with the user's own. Without the setgid bit both calls change nothing.

// Gives up the installed group and keeps it only as the saved group; call it first in main.
// Throws a text when the group cannot be given up.
void dropGroupPrivilege();

// Holds the installed group while it lives, with umask 002, so the files it creates are
// group-writable and every player of the group can replace them.
class GroupPrivilege {
public:
    GroupPrivilege();
    GroupPrivilege(const GroupPrivilege&) = delete;
    GroupPrivilege& operator=(const GroupPrivilege&) = delete;
    ~GroupPrivilege();

private:
    mode_t previousMask;
};

}  // namespace norvane

#endif
