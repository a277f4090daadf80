#include "gfx/bitmask.h"

#include <random>

#include "support/files.h"
#include "support/surfaces.h"

using namespace norvane;
using namespace norvane::gfx;

static std::vector<int> box(const basic_Rect<int>& r) { return {r.x, r.y, r.width, r.height}; }

static SurfacePtr randomSurface(int width, int height, double density, unsigned seed) {
    std::mt19937 random(seed);
    std::bernoulli_distribution solid(density);
    SurfacePtr surface = makeRgbaSurface(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) setPixel(surface.get(), x, y, 0, 0, 0, solid(random) ? 255 : 0);
    return surface;
}

static bool bruteCollision(const Bitmask& a, const Bitmask& b, int dx, int dy) {
    for (int y = std::max(0, dy); y < std::min(a.getHeight(), dy + b.getHeight()); ++y)
        for (int x = std::max(0, dx); x < std::min(a.getWidth(), dx + b.getWidth()); ++x)
            if (a.at(x, y) && b.at(x - dx, y - dy)) return true;
    return false;
}

static bool allSolid(const Bitmask& m, const basic_Rect<int>& r) {
    for (int y = r.y; y < r.y + r.height; ++y)
        for (int x = r.x; x < r.x + r.width; ++x)
            if (!m.at(x, y)) return false;
    return true;
}

static int bruteLargestSolidArea(const Bitmask& m) {
    int best = 0;
    for (int y0 = 0; y0 < m.getHeight(); ++y0)
        for (int x0 = 0; x0 < m.getWidth(); ++x0)
            for (int y1 = y0; y1 < m.getHeight(); ++y1)
                for (int x1 = x0; x1 < m.getWidth(); ++x1)
                    if ((x1 - x0 + 1) * (y1 - y0 + 1) > best && allSolid(m, {x0, y0, x1 - x0 + 1, y1 - y0 + 1}))
                        best = (x1 - x0 + 1) * (y1 - y0 + 1);
    return best;
}

TEST(Bitmask, SolidMeansAlphaOver256thsInRowsOfWordsLeftmostPixelHighestAndTheInnerBoxIsALargestSolidRectangle) {
    for (const auto& [alpha, threshold, solid] : {std::tuple{128, 0.5f, false}, {129, 0.5f, true}, {1, 0.0f, true},
                                                  {0, 0.0f, false}, {255, 0.99f, true}, {255, 0.9961f, false}}) {
        SurfacePtr pixel = makeRgbaSurface(1, 1);
        setPixel(pixel.get(), 0, 0, 10, 20, 30, Uint8(alpha));
        EXPECT_EQ(Bitmask(pixel.get(), threshold, false).at(0, 0), solid) << alpha << " " << threshold;
    }
    SurfacePtr surface = makeRgbaSurface(40, 10);
    SDL_FillRect(surface.get(), nullptr, SDL_MapRGBA(surface->format, 0, 0, 0, 255));
    const Bitmask full(surface.get(), 0.5f, false);
    ASSERT_EQ(full.getSize(), 20);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(full.getBits()[i], i % 2 ? 0xFF000000u : 0xFFFFFFFFu) << i;
    EXPECT_EQ(Bitmask(surfaceFromPicture({"..#", "..."}).get(), 0.5f, false).getBits()[0], 0x20000000u);
    const Bitmask empty(surfaceFromPicture({"....", "...."}).get(), 0.5f, false);
    // The plus's horizontal bar is complete in row 1, before the vertical bar of equal area.
    const Bitmask plus(surfaceFromPicture({".#.", "###", ".#."}).get(), 0.5f, false);
    EXPECT_EQ((std::vector<std::vector<int>>{box(full.getOuterBoundingBox()), box(full.getInnerBoundingBox()), box(empty.getOuterBoundingBox()),
                                             box(plus.getOuterBoundingBox()), box(plus.getInnerBoundingBox())}),
              (std::vector<std::vector<int>>{{0, 0, 40, 10}, {0, 0, 40, 10}, {4, 2, -3, -1}, {0, 0, 3, 3}, {0, 1, 3, 1}}));
    // Only 32-bit surfaces have solid pixels.
    SurfacePtr rgb(SDL_CreateRGBSurface(SDL_SWSURFACE, 3, 2, 24, 0xFF, 0xFF00, 0xFF0000, 0));
    SDL_FillRect(rgb.get(), nullptr, 0xFFFFFF);
    EXPECT_EQ(captured([&] { EXPECT_FALSE(Bitmask(rgb.get(), 0.0f, false).at(0, 0)); }), "");
    SurfacePtr palette(SDL_CreateRGBSurface(SDL_SWSURFACE, 2, 1, 8, 0, 0, 0, 0));
    EXPECT_EQ(captured([&] { EXPECT_FALSE(Bitmask(palette.get(), 0.0f, false).at(1, 0)); }),
              "[bitmask] Can't handle 8 bits per pixel.\n[bitmask] Can't handle 8 bits per pixel.\n");
    // Debug prints: the mask with its boxes, and overlaps.
    const Bitmask dot(surfaceFromPicture({"#"}).get(), 0.5f, false);
    const std::string pad(29, '0');
    EXPECT_EQ(captured([&] {
                  plus.print();
                  for (const auto& [a, b, dx, dy] : {std::tuple{&plus, &dot, 1, 1}, {&plus, &dot, 0, 2}, {&dot, &plus, -1, -1}})
                      printCollisionBitmask(a, b, dx, dy);
              }), "3 x 3:\n.#." + pad + "|\nXXX" + pad + "|\n.#." + pad + "|\nX\n2\nX\n");

    // The inner box is a largest solid rectangle, with or without the cache.
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const int width = 1 + static_cast<int>(seed % 11), height = 1 + static_cast<int>(seed % 7);
        // Alternating keepCache and widths: stale column runs from a previous build would show here.
        const Bitmask mask(randomSurface(width, height, 0.75, seed).get(), 0.5f, seed % 3 != 0);
        const basic_Rect<int>& inner = mask.getInnerBoundingBox();
        EXPECT_EQ(inner.width * inner.height, bruteLargestSolidArea(mask)) << "seed " << seed;
        EXPECT_TRUE(allSolid(mask, inner)) << "seed " << seed;
    }
    clearBitmaskCache();
}

