#include "gfx/bitmask.h"

#include <SDL/SDL.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstring>

namespace norvane {
namespace gfx {

namespace {

// Per column: first and last row of the unbroken solid run that reaches the current row, -1 when
// the column is empty there. Shared by all builds so that a series of same-sized frames reuses them.
std::vector<int> upper;
std::vector<int> lower;
int cacheSize = 0;

int wordsFor(int width) { return (width + 31) / 32; }

int area(const basic_Rect<int>& r) { return r.width * r.height; }

bool inside(const basic_Rect<int>& r, int x, int y) {
    return x >= r.x && x < r.x + r.width && y >= r.y && y < r.y + r.height;
}

}  // namespace

Bitmask::Bitmask(int width, int height) : width(width), height(height) {
    if (width < 0 || height < 0) {
        assert(!"negative bitmask size");
        this->width = std::max(width, 0);
        this->height = std::max(height, 0);
    }
    wordsPerRow = wordsFor(this->width);
    bits.assign(static_cast<size_t>(wordsPerRow) * static_cast<size_t>(this->height), 0u);
}

Bitmask::Bitmask(SDL_Surface* surface, float threshold, bool keepCache) : Bitmask(surface->w, surface->h) {
    const bool mustLock = SDL_MUSTLOCK(surface);
    if (mustLock && SDL_LockSurface(surface) < 0) return;

    if (cacheSize != width) {
        upper.assign(static_cast<size_t>(width), -1);
        lower.assign(static_cast<size_t>(width), -1);
        cacheSize = width;
    }
    std::fill(upper.begin(), upper.end(), -1);

    const SDL_PixelFormat* format = surface->format;
    const int depth = format->BitsPerPixel;
    int minX = width, minY = height, maxX = 0, maxY = 0;
    for (int y = 0; y < height; ++y) {
        const Uint8* row = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch;
        for (int x = 0; x < width; ++x) {
            bool solid = false;
            if (depth == 32) {
                Uint32 pixel;
                std::memcpy(&pixel, row + x * 4, sizeof pixel);
                const Uint32 alpha = ((pixel & format->Amask) >> format->Ashift) << format->Aloss;
                solid = static_cast<float>(alpha) * 0.00390625f > threshold;
            } else if (depth != 24) {
                std::printf("[bitmask] Can't handle %d bits per pixel.\n", depth);
            }
            if (!solid) {
                upper[x] = lower[x] = -1;
                continue;
            }
            bits[static_cast<size_t>(y * wordsPerRow + x / 32)] |= 0x80000000u >> (x % 32);
            minX = std::min(minX, x);
            maxX = std::max(maxX, x);
            minY = std::min(minY, y);
            maxY = std::max(maxY, y);
            lower[x] = y;
            if (upper[x] == -1) upper[x] = y;

            // Grow leftwards the rectangles whose lower-right pixel is this one.
            int top = upper[x];
            for (int k = 0;; ++k) {
                top = std::max(top, upper[x - k]);
                const basic_Rect<int> candidate{x - k, top, k + 1, y - top + 1};
                if (area(candidate) > area(innerBoundingBox)) innerBoundingBox = candidate;
                if (x - k == 0 || lower[x - k - 1] == -1) break;
            }
        }
    }

    if (mustLock) SDL_UnlockSurface(surface);
    if (!keepCache) clearBitmaskCache();
    outerBoundingBox = {minX, minY, maxX - minX + 1, maxY - minY + 1};
}

void Bitmask::clear() { std::fill(bits.begin(), bits.end(), 0u); }

void Bitmask::print() const {
    std::printf("%d x %d:\n", width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < wordsPerRow * 32; ++x) {
            char c;
            if (!inside(outerBoundingBox, x, y)) c = '0';
            else if (inside(innerBoundingBox, x, y)) c = 'X';
            else c = at(x, y) ? '#' : '.';
            std::putchar(c);
        }
        std::fputs("|\n", stdout);
    }
}

bool checkCollisionBitmask(const Bitmask* a, const Bitmask* b, int dx, int dy) {
    if (dx < 0) {
        std::swap(a, b);
        dx = -dx;
        dy = -dy;
    }
    const int rowBegin = std::max(dy, 0);
    const int rowEnd = std::min(a->getHeight(), dy + b->getHeight());
    if (rowBegin >= rowEnd || dx >= a->getWidth()) return false;

    const int aWords = a->getWordsPerRow();
    const int bWords = b->getWordsPerRow();
    // Only words of b that start inside a's row can meet a solid pixel of a.
    const int words = std::min(bWords, (a->getWidth() - dx + 31) / 32);
    const int firstWord = dx / 32;
    const int shift = dx % 32;
    for (int r = rowBegin; r < rowEnd; ++r) {
        const std::uint32_t* aRow = a->getBits() + r * aWords;
        const std::uint32_t* bRow = b->getBits() + (r - dy) * bWords;
        for (int i = 0; i < words; ++i) {
            const int w = firstWord + i;
            std::uint32_t aBits = aRow[w] << shift;
            if (shift != 0 && w + 1 < aWords) aBits |= aRow[w + 1] >> (32 - shift);
            if (aBits & bRow[i]) return true;
        }
    }
    return false;
}

void printCollisionBitmask(const Bitmask* a, const Bitmask* b, int dx, int dy) {
    const int left = std::max(0, dx);
    const int right = std::min(a->getWidth(), dx + b->getWidth());
    const int top = std::max(0, dy);
    const int bottom = std::min(a->getHeight(), dy + b->getHeight());
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const bool inA = a->at(x, y);
            const bool inB = b->at(x - dx, y - dy);
            std::putchar(inA ? (inB ? 'X' : '1') : (inB ? '2' : '.'));
        }
        std::putchar('\n');
    }
}

void clearBitmaskCache() {
    std::vector<int>().swap(upper);
    std::vector<int>().swap(lower);
    cacheSize = 0;
}

}  // namespace gfx
}  // namespace norvane
