#ifndef TESTS_GFX_TEST_SURFACES_H
#define TESTS_GFX_TEST_SURFACES_H

#include <SDL/SDL.h>

#include <memory>
#include <string>
#include <vector>

struct SurfaceDeleter {
    void operator()(SDL_Surface* s) const { SDL_FreeSurface(s); }
};
using SurfacePtr = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

// A 32-bit surface whose bytes lie in memory as R, G, B, A, the way SDL_image delivers PNGs.
SurfacePtr makeRgbaSurface(int width, int height);
void setPixel(SDL_Surface* surface, int x, int y, Uint8 r, Uint8 g, Uint8 b, Uint8 a);
// One string per row: '#' is opaque white, anything else transparent.
SurfacePtr surfaceFromPicture(const std::vector<std::string>& rows);

#endif
