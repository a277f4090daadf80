#include "test_surfaces.h"

#include <cstring>

SurfacePtr makeRgbaSurface(int width, int height) {
#if SDL_BYTEORDER == SDL_LIL_ENDIAN
    return SurfacePtr(SDL_CreateRGBSurface(SDL_SWSURFACE, width, height, 32, 0x000000FF, 0x0000FF00, 0x00FF0000,
                                           0xFF000000));
#else
    return SurfacePtr(SDL_CreateRGBSurface(SDL_SWSURFACE, width, height, 32, 0xFF000000, 0x00FF0000, 0x0000FF00,
                                           0x000000FF));
#endif
}

void setPixel(SDL_Surface* surface, int x, int y, Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
    const Uint32 value = SDL_MapRGBA(surface->format, r, g, b, a);
    std::memcpy(static_cast<Uint8*>(surface->pixels) + y * surface->pitch + x * 4, &value, 4);
}

SurfacePtr surfaceFromPicture(const std::vector<std::string>& rows) {
    const int height = static_cast<int>(rows.size());
    const int width = height ? static_cast<int>(rows[0].size()) : 0;
    SurfacePtr surface = makeRgbaSurface(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool solid = rows[y][x] == '#';
            setPixel(surface.get(), x, y, 255, 255, 255, solid ? 255 : 0);
        }
    }
    return surface;
}
