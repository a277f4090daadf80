#include "screenshot.h"

#include <GL/gl.h>
#include <SDL/SDL.h>
#include <png.h>

#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "debug/log.h"
#include "files/atomicfile.h"
#include "norvane.h"

namespace norvane {

namespace {

struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};

// libpng reports errors by longjmp back here, so nothing in this frame may need a destructor.
bool writePng(FILE* file, png_structp png, png_infop info, png_uint_32 width, png_uint_32 height, png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_init_io(png, file);
    png_set_IHDR(png, info, width, height, 8, PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_ADAM7,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    return true;
}

// One pixel value of `bytes` bytes in the machine's byte order.
Uint32 readPixel(const Uint8* p, int bytes) {
    switch (bytes) {
        case 1: return *p;
        case 2: {
            Uint16 value;
            std::memcpy(&value, p, sizeof value);
            return value;
        }
        case 3:
#if SDL_BYTEORDER == SDL_LIL_ENDIAN
            return p[0] | p[1] << 8 | p[2] << 16;
#else
            return p[0] << 16 | p[1] << 8 | p[2];
#endif
        case 4: {
            Uint32 value;
            std::memcpy(&value, p, sizeof value);
            return value;
        }
        default: debug::critical(dbgCore, "Unknown surface format (bpp=%d).", bytes); return 0;
    }
}

}  // namespace

void saveScreenshot(const char* filename) {
    if (!screen) throw std::string("Could not take a screenshot: there is no screen.");
    const int w = screen->w, h = screen->h;
    std::unique_ptr<SDL_Surface, SurfaceDeleter> shot(
        SDL_CreateRGBSurface(SDL_SWSURFACE, w, h, 24, 0x0000FF, 0x00FF00, 0xFF0000, 0));
    if (!shot) throw std::string(SDL_GetError());
    {
        std::vector<Uint8> buffer;
        try {
            buffer.resize(static_cast<size_t>(w) * static_cast<size_t>(h) * 3);
        } catch (const std::bad_alloc&) {
            throw std::string("Out of memory");
        }
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glReadPixels(0, 0, w, h, GL_RGB, GL_UNSIGNED_BYTE, buffer.data());
        glPopClientAttrib();
        // OpenGL delivers the bottom row first.
        for (int y = 0; y < h; ++y) {
            std::memcpy(static_cast<Uint8*>(shot->pixels) + y * shot->pitch,
                        buffer.data() + static_cast<size_t>(h - 1 - y) * static_cast<size_t>(w) * 3,
                        static_cast<size_t>(w) * 3);
        }
    }
    savePng(shot.get(), filename);
}

void savePng(SDL_Surface* surface, const char* filename) {
    AtomicFile out(filename);
    if (!out.get()) throw "Could not open file \"" + std::string(filename) + "\" for writing.";

    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!png || !info) {
        png_destroy_write_struct(&png, nullptr);
        throw std::string("Could not create libpng data structures.");
    }

    const int w = surface->w, h = surface->h;
    const int bytes = surface->format->BytesPerPixel;
    std::vector<png_byte> pixels(static_cast<size_t>(w) * static_cast<size_t>(h) * 4);
    std::vector<png_bytep> rows(static_cast<size_t>(h));
    const bool mustLock = SDL_MUSTLOCK(surface);
    if (mustLock) SDL_LockSurface(surface);
    for (int y = 0; y < h; ++y) {
        png_bytep row = pixels.data() + static_cast<size_t>(y) * static_cast<size_t>(w) * 4;
        rows[static_cast<size_t>(y)] = row;
        const Uint8* source = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        for (int x = 0; x < w; ++x) {
            SDL_GetRGBA(readPixel(source + x * bytes, bytes), surface->format, row + 4 * x, row + 4 * x + 1,
                        row + 4 * x + 2, row + 4 * x + 3);
        }
    }
    if (mustLock) SDL_UnlockSurface(surface);

    const bool written = writePng(out.get(), png, info, static_cast<png_uint_32>(w), static_cast<png_uint_32>(h),
                                  rows.data());
    png_destroy_write_struct(&png, &info);
    if (!written) throw std::string("Could not set libpng error callback.");
    if (!out.commit()) throw "Could not write file \"" + std::string(filename) + "\".";
}

}  // namespace norvane
