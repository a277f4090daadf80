#include "gfx/simpleimage.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <SDL/SDL.h>
#include <SDL/SDL_image.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>

#include "gfx/imagebank.h"

namespace norvane {
namespace gfx {

namespace {

struct SurfaceDeleter {
    void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SurfacePtr = std::unique_ptr<SDL_Surface, SurfaceDeleter>;

#if SDL_BYTEORDER == SDL_LIL_ENDIAN
const Uint32 RED_MASK = 0x000000FF, GREEN_MASK = 0x0000FF00, BLUE_MASK = 0x00FF0000, ALPHA_MASK = 0xFF000000;
const Uint32 RGB_RED = 0x0000FF, RGB_GREEN = 0x00FF00, RGB_BLUE = 0xFF0000;
#else
const Uint32 RED_MASK = 0xFF000000, GREEN_MASK = 0x00FF0000, BLUE_MASK = 0x0000FF00, ALPHA_MASK = 0x000000FF;
const Uint32 RGB_RED = 0xFF0000, RGB_GREEN = 0x00FF00, RGB_BLUE = 0x0000FF;
#endif

// Bytes in memory as R, G, B(, A): what OpenGL is handed as it stands.
bool isUploadable(const SDL_Surface* surface) {
    const SDL_PixelFormat* f = surface->format;
    if (f->BitsPerPixel == 32) {
        return f->Rmask == RED_MASK && f->Gmask == GREEN_MASK && f->Bmask == BLUE_MASK && f->Amask == ALPHA_MASK;
    }
    return f->BitsPerPixel == 24 && f->Rmask == RGB_RED && f->Gmask == RGB_GREEN && f->Bmask == RGB_BLUE;
}

// `source` copied into the upper-left corner of a new surface of the given size and format; the rest
// is transparent black. The source's alpha channel is copied, not blended.
SurfacePtr copyInto(SDL_Surface* source, int width, int height, int depth, Uint32 r, Uint32 g, Uint32 b,
                    Uint32 a) {
    SurfacePtr target(SDL_CreateRGBSurface(SDL_SWSURFACE, width, height, depth, r, g, b, a));
    if (!target) throw std::string(SDL_GetError());
    SDL_FillRect(target.get(), nullptr, SDL_MapRGBA(target->format, 0, 0, 0, 0));
    SDL_SetAlpha(source, 0, 0);
    if (SDL_BlitSurface(source, nullptr, target.get(), nullptr) < 0) std::printf("Blitting failed: %s.\n", SDL_GetError());
    return target;
}

// No picture of a 2D game needs more (8192 x 8192 RGBA is 256 MB); a hostile file could ask for gigabytes.
const int MAX_IMAGE_SIDE = 8192;
const unsigned char PNG_SIGNATURE[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

unsigned long bigEndian32(const unsigned char* bytes) {
    return static_cast<unsigned long>(bytes[0]) << 24 | static_cast<unsigned long>(bytes[1]) << 16 |
           static_cast<unsigned long>(bytes[2]) << 8 | bytes[3];
}

// Walks a PNG's chunk headers before anything is decoded: a tiny file may declare a huge picture,
// or a chunk longer than the file, which libpng would read on to the end of its declared length.
// Empty when the file is no PNG or looks sound; otherwise why it is refused.
std::string pngProblem(const std::string& filename, int maxSide) {
    std::ifstream in(filename, std::ios::binary);
    unsigned char header[16];
    if (!in.read(reinterpret_cast<char*>(header), 8) || std::memcmp(header, PNG_SIGNATURE, 8) != 0) return {};
    in.seekg(0, std::ios::end);
    const unsigned long fileSize = static_cast<unsigned long>(in.tellg());
    for (unsigned long at = 8; at + 8 <= fileSize;) {
        in.seekg(static_cast<std::streamoff>(at));
        if (!in.read(reinterpret_cast<char*>(header), 16)) in.clear();
        const unsigned long length = bigEndian32(header);
        const std::string type(reinterpret_cast<const char*>(header + 4), 4);
        if (length + 12 > fileSize - at) {
            return "its chunk \"" + type + "\" runs past the end of the file";
        }
        if (type == "IHDR" && length >= 8) {
            const unsigned long width = bigEndian32(header + 8), height = bigEndian32(header + 12);
            if (width > static_cast<unsigned long>(maxSide) || height > static_cast<unsigned long>(maxSide)) {
                return std::to_string(width) + "x" + std::to_string(height) + " pixels exceed the largest texture";
            }
        }
        if (type == "IEND") break;
        at += 12 + length;
    }
    return {};
}

// The box around every pixel that is not fully transparent, widened by a pixel where the image
// goes on: a filtered image blends its edge pixels with their neighbours. Empty without alpha.
basic_Rect<int> opaquePart(const SDL_Surface* surface) {
    if (surface->format->BitsPerPixel != 32) return {};
    int left = surface->w, right = -1, top = surface->h, bottom = -1;
    for (int y = 0; y < surface->h; ++y) {
        const Uint8* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        for (int x = 0; x < surface->w; ++x) {
            if (row[4 * x + 3] == 0) continue;  // alpha is the fourth byte of an uploadable surface
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    if (right < 0) return {};
    left = std::max(0, left - 1);
    top = std::max(0, top - 1);
    right = std::min(surface->w - 1, right + 1);
    bottom = std::min(surface->h - 1, bottom + 1);
    return {left, top, right - left + 1, bottom - top + 1};
}

int powerOfTwoAtLeast(int n) {
    int p = 1;
    while (p < n) p *= 2;
    return p;
}

}  // namespace

SimpleImage::SimpleImage() = default;

SimpleImage::SimpleImage(const std::string& name, const std::string& filename) : SingleTextureImage(name, filename) {}

void SimpleImage::load(bool last, bool withBitmask) {
    release(last);
    GLint maxSize = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &maxSize);
    // No GL context yet: fonts are read before the window opens, and refreshed once it is.
    if (maxSize == 0) return;
    maxSize = std::min(maxSize, MAX_IMAGE_SIDE);
    const std::string problem = pngProblem(filename, maxSize);
    if (!problem.empty()) throw "Could not load \"" + filename + "\": " + problem + ".";
    SurfacePtr surface(IMG_Load(filename.c_str()));
    if (!surface) throw "Could not load \"" + filename + "\": " + SDL_GetError() + ".";
    if (!isUploadable(surface.get())) {
        surface = copyInto(surface.get(), surface->w, surface->h, 32, RED_MASK, GREEN_MASK, BLUE_MASK, ALPHA_MASK);
    }

    if (surface->w > maxSize || surface->h > maxSize) {
        throw "Could not load \"" + filename + "\": " + std::to_string(surface->w) + "x" +
            std::to_string(surface->h) + " pixels exceed the largest texture.";
    }

    width = surface->w;
    height = surface->h;
    visibleBox = opaquePart(surface.get());
    outerBoundingBox = {0, 0, width, height};
    innerBoundingBox = {0, 0, 0, 0};
    if (withBitmask && bitmaskThreshold >= 0.0f) createBitmask(surface.get(), last);

    textureWidth = powerOfTwoAtLeast(width);
    textureHeight = powerOfTwoAtLeast(height);
    if (textureWidth != width || textureHeight != height) {
        const SDL_PixelFormat* f = surface->format;
        surface = copyInto(surface.get(), textureWidth, textureHeight, f->BitsPerPixel, f->Rmask, f->Gmask, f->Bmask,
                           f->Amask);
    }
    texCoordRect = {0.0f, 0.0f, static_cast<float>(width) / static_cast<float>(textureWidth),
                    static_cast<float>(height) / static_cast<float>(textureHeight)};

    if (textureName == 0) glGenTextures(1, &textureName);
    glBindTexture(GL_TEXTURE_2D, textureName);
    const bool hasAlpha = surface->format->BitsPerPixel == 32;
    const GLint internalFormat = hasAlpha ? GL_RGBA8 : GL_RGB8;
    const GLenum format = hasAlpha ? GL_RGBA : GL_RGB;
    // SDL pads rows to four bytes, which is OpenGL's default unpacking too; keep it so.
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    if (filter == FILTER_BILINEAR || filter == FILTER_TRILINEAR) {
        gluBuild2DMipmaps(GL_TEXTURE_2D, internalFormat, textureWidth, textureHeight, format, GL_UNSIGNED_BYTE,
                          surface->pixels);
    } else {
        glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, textureWidth, textureHeight, 0, format, GL_UNSIGNED_BYTE,
                     surface->pixels);
    }
    glPopClientAttrib();
    if (clamp) {
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    }
}

void SimpleImage::refresh(bool last) {
    if (textureName == 0) load(last, bitmask == nullptr);
    setFilter(filter);
}

void SimpleImage::release(bool) {
    if (textureName == 0) return;
    glDeleteTextures(1, &textureName);
    textureName = 0;
}

void SimpleImage::setFilter(ImageFilter wanted) {
    if (textureName == 0) return;
    glBindTexture(GL_TEXTURE_2D, textureName);
    if (bank && wanted > bank->maxFilter) wanted = bank->maxFilter;
    GLint minFilter, magFilter = GL_LINEAR;
    switch (wanted) {
        case FILTER_NONE: minFilter = magFilter = GL_NEAREST; break;
        case FILTER_LINEAR: minFilter = GL_LINEAR; break;
        case FILTER_BILINEAR: minFilter = GL_NEAREST_MIPMAP_LINEAR; break;
        case FILTER_TRILINEAR: minFilter = GL_LINEAR_MIPMAP_LINEAR; break;
        default: return;
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, minFilter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, magFilter);
}

}  // namespace gfx
}  // namespace norvane
