#ifndef VANTORIX_GAME_VANTORIXSPRITE_H
#define VANTORIX_GAME_VANTORIXSPRITE_H

#include <cstddef>

#include "math/geometry.h"
#include "sprites/sprites.h"

namespace norvane {
namespace audio {
class Sample;
}
namespace gfx {
class Animation;
class AnimationReference;
}  // namespace gfx
}  // namespace norvane

namespace vantorix {

using norvane::basic_Vector2D;
using norvane::sprites::ImageSprite;
using norvane::sprites::Sprite;
using norvane::sprites::SpriteEngine;

// Base of every game object. Objects are never deleted while the engines run: they queue
// themselves and the state deletes them at a safe point. Their memory comes from block pools, one
// per size, so a running game stops allocating once it has seen its busiest scene.
class VantorixSprite : public ImageSprite {
public:
    VantorixSprite();  // at (0, 0), invisible, without image

    static void* operator new(std::size_t size);
    static void operator delete(void* p, std::size_t size);
    static void reserve(std::size_t size, std::size_t count);  // `count` blocks for objects of `size` bytes

    void deleteMe();  // queues the sprite once; it is deleted after the current pass

    bool deleted = false;
};

// Deletes every queued sprite and empties the queue (a deleted sprite may queue others).
void destroyQueuedSprites();

// Shows `animation` on `sprite`, or nothing when the resources lack it.
norvane::gfx::AnimationReference* setAnimationIfAny(ImageSprite* sprite, norvane::gfx::Animation* animation,
                                                    float speed = 1.0f);
// Holds a frame chosen by the game (banking, thrust); out-of-range indexes are clamped.
void showFrame(ImageSprite* sprite, norvane::gfx::AnimationReference* animation, int index);

// Stereo position of a point of the 800 units wide game space, -0.5 at the left edge.
float makeSoundVector(const basic_Vector2D<float>& position);
// In the game's effects pool, if sound effects are on and the resources have the sample.
void playSound(const norvane::audio::Sample* sample, const basic_Vector2D<float>& position);
void playSound(const norvane::audio::Sample* sample);  // with the sample's own placement

}  // namespace vantorix

#endif
