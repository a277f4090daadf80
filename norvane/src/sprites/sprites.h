#ifndef NORVANE_SPRITES_SPRITES_H
#define NORVANE_SPRITES_SPRITES_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "gfx/blend.h"
#include "gfx/color.h"
#include "math/geometry.h"

namespace norvane {

namespace gfx {
class Animation;
class Bitmask;
class Image;
}  // namespace gfx

namespace sprites {

class SpriteEngine;

// An object on the screen with collision data. Its image covers the rectangle whose upper-left
// corner is (position.x - hotspot.x, position.y + hotspot.y), size.x wide, size.y down from there;
// boxes and bitmask are in that image's pixels (x right, y down).
class Sprite {
public:
    Sprite(basic_Vector2D<float> position, bool visible);
    Sprite(const Sprite&) = delete;
    Sprite& operator=(const Sprite&) = delete;
    virtual ~Sprite();  // leaves its engine

    virtual void drawSelf() = 0;
    virtual void perform(float ms);
    virtual gfx::Bitmask* getBitmask() const;
    // Outer box rejects, inner box accepts, the bitmask decides. Engines skip pairs whose outer
    // boxes lie apart without asking, so an override may only narrow this test.
    virtual bool checkCollision(const Sprite* other);
    virtual void onCollision(Sprite* other);

    bool checkCollisionOuterBoundingBox(const Sprite* other) const;
    bool checkCollisionInnerBoundingBox(const Sprite* other) const;
    bool checkCollisionBitmask(const Sprite* other) const;

    SpriteEngine* engine = nullptr;
    Color color{1.0f, 1.0f, 1.0f, 1.0f};  // applied before drawing
    basic_Vector2D<float> position;  // in units of the 2D render context, y upward
    basic_Vector2D<float> size;      // of the current image
    basic_Vector2D<float> hotspot;
    bool visible;
    bool collidable = false;
    BlendMode blendMode = BLEND_DEFAULT;
    basic_Rect<int> outerBoundingBox;
    basic_Rect<int> innerBoundingBox;
};

// Shows an image or an animation. Owns its image only when it is an AnimationReference.
class ImageSprite : public Sprite {
public:
    ImageSprite(basic_Vector2D<float> position, bool visible, gfx::Image* image);
    ~ImageSprite() override;

    void drawSelf() override;
    void perform(float ms) override;
    gfx::Bitmask* getBitmask() const override;

    void getImageData();  // copies size, hotspot and boxes of the current image
    void setImage(gfx::Image* image);
    gfx::Image* setAnimation(gfx::Animation* animation, float speed);  // the new reference
    void autoclearImage();

    gfx::Image* image;
};

// Performs, draws and collides its sprites, in list order (front first). Owns none of them.
// During a pass sprites may join engines (they take part from the next pass) but must not leave
// them: a sprite that wants to go is deleted after the pass.
class SpriteEngine {
public:
    SpriteEngine() = default;
    SpriteEngine(const SpriteEngine&) = delete;
    SpriteEngine& operator=(const SpriteEngine&) = delete;
    ~SpriteEngine();  // the sprites survive without an engine

    void addBack(Sprite* sprite);   // drawn last, on top
    void addFront(Sprite* sprite);  // both move the sprite out of any other engine
    void remove(Sprite* sprite);
    void clear();
    // Room for `count` sprites here and as many in an engine tested against this one, so that a
    // pass allocates nothing until the scene outgrows it.
    void reserve(std::size_t count);
    int size() const { return static_cast<int>(sprites.size()); }

    void perform(float ms);
    // With blending on and the engine's blend function; a sprite whose blendMode differs from the
    // engine's is drawn with its own. Invisible sprites are skipped.
    void draw();
    // Tells only the earlier sprite of each colliding pair.
    void testCollisions();
    // Tells this engine's sprite first, then the other's.
    void testCollisions(SpriteEngine* other);

    std::vector<Sprite*> sprites;
    BlendMode blendMode = BLEND_DEFAULT;

private:
    // A sprite's outer box in world units, x right and y down, widened to cover the rounding of
    // the exact test, with its list position at the start of the pass.
    struct Extent {
        float left, right, upper, lower;
        Sprite* sprite;
        std::uint32_t index;
        bool isOther;
    };
    struct Candidate {
        std::uint64_t order;  // (list position of a << 32) | list position of b
        Sprite* a;
        Sprite* b;
        bool operator<(const Candidate& c) const { return order < c.order; }
    };
    void collectExtents(const SpriteEngine* engine, bool isOther);
    // Pairs whose extents overlap, by sort and sweep; `acrossEngines` pairs only this with other.
    void findCandidates(bool acrossEngines);

    int busy = 0;  // passes running over this engine
    // Reused between passes.
    std::vector<Sprite*> passSprites;
    std::vector<Extent> extents;
    std::vector<Candidate> candidates;
};

}  // namespace sprites
}  // namespace norvane

#endif
