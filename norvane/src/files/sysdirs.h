#ifndef NORVANE_FILES_SYSDIRS_H
#define NORVANE_FILES_SYSDIRS_H

#include <string>

namespace norvane {

enum SysDirCategory { sdcApplication = 0, sdcGame = 1 };
enum SysDir { sdConfig = 0, sdUser = 1, sdData = 2, sdState = 3 };

// The standard Linux locations of an application's files. Every path starts with the build's
// NORVANE_FS_ROOT (empty in a normal build), so test builds can point at a throwaway tree.
class SysDirManager {
public:
    SysDirManager(std::string name, SysDirCategory category);

    std::string getDir(SysDir dir) const;  // ends with "/"
    std::string getSubDir(SysDir dir, std::string subDir, bool create) const;

private:
    std::string name;
    SysDirCategory category;
};

// Where application `name` keeps its per-user files under the home directory `home`.
std::string userDirectory(std::string home, const std::string& name);

// Creates the directories along `path`; a last component without a trailing "/" is a file name.
bool mkdirs(std::string path);

}  // namespace norvane

#endif
