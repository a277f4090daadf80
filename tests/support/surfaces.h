#ifndef TESTS_SUPPORT_SURFACES_H
#define TESTS_SUPPORT_SURFACES_H

#include <SDL/SDL.h>
#include <SDL/SDL_image.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

struct SurfaceDeleter {
    void operator()(SDL_Surface* s) const { SDL_FreeSurface(s); }
};
using SurfacePtr = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

// A 32-bit surface whose bytes lie in memory as R, G, B, A, the way SDL_image delivers PNGs.
inline SurfacePtr makeRgbaSurface(int width, int height) {
    const Uint32 r = SDL_SwapLE32(0x000000FF), g = SDL_SwapLE32(0x0000FF00), b = SDL_SwapLE32(0x00FF0000);
    return SurfacePtr(SDL_CreateRGBSurface(SDL_SWSURFACE, width, height, 32, r, g, b, SDL_SwapLE32(0xFF000000)));
}

inline void setPixel(SDL_Surface* surface, int x, int y, Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
    const Uint32 value = SDL_MapRGBA(surface->format, r, g, b, a);
    std::memcpy(static_cast<Uint8*>(surface->pixels) + y * surface->pitch + x * 4, &value, 4);
}

// One string per row: '#' is opaque white, anything else transparent.
inline SurfacePtr surfaceFromPicture(const std::vector<std::string>& rows) {
    const int height = static_cast<int>(rows.size());
    const int width = height ? static_cast<int>(rows[0].size()) : 0;
    SurfacePtr surface = makeRgbaSurface(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) setPixel(surface.get(), x, y, 255, 255, 255, rows[y][x] == '#' ? 255 : 0);
    }
    return surface;
}

struct Rgba {
    int r, g, b, a;
};

// The colour of pixel (x, y) of any surface SDL_image hands out.
inline Rgba pixelAt(SDL_Surface* surface, int x, int y) {
    const int bytes = surface->format->BytesPerPixel;
    Uint32 value = 0;
    std::memcpy(&value, static_cast<const Uint8*>(surface->pixels) + y * surface->pitch + x * bytes,
                static_cast<size_t>(bytes));
    Uint8 r, g, b, a;
    SDL_GetRGBA(value, surface->format, &r, &g, &b, &a);
    return {r, g, b, a};
}

// Each component within `tolerance` (blending and filtering round differently between drivers).
inline bool near(const Rgba& c, int r, int g, int b, int a, int tolerance = 2) {
    return std::abs(c.r - r) <= tolerance && std::abs(c.g - g) <= tolerance && std::abs(c.b - b) <= tolerance &&
           std::abs(c.a - a) <= tolerance;
}

inline std::ostream& operator<<(std::ostream& out, const Rgba& c) {
    return out << "(" << c.r << ", " << c.g << ", " << c.b << ", " << c.a << ")";
}

#endif
