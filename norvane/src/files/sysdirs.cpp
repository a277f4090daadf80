#include "files/sysdirs.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>

namespace norvane {

namespace {

// The real user's home from the password database; "/" when it has none, so paths stay absolute.
std::string homeDir() {
    const passwd* entry = getpwuid(getuid());
    if (!entry || !entry->pw_dir || !*entry->pw_dir) return "/";
    return entry->pw_dir;
}

}  // namespace

SysDirManager::SysDirManager(std::string name, SysDirCategory category)
    : name(std::move(name)), category(category) {}

std::string SysDirManager::getDir(SysDir dir) const {
    const std::string root = NORVANE_FS_ROOT;
    const bool game = category == sdcGame;
    switch (dir) {
        case sdConfig: return root + "/etc/" + name + "/";
        case sdUser: return root + userDirectory(homeDir(), name);
        case sdData: return root + (game ? "/usr/share/games/" : "/usr/share/") + name + "/";
        case sdState: return root + (game ? "/var/games/" : "/var/lib/") + name + "/";
    }
    assert(!"bad system directory");
    return std::string();
}

std::string userDirectory(std::string home, const std::string& name) {
    if (home.empty() || home.back() != '/') home += '/';
    return home + "." + name + "/";
}

std::string SysDirManager::getSubDir(SysDir dir, std::string subDir, bool create) const {
    std::string path = getDir(dir) + subDir;
    if (!path.empty() && path.back() != '/') path += '/';
    if (create && !path.empty()) mkdirs(path);
    return path;
}

bool mkdirs(std::string path) {
    for (size_t slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1)) {
        const std::string prefix = path.substr(0, slash);
        struct stat info;
        if (stat(prefix.c_str(), &info) == 0) continue;
        if (errno != ENOENT || mkdir(prefix.c_str(), 0770) != 0) return false;
    }
    return true;
}

}  // namespace norvane
