#ifndef TESTS_GFX_IMAGE_FILES_H
#define TESTS_GFX_IMAGE_FILES_H

#include <string>

#include "screenshot.h"
#include "support/files.h"
#include "support/surfaces.h"

inline std::string writePng(const std::string& name, const SurfacePtr& surface) {
    const std::string path = scratchPath(name);
    norvane::savePng(surface.get(), path.c_str());
    return path;
}

// Quarters, as seen with the top row up: red and white above, blue and half-transparent green below.
inline SurfacePtr quarteredSurface(int width, int height) {
    SurfacePtr surface = makeRgbaSurface(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const bool left = x < width / 2, top = y < height / 2;
            if (top) setPixel(surface.get(), x, y, 255, left ? 0 : 255, left ? 0 : 255, 255);
            else setPixel(surface.get(), x, y, 0, left ? 0 : 255, left ? 255 : 0, left ? 255 : 128);
        }
    return surface;
}

#endif
