#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "gfx/bitmask.h"
#include "support/surfaces.h"
#include "sprites/sprites.h"

using norvane::basic_Rect;
using norvane::basic_Vector2D;
using norvane::gfx::Bitmask;
using norvane::sprites::Sprite;
using norvane::sprites::SpriteEngine;

namespace {

using Call = std::pair<const Sprite*, const Sprite*>;  // (told, about)

class TestSprite : public Sprite {
public:
    TestSprite(float x, float y, std::vector<Call>* calls) : Sprite({x, y}, true), calls(calls) {}
    void drawSelf() override {}
    Bitmask* getBitmask() const override {
        ++maskQueries;
        return mask;
    }
    void onCollision(Sprite* other) override {
        calls->push_back({this, other});
        if (dropOnHit) collidable = false;
    }
    void setMask(Bitmask* m) {
        mask = m;
        outerBoundingBox = m->getOuterBoundingBox();
        innerBoundingBox = m->getInnerBoundingBox();
    }

    Bitmask* mask = nullptr;
    mutable int maskQueries = 0;
    std::vector<Call>* calls;
    bool dropOnHit = false;  // stops colliding after its first hit, as a spent laser does
};

// The passes written as plain double loops, reading the flags where those loops read them.
void referencePass(const SpriteEngine& engine) {
    const auto& list = engine.sprites;
    for (size_t i = 0; i < list.size(); ++i) {
        if (!list[i]->collidable) continue;
        for (size_t j = i + 1; j < list.size(); ++j) {
            if (list[j]->collidable && list[i]->checkCollision(list[j])) list[i]->onCollision(list[j]);
        }
    }
}

void referencePass(const SpriteEngine& engine, const SpriteEngine& other) {
    for (Sprite* a : engine.sprites) {
        if (!a->collidable) continue;
        for (Sprite* b : other.sprites) {
            if (b->collidable && a->checkCollision(b)) {
                a->onCollision(b);
                b->onCollision(a);
            }
        }
    }
}

float uniform(float low, float high) { return low + (high - low) * static_cast<float>(std::rand()) / RAND_MAX; }

// A busy field: sprites of many sizes and shapes, some with masks, some spent or faded out.
class Scene {
public:
    explicit Scene(unsigned seed) {
        std::srand(seed);
        masks.emplace_back(new Bitmask(disc(24).get(), 0.5f, false));
        masks.emplace_back(new Bitmask(ring(40).get(), 0.5f, false));
        masks.emplace_back(new Bitmask(disc(9).get(), 0.5f, false));
        masks.emplace_back(new Bitmask(makeRgbaSurface(16, 16).get(), 0.5f, false));  // nothing solid
    }

    TestSprite* make(std::vector<Call>* calls) {
        auto* sprite = new TestSprite(uniform(-40, 840), uniform(-40, 640), calls);
        sprite->hotspot = {uniform(-20, 20), uniform(-20, 20)};
        const int kind = std::rand() % 6;
        if (kind < static_cast<int>(masks.size())) {
            sprite->setMask(masks[static_cast<size_t>(kind)].get());
        } else {
            const int w = 1 + std::rand() % 60, h = 1 + std::rand() % 60;
            sprite->outerBoundingBox = {std::rand() % 4, std::rand() % 4, w, h};
            sprite->innerBoundingBox = kind == 4 ? basic_Rect<int>{w / 4, h / 4, w / 2, h / 2} : basic_Rect<int>{};
        }
        sprite->collidable = std::rand() % 5 != 0;
        sprite->dropOnHit = std::rand() % 4 == 0;
        sprites.emplace_back(sprite);
        return sprite;
    }

    std::vector<std::unique_ptr<Bitmask>> masks;
    std::vector<std::unique_ptr<TestSprite>> sprites;

private:
    static SurfacePtr disc(int diameter) {
        SurfacePtr surface = makeRgbaSurface(diameter, diameter);
        const float r = diameter / 2.0f;
        for (int y = 0; y < diameter; ++y)
            for (int x = 0; x < diameter; ++x) {
                const float dx = x + 0.5f - r, dy = y + 0.5f - r;
                setPixel(surface.get(), x, y, 255, 255, 255, dx * dx + dy * dy < r * r ? 255 : 0);
            }
        return surface;
    }
    static SurfacePtr ring(int diameter) {
        SurfacePtr surface = disc(diameter);
        const float r = diameter / 2.0f;
        for (int y = 0; y < diameter; ++y)
            for (int x = 0; x < diameter; ++x) {
                const float dx = x + 0.5f - r, dy = y + 0.5f - r;
                if (dx * dx + dy * dy < r * r / 2) setPixel(surface.get(), x, y, 0, 0, 0, 0);
            }
        return surface;
    }
};

std::vector<bool> flagsOf(const SpriteEngine& engine) {
    std::vector<bool> flags;
    for (const Sprite* s : engine.sprites) flags.push_back(s->collidable);
    return flags;
}

void restoreFlags(SpriteEngine& engine, const std::vector<bool>& flags) {
    for (size_t i = 0; i < flags.size(); ++i) engine.sprites[i]->collidable = flags[i];
}

}  // namespace

