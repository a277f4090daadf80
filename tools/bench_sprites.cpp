// Collision passes of a busy game scene, and the starfield.
#include <GL/gl.h>
#include <SDL/SDL.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <memory>
#include <new>
#include <vector>

#include "allocations.h"
#include "gfx/bitmask.h"
#include "norvane.h"
#include "particles/starfield.h"
#include "rendercontext.h"
#include "screen.h"
#include "sprites/sprites.h"

using norvane::gfx::Bitmask;
using norvane::sprites::Sprite;
using norvane::sprites::SpriteEngine;

namespace {

class Body : public Sprite {
public:
    Body(float x, float y, Bitmask* mask) : Sprite({x, y}, true), mask(mask) {
        outerBoundingBox = mask->getOuterBoundingBox();
        innerBoundingBox = mask->getInnerBoundingBox();
        hotspot = {mask->getWidth() / 2.0f, -mask->getHeight() / 2.0f};
        collidable = true;
    }
    void drawSelf() override {}
    Bitmask* getBitmask() const override { return mask; }
    void onCollision(Sprite*) override { ++hits; }

    Bitmask* mask;
    int hits = 0;
};

std::unique_ptr<Bitmask> discMask(int width, int height) {
    SDL_Surface* surface = SDL_CreateRGBSurface(SDL_SWSURFACE, width, height, 32, 0x000000FF, 0x0000FF00,
                                                0x00FF0000, 0xFF000000);
    auto* pixels = static_cast<Uint32*>(surface->pixels);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float dx = (x + 0.5f) / width - 0.5f, dy = (y + 0.5f) / height - 0.5f;
            pixels[y * surface->pitch / 4 + x] = dx * dx + dy * dy < 0.25f ? 0xFFFFFFFF : 0x00FFFFFF;
        }
    }
    auto mask = std::make_unique<Bitmask>(surface, 0.5f, false);
    SDL_FreeSurface(surface);
    return mask;
}

float uniform(float low, float high) { return low + (high - low) * static_cast<float>(std::rand()) / RAND_MAX; }

// About 300 sprites as a late stage has them: two ships with shields, asteroids and their
// explosions, extras, pirates, and both sides' lasers in flight.
struct GameScene {
    GameScene() {
        std::srand(7);
        ship = discMask(64, 64);
        large = discMask(64, 64);
        small = discMask(32, 32);
        laser = discMask(6, 24);
        extra = discMask(32, 32);
        fill(ships, 4, ship.get(), 100, 100);
        fill(asteroids, 120, large.get(), 0, 600);
        for (size_t i = 0; i < 60; ++i) static_cast<Body*>(asteroids.sprites[i])->mask = small.get();
        for (size_t i = 90; i < 120; ++i) asteroids.sprites[i]->collidable = false;  // explosions
        fill(extras, 10, extra.get(), 0, 600);
        fill(foes, 6, ship.get(), 300, 600);
        fill(shipLasers, 110, laser.get(), 0, 600);
        fill(foeLasers, 50, laser.get(), 0, 600);
    }

    void fill(SpriteEngine& engine, int count, Bitmask* mask, float low, float high) {
        for (int i = 0; i < count; ++i) {
            bodies.emplace_back(new Body(uniform(0, 800), uniform(low, high), mask));
            engine.addBack(bodies.back().get());
        }
    }

    // The running game's order of engine pairs.
    void pass() {
        ships.testCollisions(&asteroids);
        ships.testCollisions(&extras);
        ships.testCollisions(&foes);
        shipLasers.testCollisions(&asteroids);
        shipLasers.testCollisions(&foes);
        foeLasers.testCollisions(&asteroids);
        foeLasers.testCollisions(&ships);
    }

    std::unique_ptr<Bitmask> ship, large, small, laser, extra;
    std::vector<std::unique_ptr<Body>> bodies;
    SpriteEngine ships, asteroids, extras, foes, shipLasers, foeLasers;
};

// Every pair of two engines, as plain nested loops would test them.
void bruteForce(SpriteEngine& a, SpriteEngine& b) {
    for (Sprite* x : a.sprites) {
        if (!x->collidable) continue;
        for (Sprite* y : b.sprites) {
            if (y->collidable && x->checkCollision(y)) {
                x->onCollision(y);
                y->onCollision(x);
            }
        }
    }
}

