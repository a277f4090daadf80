#include "game/vantorixsprite.h"

#include <sanitizer/asan_interface.h>

#include <algorithm>
#include <cassert>
#include <new>
#include <vector>

#include "audio/core.h"
#include "audio/resources.h"
#include "audio/sources.h"
#include "gfx/animations.h"
#include "resources/resources.h"
#include "vantorix.h"

namespace vantorix {

namespace {

// One free list per size class of 16 bytes. Freed blocks wait there for the next object of their
// size; under ASan they are poisoned meanwhile, so a use after deletion or a second deletion is
// still reported. The lists live outside the blocks (the leak checker does not look into poisoned
// memory) and are never destroyed, so the blocks stay reachable to the end.
const std::size_t BLOCK_STEP = 16;
const std::size_t BLOCK_CLASSES = 48;  // objects up to 768 bytes; larger ones use the heap

std::vector<void*>* const freeBlocks = new std::vector<void*>[BLOCK_CLASSES];

std::size_t classOf(std::size_t size) { return (size + BLOCK_STEP - 1) / BLOCK_STEP; }

void pushBlock(std::size_t cls, void* p) {
    freeBlocks[cls].push_back(p);
    ASAN_POISON_MEMORY_REGION(p, cls * BLOCK_STEP);
}

}  // namespace

VantorixSprite::VantorixSprite() : ImageSprite(basic_Vector2D<float>{}, false, nullptr) {}

void* VantorixSprite::operator new(std::size_t size) {
    const std::size_t cls = classOf(size);
    if (cls >= BLOCK_CLASSES) return ::operator new(size);
    std::vector<void*>& blocks = freeBlocks[cls];
    if (blocks.empty()) return ::operator new(cls * BLOCK_STEP);
    void* p = blocks.back();
    blocks.pop_back();
    ASAN_UNPOISON_MEMORY_REGION(p, cls * BLOCK_STEP);
    return p;
}

void VantorixSprite::operator delete(void* p, std::size_t size) {
    if (!p) return;
    const std::size_t cls = classOf(size);
    if (cls >= BLOCK_CLASSES) {
        ::operator delete(p);
        return;
    }
    pushBlock(cls, p);
}

void VantorixSprite::reserve(std::size_t size, std::size_t count) {
    const std::size_t cls = classOf(size);
    if (cls >= BLOCK_CLASSES) return;
    freeBlocks[cls].reserve(count);
    while (freeBlocks[cls].size() < count) pushBlock(cls, ::operator new(cls * BLOCK_STEP));
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