TEST(Bitmask, CollisionMatchesBruteForceAtEveryOffset) {
    // Widths around word boundaries, in both roles.
    std::vector<Bitmask> masks;
    unsigned seed = 7;
    for (const auto& [width, height, density] :
         {std::tuple{1, 3, 0.7}, {31, 4, 0.08}, {32, 3, 0.1}, {33, 5, 0.06}, {64, 2, 0.05}, {70, 4, 0.03}})
        masks.emplace_back(randomSurface(width, height, density, seed++).get(), 0.5f, true);
    clearBitmaskCache();
    int hits = 0, misses = 0;
    for (const Bitmask& a : masks)
        for (const Bitmask& b : masks)
            for (int dy = -b.getHeight() - 1; dy <= a.getHeight() + 1; ++dy)
                for (int dx = -b.getWidth() - 1; dx <= a.getWidth() + 1; ++dx) {
                    const bool expected = bruteCollision(a, b, dx, dy);
                    ASSERT_EQ(checkCollisionBitmask(&a, &b, dx, dy), expected)
                        << a.getWidth() << " vs " << b.getWidth() << " at " << dx << "," << dy;
                    ++(expected ? hits : misses);
                }
    EXPECT_GT(std::min(hits, misses), 1000);
    // Single pixels meet across a word boundary, and not a pixel or a row beside it.
    SurfacePtr aSurface = makeRgbaSurface(40, 8), bSurface = makeRgbaSurface(4, 2);
    setPixel(aSurface.get(), 33, 5, 0, 0, 0, 255);
    setPixel(bSurface.get(), 1, 0, 0, 0, 0, 255);
    const Bitmask a(aSurface.get(), 0.5f, false), b(bSurface.get(), 0.5f, false);
    EXPECT_TRUE(checkCollisionBitmask(&a, &b, 32, 5) && checkCollisionBitmask(&b, &a, -32, -5));
    EXPECT_FALSE(checkCollisionBitmask(&a, &b, 31, 5) || checkCollisionBitmask(&a, &b, 32, 8) ||
                 checkCollisionBitmask(&a, &b, 32, 4));
}
