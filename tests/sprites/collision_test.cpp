#include <gtest/gtest.h>

#include "gfx/bitmask.h"
#include "sprites/sprites.h"
#include "support/surfaces.h"

using norvane::gfx::Bitmask;
using namespace norvane::sprites;

using Calls = std::vector<std::pair<const Sprite*, const Sprite*>>;  // (told, about)

struct Probe : Sprite {
    Probe(float x, float y, Calls* calls, int size = 10) : Sprite({x, y}, true), calls(calls) {
        outerBoundingBox = {0, 0, size, size};
        collidable = true;
    }
    void drawSelf() override {}
    Bitmask* getBitmask() const override { return ++maskQueries, mask; }
    void onCollision(Sprite* other) override {
        calls->push_back({this, other});
        collidable = collidable && !spentOnHit;
    }
    void setMask(Bitmask* m) { mask = m, outerBoundingBox = m->getOuterBoundingBox(), innerBoundingBox = m->getInnerBoundingBox(); }

    Calls* calls;
    Bitmask* mask = nullptr;
    mutable int maskQueries = 0;
    bool spentOnHit = false;  // like a laser that stops colliding after its first hit
};

// The passes as plain double loops, reading the flags where such loops read them.
static void nestedLoops(SpriteEngine& engine, SpriteEngine* other) {
    auto& list = engine.sprites;
    for (size_t i = 0; i < list.size(); ++i) {
        if (!list[i]->collidable) continue;
        for (size_t j = other ? 0 : i + 1; j < (other ? other->sprites : list).size(); ++j) {
            Sprite* b = (other ? other->sprites : list)[j];
            if (!b->collidable || !list[i]->checkCollision(b)) continue;
            list[i]->onCollision(b);
            if (other) b->onCollision(list[i]);
        }
    }
}

static SurfacePtr disc(int diameter, bool hollow) {
    SurfacePtr surface = makeRgbaSurface(diameter, diameter);
    const float r = diameter / 2.0f;
    for (int y = 0; y < diameter; ++y)
        for (int x = 0; x < diameter; ++x) {
            const float d = (x + 0.5f - r) * (x + 0.5f - r) + (y + 0.5f - r) * (y + 0.5f - r);
            setPixel(surface.get(), x, y, 255, 255, 255, d < r * r && !(hollow && d < r * r / 2) ? 255 : 0);
        }
    return surface;
}

static float uniform(float low, float high) { return low + (high - low) * static_cast<float>(std::rand()) / RAND_MAX; }

TEST(SpriteCollision, BoxesTouchOnlyAtTheLeftOrTopEdgeAndMasksDecideAfterThem) {
    Calls calls;
    Probe a(100, 100, &calls), b(0, 0, &calls);
    // Offsets are rounded by adding 0.5 and truncating toward zero: -10.5 becomes -10.
    for (const auto& [x, y, overlap] : {std::tuple{90.0f, 100.0f, true}, {110, 100, false}, {100, 110, true}, {100, 90, false},
                                        {109.4f, 100, true}, {109.6f, 100, false}, {89, 100, true}, {88.4f, 100, false}}) {
        b.position = {x, y};
        EXPECT_EQ(a.checkCollisionOuterBoundingBox(&b), overlap) << x << ", " << y;
    }
    Bitmask ring(surfaceFromPicture({"####", "#..#", "#..#", "####"}).get(), 0.5f, false);
    Bitmask dot(surfaceFromPicture({"#"}).get(), 0.5f, false);
    a.position = {0, 100}, b.position = {1, 99};  // b's pixel in the ring's hollow at (1, 1)
    a.setMask(&ring), b.setMask(&dot);
    const bool hollow = a.checkCollision(&b);
    b.mask = nullptr;  // without a mask the boxes decide
    const bool boxes = a.checkCollision(&b);
    b.mask = &dot;
    b.position = {3, 97};  // on the ring's corner pixel (3, 3)
    EXPECT_TRUE(!hollow && boxes && a.checkCollision(&b));
    b.position = {2, 100};  // overlapping inner boxes accept without asking for the masks
    a.maskQueries = b.maskQueries = 0;
    EXPECT_TRUE(a.checkCollision(&b) && a.maskQueries + b.maskQueries == 0);
}

TEST(SpriteCollision, EnginesFindExactlyThePairsOfNestedLoops) {
    std::vector<std::unique_ptr<Bitmask>> masks;  // the last one has nothing solid
    const SurfacePtr surfaces[] = {disc(24, false), disc(40, true), makeRgbaSurface(16, 16)};
    for (const SurfacePtr& s : surfaces) masks.emplace_back(new Bitmask(s.get(), 0.5f, false));
    for (unsigned seed : {1u, 2u, 3u, 4u}) {
        std::srand(seed);
        Calls calls;
        std::vector<std::unique_ptr<Probe>> probes;
        SpriteEngine ships, rocks, lasers;
        for (SpriteEngine* e : {&ships, &rocks, &lasers})
            for (int i = 0; i < (e == &ships ? 20 : e == &rocks ? 180 : 100); ++i) {
                probes.emplace_back(new Probe(uniform(-40, 840), uniform(-40, 640), &calls, 1 + std::rand() % 60));
                Probe* p = probes.back().get();
                p->hotspot = {uniform(-20, 20), uniform(-20, 20)};
                if (const size_t kind = static_cast<size_t>(std::rand() % 5); kind < masks.size()) p->setMask(masks[kind].get());
                else if (kind == 3) p->innerBoundingBox = {2, 2, p->outerBoundingBox.width / 2, p->outerBoundingBox.height / 2};
                p->collidable = std::rand() % 5 != 0;
                p->spentOnHit = std::rand() % 4 == 0;
                e->addBack(p);
            }
        std::vector<bool> flags;
        for (const auto& p : probes) flags.push_back(p->collidable);
        for (SpriteEngine* other : {&rocks, &lasers, &ships, static_cast<SpriteEngine*>(nullptr)}) {
            SpriteEngine& engine = other ? ships : rocks;
            Calls found[2];
            for (Calls& pass : found) {
                calls.clear();
                if (&pass == found) other ? engine.testCollisions(other) : engine.testCollisions();
                else nestedLoops(engine, other);
                pass = calls;
                for (size_t i = 0; i < probes.size(); ++i) probes[i]->collidable = flags[i];
            }
            EXPECT_EQ(found[0], found[1]) << "seed " << seed;
            EXPECT_TRUE(other || found[0].size() > 20u) << "the scene should be busy enough to mean something";
        }
    }
}

TEST(SpriteEngine, MovesSpritesBetweenEnginesAndForgetsDestroyedOnes) {
    Calls calls;
    SpriteEngine first, second;
    auto a = std::make_unique<Probe>(0, 0, &calls);
    Probe b(0, 0, &calls), c(0, 0, &calls);
    first.addBack(a.get());
    first.addBack(&b);
    second.addBack(&c);
    second.addFront(&b);  // moves b out of the first engine
    first.remove(&c);     // not one of the first engine's: nothing happens
    EXPECT_TRUE(first.sprites == std::vector<Sprite*>{a.get()} && second.sprites == (std::vector<Sprite*>{&b, &c}));
    a.reset();
    std::make_unique<SpriteEngine>()->addBack(&c);  // the engine's end leaves its sprites alive and unattached
    EXPECT_TRUE(first.size() == 0 && c.engine == nullptr && second.sprites == std::vector<Sprite*>{&b});
}
