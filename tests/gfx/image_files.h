#ifndef TESTS_GFX_IMAGE_FILES_H
#define TESTS_GFX_IMAGE_FILES_H

#include <fstream>
#include <iterator>
#include <string>

#include "files/sysdirs.h"
#include "screenshot.h"
#include "support/surfaces.h"

// Scratch files of the gfx tests, below TEST_TMP_DIR/gfx/.
inline std::string gfxPath(const std::string& name) {
    const std::string path = std::string(TEST_TMP_DIR) + "/gfx/" + name;
    norvane::mkdirs(path);
    return path;
}

inline std::string writePngFile(const std::string& name, SDL_Surface* surface) {
    const std::string path = gfxPath(name);
    norvane::savePng(surface, path.c_str());
    return path;
}

inline std::string writeFile(const std::string& name, const std::string& bytes) {
    const std::string path = gfxPath(name);
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Quarters, as seen with the top row up: red and white above, blue and half-transparent green below.
inline SurfacePtr quarteredSurface(int width, int height) {
    SurfacePtr surface = makeRgbaSurface(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool left = x < width / 2, top = y < height / 2;
            if (top) setPixel(surface.get(), x, y, 255, left ? 0 : 255, left ? 0 : 255, 255);
            else if (left) setPixel(surface.get(), x, y, 0, 0, 255, 255);
            else setPixel(surface.get(), x, y, 0, 255, 0, 128);
        }
    }
    return surface;
}

#endif