TEST(SpriteCollision, BoxesTouchOnlyAtTheLeftOrTopEdge) {
    std::vector<Call> calls;
    TestSprite a(100, 100, &calls), b(90, 100, &calls);
    a.outerBoundingBox = b.outerBoundingBox = {0, 0, 10, 10};
    EXPECT_TRUE(a.checkCollisionOuterBoundingBox(&b));  // b's right edge on a's left edge
    b.position.x = 110;
    EXPECT_FALSE(a.checkCollisionOuterBoundingBox(&b));  // a's right edge on b's left edge
    b.position = {100, 110};  // b above a: its bottom edge on a's top edge
    EXPECT_TRUE(a.checkCollisionOuterBoundingBox(&b));
    b.position = {100, 90};
    EXPECT_FALSE(a.checkCollisionOuterBoundingBox(&b));
    b.position = {100.4f, 100.4f};  // offsets round to whole pixels
    a.outerBoundingBox = b.outerBoundingBox = {0, 0, 1, 1};
    EXPECT_TRUE(a.checkCollisionOuterBoundingBox(&b));
}

TEST(SpriteCollision, StagesGoFromBoxesToBitmask) {
    std::vector<Call> calls;
    // Two rings whose boxes overlap while their pixels do not.
    SurfacePtr ring = surfaceFromPicture({"####", "#..#", "#..#", "####"});
    SurfacePtr dot = surfaceFromPicture({"#"});
    Bitmask ringMask(ring.get(), 0.5f, false), dotMask(dot.get(), 0.5f, false);
    TestSprite a(0, 100, &calls), b(1, 99, &calls);  // b's pixel lands in the ring's hollow (1, 1)
    a.setMask(&ringMask);
    b.setMask(&dotMask);
    EXPECT_TRUE(a.checkCollisionOuterBoundingBox(&b));
    EXPECT_FALSE(a.checkCollision(&b));
    b.mask = nullptr;  // without a mask the box decides
    EXPECT_TRUE(a.checkCollision(&b));
    b.mask = &dotMask;
    b.position = {3, 97};  // on the ring's corner pixel (3, 3)
    EXPECT_TRUE(a.checkCollision(&b));

    // Overlapping inner boxes accept without asking for the masks.
    a.innerBoundingBox = {0, 0, 4, 1};
    b.innerBoundingBox = {0, 0, 1, 1};
    b.position = {2, 100};
    a.maskQueries = b.maskQueries = 0;
    EXPECT_TRUE(a.checkCollision(&b));
    EXPECT_EQ(a.maskQueries + b.maskQueries, 0);
}

TEST(SpriteCollision, EnginesFindExactlyThePairsOfPlainLoops) {
    for (unsigned seed : {1u, 2u, 3u, 4u}) {
        Scene scene(seed);
        std::vector<Call> calls;
        SpriteEngine ships, rocks, lasers;
        for (int i = 0; i < 20; ++i) ships.addBack(scene.make(&calls));
        for (int i = 0; i < 180; ++i) rocks.addBack(scene.make(&calls));
        for (int i = 0; i < 100; ++i) lasers.addBack(scene.make(&calls));
        std::vector<std::vector<bool>> flags;
        for (const SpriteEngine* e : {&ships, &rocks, &lasers}) flags.push_back(flagsOf(*e));
        auto restore = [&] {
            restoreFlags(ships, flags[0]);
            restoreFlags(rocks, flags[1]);
            restoreFlags(lasers, flags[2]);
        };
        // Runs a pass and its reference from the same flags; sprites record their calls into `calls`.
        auto compare = [&](const std::function<void()>& pass, const std::function<void()>& reference) {
            calls.clear();
            pass();
            const std::vector<Call> found = calls;
            restore();
            calls.clear();
            reference();
            restore();
            EXPECT_EQ(found, calls) << "seed " << seed;
            return found;
        };
        for (SpriteEngine* other : {&rocks, &lasers, &ships}) {
            compare([&] { ships.testCollisions(other); }, [&] { referencePass(ships, *other); });
        }
        const std::vector<Call> found = compare([&] { rocks.testCollisions(); }, [&] { referencePass(rocks); });
        EXPECT_GT(found.size(), 20u) << "the scene should be busy enough to mean something";
        for (const Call& call : found) {
            const auto at = std::find(rocks.sprites.begin(), rocks.sprites.end(), call.first) - rocks.sprites.begin();
            EXPECT_TRUE(flags[1][static_cast<size_t>(at)]) << "a sprite that was not collidable was told";
        }
    }
}

