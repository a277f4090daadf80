#include "files/atomicfile.h"

namespace norvane {

AtomicFile::AtomicFile(std::string path)
    : path(std::move(path)), tmpPath(this->path + ".tmp"), file(std::fopen(tmpPath.c_str(), "wb")) {}

AtomicFile::~AtomicFile() {
    if (!file) return;
    std::fclose(file);
    std::remove(tmpPath.c_str());
}

bool AtomicFile::commit() {
    if (!file) return false;
    const bool written = std::fflush(file) == 0 && !std::ferror(file);
    const bool closed = std::fclose(file) == 0;
    file = nullptr;
    if (written && closed && std::rename(tmpPath.c_str(), path.c_str()) == 0) return true;
    std::remove(tmpPath.c_str());
    return false;
}

}  // namespace norvane
