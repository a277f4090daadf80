#ifndef NORVANE_FILES_ATOMICFILE_H
#define NORVANE_FILES_ATOMICFILE_H

#include <cstdio>
#include <string>

namespace norvane {

// Writes beside `path` into `path` + ".tmp" and replaces `path` only in commit(), so a save that
// fails half-way leaves the previous good file as it was.
class AtomicFile {
public:
    explicit AtomicFile(std::string path);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();  // an uncommitted temporary file is removed

    FILE* get() const { return file; }  // null when the temporary file could not be created
    // Flushes, closes and renames; false (and the temporary file gone) if any of it failed.
    bool commit();

private:
    std::string path;
    std::string tmpPath;
    FILE* file;
};

}  // namespace norvane

#endif
