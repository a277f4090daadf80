// Pixel collision of two 64 x 64 masks, the size of the game's larger sprites.
#include <SDL/SDL.h>
#include <benchmark/benchmark.h>

#include <cstring>

#include "gfx/bitmask.h"

using norvane::gfx::Bitmask;

namespace {

// Solid pixels on the rows of the given parity only, so that masks of opposite parity never meet
// at an even vertical offset and the test has to look at every word.
Bitmask stripedMask(int parity) {
    SDL_Surface* surface = SDL_CreateRGBSurface(SDL_SWSURFACE, 64, 64, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const Uint32 pixel = (y % 2 == parity && (x * 7 + y) % 3 != 0) ? 0xFF000000u : 0u;
            std::memcpy(static_cast<Uint8*>(surface->pixels) + y * surface->pitch + x * 4, &pixel, 4);
        }
    }
    Bitmask mask(surface, 0.5f, false);
    SDL_FreeSurface(surface);
    return mask;
}

void BM_BitmaskOverlap64Miss(benchmark::State& state) {
    const Bitmask a = stripedMask(0), b = stripedMask(1);
    for (auto _ : state) benchmark::DoNotOptimize(norvane::gfx::checkCollisionBitmask(&a, &b, 13, 2));
}
BENCHMARK(BM_BitmaskOverlap64Miss);

void BM_BitmaskOverlap64Hit(benchmark::State& state) {
    const Bitmask a = stripedMask(0), b = stripedMask(1);
    for (auto _ : state) benchmark::DoNotOptimize(norvane::gfx::checkCollisionBitmask(&a, &b, 13, 33));
}
BENCHMARK(BM_BitmaskOverlap64Hit);

void BM_BitmaskBuild64(benchmark::State& state) {
    SDL_Surface* surface = SDL_CreateRGBSurface(SDL_SWSURFACE, 64, 64, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000);
    SDL_FillRect(surface, nullptr, 0xFF000000u);
    for (auto _ : state) benchmark::DoNotOptimize(Bitmask(surface, 0.5f, true));
    SDL_FreeSurface(surface);
    norvane::gfx::clearBitmaskCache();
}
BENCHMARK(BM_BitmaskBuild64);

}  // namespace

BENCHMARK_MAIN();
