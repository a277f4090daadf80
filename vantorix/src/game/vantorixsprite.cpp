#include "game/vantorixsprite.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "audio/core.h"
#include "audio/resources.h"
#include "audio/sources.h"
#include "gfx/animations.h"
#include "resources/resources.h"
#include "tools/blockpool.h"
#include "vantorix.h"

namespace vantorix {

namespace {

// One pool per size class of 16 bytes: the game objects come in a handful of sizes.
const std::size_t SIZE_STEP = 16;
const std::size_t SIZE_CLASSES = 48;  // up to 768 bytes; larger objects use the heap

norvane::BlockPool* poolFor(std::size_t size) {
    static norvane::BlockPool* pools[SIZE_CLASSES] = {};
    const std::size_t cls = (size + SIZE_STEP - 1) / SIZE_STEP;
    if (cls >= SIZE_CLASSES) return nullptr;
    if (!pools[cls]) pools[cls] = new norvane::BlockPool(cls * SIZE_STEP);  // kept to the end, as pools must be
    return pools[cls];
}

}  // namespace

VantorixSprite::VantorixSprite() : ImageSprite(basic_Vector2D<float>{}, false, nullptr) {}

void* VantorixSprite::operator new(std::size_t size) {
    norvane::BlockPool* pool = poolFor(size);
    return pool ? pool->take() : ::operator new(size);
}

void VantorixSprite::operator delete(void* p, std::size_t size) {
    norvane::BlockPool* pool = poolFor(size);
    if (pool) {
        pool->give(p);
    } else {
        ::operator delete(p);
    }
}

void VantorixSprite::reserve(std::size_t size, std::size_t count) {
    if (norvane::BlockPool* pool = poolFor(size)) pool->reserve(count);
}

void VantorixSprite::deleteMe() {
    if (deleted) return;
    deleted = true;
    deleteQueue.push_back(this);
}

void destroyQueuedSprites() {
    for (size_t i = 0; i < deleteQueue.size(); ++i) delete deleteQueue[i];
    deleteQueue.clear();  // keeps capacity: refilled every frame
}

norvane::gfx::AnimationReference* setAnimationIfAny(ImageSprite* sprite, norvane::gfx::Animation* animation,
                                                    float speed) {
    if (!animation) {
        sprite->autoclearImage();
        sprite->getImageData();
        return nullptr;
    }
    return static_cast<norvane::gfx::AnimationReference*>(sprite->setAnimation(animation, speed));
}

void showFrame(ImageSprite* sprite, norvane::gfx::AnimationReference* animation, int index) {
    if (!animation || !animation->animation || animation->animation->frames.empty()) return;
    const int last = static_cast<int>(animation->animation->frames.size()) - 1;
    index = std::clamp(index, 0, last);
    if (animation->index == index && animation->frame) return;
    animation->index = index;
    animation->elapsed = 0.0f;
    animation->setFrame(&animation->animation->frames[index]);
    sprite->getImageData();
}

float makeSoundVector(const basic_Vector2D<float>& position) {
    static const float xc = 800 / 2.0f;
    return (position.x - xc) / (2.0f * xc);
}

void playSound(const norvane::audio::Sample* sample, const basic_Vector2D<float>& position) {
    if (!norvane::audio::enabled || !resources || !resources->gameSounds || !sample) return;
    norvane::audio::SoundProperties properties = sample->properties;
    properties.setStereoPosition(makeSoundVector(position));
    resources->gameSounds->play(sample, &properties);
}

void playSound(const norvane::audio::Sample* sample) {
    if (!norvane::audio::enabled || !resources || !resources->gameSounds || !sample) return;
    resources->gameSounds->play(sample);
}

}  // namespace vantorix