TEST(SpriteCollision, OnlyTheEarlierSpriteIsToldWithinAnEngineAndBothAcross) {
    std::vector<Call> calls;
    TestSprite a(0, 10, &calls), b(5, 10, &calls), hidden(5, 10, &calls);
    for (TestSprite* s : {&a, &b, &hidden}) s->outerBoundingBox = {0, 0, 10, 10};
    a.collidable = b.collidable = true;
    hidden.visible = false;  // invisible sprites collide too
    hidden.collidable = true;
    SpriteEngine one, other;
    one.addBack(&a);
    one.addBack(&b);
    one.testCollisions();
    EXPECT_EQ(calls, (std::vector<Call>{{&a, &b}}));

    calls.clear();
    other.addBack(&b);
    other.addBack(&hidden);
    one.testCollisions(&other);
    EXPECT_EQ(calls, (std::vector<Call>{{&a, &b}, {&b, &a}, {&a, &hidden}, {&hidden, &a}}));

    calls.clear();
    b.collidable = false;  // never told, never tested
    one.testCollisions(&other);
    EXPECT_EQ(calls, (std::vector<Call>{{&a, &hidden}, {&hidden, &a}}));
}

TEST(SpriteCollision, SpritesJoiningDuringAPassWaitForTheNext) {
    std::vector<Call> calls;
    struct Splitter : TestSprite {
        using TestSprite::TestSprite;
        void onCollision(Sprite* other) override {
            TestSprite::onCollision(other);
            if (!fragment) return;
            engine->addFront(fragment);  // shifts every list position mid-pass
            fragment = nullptr;
        }
        TestSprite* fragment = nullptr;
    };
    Splitter a(0, 10, &calls);
    TestSprite b(5, 10, &calls), c(5, 10, &calls), fragment(5, 10, &calls);
    for (TestSprite* s : std::vector<TestSprite*>{&a, &b, &c, &fragment}) {
        s->outerBoundingBox = {0, 0, 10, 10};
        s->collidable = true;
    }
    a.fragment = &fragment;
    SpriteEngine engine;
    for (Sprite* s : std::vector<Sprite*>{&a, &b, &c}) engine.addBack(s);
    engine.testCollisions();
    EXPECT_EQ(calls, (std::vector<Call>{{&a, &b}, {&a, &c}, {&b, &c}}));
    calls.clear();
    engine.testCollisions();
    EXPECT_EQ(calls.size(), 6u);  // the fragment takes part now
}

TEST(SpriteEngine, MovesSpritesBetweenEnginesAndForgetsDestroyedOnes) {
    std::vector<Call> calls;
    SpriteEngine first, second;
    auto a = std::make_unique<TestSprite>(0, 0, &calls);
    TestSprite b(0, 0, &calls), c(0, 0, &calls);
    first.addBack(a.get());
    first.addBack(&b);
    second.addBack(&c);
    second.addFront(&b);  // moves b out of the first engine
    EXPECT_EQ(first.sprites, (std::vector<Sprite*>{a.get()}));
    EXPECT_EQ(second.sprites, (std::vector<Sprite*>{&b, &c}));
    EXPECT_EQ(b.engine, &second);
    first.remove(&c);  // not one of the first engine's: nothing happens
    EXPECT_EQ(second.size(), 2);
    EXPECT_EQ(c.engine, &second);

    a.reset();
    EXPECT_EQ(first.size(), 0);
    {
        SpriteEngine doomed;
        doomed.addBack(&c);
    }
    EXPECT_EQ(c.engine, nullptr);  // the engine's end leaves its sprites alive and unattached
    EXPECT_EQ(second.sprites, (std::vector<Sprite*>{&b}));
    second.clear();
    EXPECT_EQ(b.engine, nullptr);
}
