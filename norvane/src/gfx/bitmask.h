#ifndef NORVANE_GFX_BITMASK_H
#define NORVANE_GFX_BITMASK_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "math/geometry.h"

struct SDL_Surface;

namespace norvane {
namespace gfx {

// Which pixels of an image are solid, one bit per pixel, plus the boxes that let collision tests
// decide early. Pixel (x, y) runs x right and y down from the top-left pixel; every row starts on a
// word boundary and its leftmost pixel is the word's most significant bit.
class Bitmask {
public:
    Bitmask(int width, int height);
    // Solid means alpha / 256 above `threshold`; only 32-bit surfaces have solid pixels.
    // `keepCache` keeps the per-column working buffers for the next mask of the same width.
    Bitmask(SDL_Surface* surface, float threshold, bool keepCache);

    void clear();
    bool at(int x, int y) const {
        return (bits[static_cast<std::size_t>(y * wordsPerRow + x / 32)] >> (31 - x % 32)) & 1u;
    }

    int getWidth() const { return width; }
    int getHeight() const { return height; }
    const std::uint32_t* getBits() const { return bits.data(); }
    int getSize() const { return static_cast<int>(bits.size()); }
    int getWordsPerRow() const { return wordsPerRow; }
    // Smallest rectangle around every solid pixel; with none, (width, height, 1 - width, 1 - height).
    const basic_Rect<int>& getOuterBoundingBox() const { return outerBoundingBox; }
    // A largest rectangle of only solid pixels; (0, 0, 0, 0) when there is none.
    const basic_Rect<int>& getInnerBoundingBox() const { return innerBoundingBox; }

    void print() const;  // to standard output, for debugging

private:
    int width;
    int height;
    int wordsPerRow;
    std::vector<std::uint32_t> bits;  // bits beyond `width` in a row's last word stay 0
    basic_Rect<int> outerBoundingBox;
    basic_Rect<int> innerBoundingBox;
};

// True when a pixel is solid in both masks, `b`'s top-left pixel lying at (dx, dy) in `a`'s pixels.
bool checkCollisionBitmask(const Bitmask* a, const Bitmask* b, int dx, int dy);
// Prints the overlap: "." neither, "1" only a, "2" only b, "X" both.
void printCollisionBitmask(const Bitmask* a, const Bitmask* b, int dx, int dy);
// Frees the working buffers that masks built with keepCache left behind.
void clearBitmaskCache();

}  // namespace gfx
}  // namespace norvane

#endif