void BM_CollisionPass(benchmark::State& state) {
    GameScene scene;
    scene.pass();  // sizes the engines' scratch buffers
    const size_t before = allocations;
    for (auto _ : state) scene.pass();
    state.counters["allocations/pass"] = benchmark::Counter(
        static_cast<double>(allocations - before) / static_cast<double>(state.iterations()));
    state.counters["sprites"] = static_cast<double>(scene.bodies.size());
}
BENCHMARK(BM_CollisionPass);

void BM_CollisionPassNestedLoops(benchmark::State& state) {
    GameScene scene;
    for (auto _ : state) {
        bruteForce(scene.ships, scene.asteroids);
        bruteForce(scene.ships, scene.extras);
        bruteForce(scene.ships, scene.foes);
        bruteForce(scene.shipLasers, scene.asteroids);
        bruteForce(scene.shipLasers, scene.foes);
        bruteForce(scene.foeLasers, scene.asteroids);
        bruteForce(scene.foeLasers, scene.ships);
    }
}
BENCHMARK(BM_CollisionPassNestedLoops);

// One engine of n sprites tested within itself: the pass should grow like n log n, not n².
void BM_CollisionWithinEngine(benchmark::State& state) {
    std::srand(11);
    auto mask = discMask(32, 32);
    std::vector<std::unique_ptr<Body>> bodies;
    SpriteEngine engine;
    const float side = 40.0f * std::sqrt(static_cast<float>(state.range(0)));  // constant density
    for (int i = 0; i < state.range(0); ++i) {
        bodies.emplace_back(new Body(uniform(0, side), uniform(0, side), mask.get()));
        engine.addBack(bodies.back().get());
    }
    for (auto _ : state) engine.testCollisions();
}
BENCHMARK(BM_CollisionWithinEngine)->RangeMultiplier(4)->Range(64, 4096);

// The game's five classes, slow and dark to fast and bright, 1500 stars over 800 x 600.
norvane::particles::StarfieldProperties gameSky() {
    norvane::particles::StarfieldProperties sky;
    sky.width = 800;
    sky.height = 600;
    for (int i = 1; i <= 5; ++i) {
        const float light = 0.2f * static_cast<float>(i);
        sky.classes.push_back({300, 0.01f * static_cast<float>(i), norvane::Color(light, light, light)});
    }
    return sky;
}

void BM_StarfieldPerform(benchmark::State& state) {
    std::unique_ptr<norvane::particles::Starfield> field(gameSky().create());
    const size_t before = allocations;
    for (auto _ : state) field->perform(16);
    state.counters["allocations/frame"] = benchmark::Counter(
        static_cast<double>(allocations - before) / static_cast<double>(state.iterations()));
}
BENCHMARK(BM_StarfieldPerform);

// With glFinish, so the time includes Mesa drawing the points, not only queuing them; Mesa draws
// on threads of its own, hence wall time.
void BM_StarfieldPerformDraw(benchmark::State& state) {
    if (!norvane::screen) {
        state.SkipWithError("no display: run under xvfb-run for the drawing figures");
        return;
    }
    norvane::RenderContext2D context(norvane::basic_Vector2D<float>{800, 600});
    context.apply();
    std::unique_ptr<norvane::particles::Starfield> field(gameSky().create());
    const size_t before = allocations;
    for (auto _ : state) {
        field->perform(16);
        field->draw();
        glFinish();
    }
    state.counters["allocations/frame"] = benchmark::Counter(
        static_cast<double>(allocations - before) / static_cast<double>(state.iterations()));
}
BENCHMARK(BM_StarfieldPerformDraw)->UseRealTime();

// What glFinish alone costs on the same context, to read the figure above against.
void BM_EmptyFrameFinish(benchmark::State& state) {
    if (!norvane::screen) {
        state.SkipWithError("no display");
        return;
    }
    for (auto _ : state) glFinish();
}
BENCHMARK(BM_EmptyFrameFinish)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    if (std::getenv("DISPLAY")) {
        try {
            norvane::init(norvane::SUBSYSTEM_VIDEO, false);
            norvane::setResolution(800, 600, 32, false, 0, 0);
        } catch (const std::string& error) {
            std::fprintf(stderr, "No GL window (%s): the drawing benchmark is skipped.\n", error.c_str());
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
