#include "sprites/sprites.h"

#include <GL/gl.h>

#include <algorithm>
#include <cassert>

#include "gfx/animations.h"
#include "gfx/bitmask.h"
#include "gfx/image.h"

namespace norvane {
namespace sprites {

namespace {

struct Offset {
    int x, y;
};

// Where `b`'s image lies in `a`'s pixels, each coordinate rounded by adding 0.5 and truncating.
Offset offsetBetween(const Sprite* a, const Sprite* b) {
    const float dx = (b->position.x - b->hotspot.x) - (a->position.x - a->hotspot.x);
    const float dy = (a->position.y + a->hotspot.y) - (b->position.y + b->hotspot.y);
    return {static_cast<int>(dx + 0.5f), static_cast<int>(dy + 0.5f)};
}

// Touching at a's left or top edge counts, at its right or bottom edge it does not.
bool boxesOverlap(const basic_Rect<int>& a, const basic_Rect<int>& b, Offset offset) {
    const int ax = a.x - offset.x;
    const int ay = a.y - offset.y;
    return ax <= b.x + b.width && b.x < ax + a.width && ay <= b.y + b.height && b.y < ay + a.height;
}

}  // namespace

Sprite::Sprite(basic_Vector2D<float> position, bool visible) : position(position), visible(visible) {}

Sprite::~Sprite() {
    if (engine) engine->remove(this);
}

void Sprite::perform(float) {}

gfx::Bitmask* Sprite::getBitmask() const { return nullptr; }

bool Sprite::checkCollision(const Sprite* other) {
    if (!checkCollisionOuterBoundingBox(other)) return false;
    if (checkCollisionInnerBoundingBox(other)) return true;
    if (!getBitmask() || !other->getBitmask()) return true;
    return checkCollisionBitmask(other);
}

void Sprite::onCollision(Sprite*) {}

bool Sprite::checkCollisionOuterBoundingBox(const Sprite* other) const {
    return boxesOverlap(outerBoundingBox, other->outerBoundingBox, offsetBetween(this, other));
}

bool Sprite::checkCollisionInnerBoundingBox(const Sprite* other) const {
    return boxesOverlap(innerBoundingBox, other->innerBoundingBox, offsetBetween(this, other));
}

bool Sprite::checkCollisionBitmask(const Sprite* other) const {
    const Offset offset = offsetBetween(this, other);
    return gfx::checkCollisionBitmask(getBitmask(), other->getBitmask(), offset.x, offset.y);
}

ImageSprite::ImageSprite(basic_Vector2D<float> position, bool visible, gfx::Image* image)
    : Sprite(position, visible), image(image) {
    getImageData();
}

ImageSprite::~ImageSprite() { autoclearImage(); }

void ImageSprite::drawSelf() {
    if (!image) return;
    color.apply();
    image->draw(basic_Vector2D<float>{position.x, position.y - size.y}, BLEND_DEFAULT);
}

void ImageSprite::perform(float ms) {
    if (!image) return;
    image->perform(ms);
    getImageData();
}

gfx::Bitmask* ImageSprite::getBitmask() const { return image ? image->getBitmask() : nullptr; }

void ImageSprite::getImageData() {
    if (!image) {
        size = hotspot = basic_Vector2D<float>{};
        outerBoundingBox = innerBoundingBox = basic_Rect<int>{};
        return;
    }
    size = {static_cast<float>(image->getWidth()), static_cast<float>(image->getHeight())};
    hotspot = image->getHotspot();
    outerBoundingBox = image->getOuterBoundingBox();
    innerBoundingBox = image->getInnerBoundingBox();
}

void ImageSprite::setImage(gfx::Image* newImage) {
    if (newImage != image) autoclearImage();
    image = newImage;
    getImageData();
}

gfx::Image* ImageSprite::setAnimation(gfx::Animation* animation, float speed) {
    gfx::AnimationReference* reference = animation->getReference(speed);
    autoclearImage();
    image = reference;
    getImageData();
    return reference;
}

void ImageSprite::autoclearImage() {
    delete dynamic_cast<gfx::AnimationReference*>(image);
    image = nullptr;
}

SpriteEngine::~SpriteEngine() { clear(); }

void SpriteEngine::addBack(Sprite* sprite) {
    if (sprite->engine) sprite->engine->remove(sprite);
    sprites.push_back(sprite);
    sprite->engine = this;
}

void SpriteEngine::addFront(Sprite* sprite) {
    if (sprite->engine) sprite->engine->remove(sprite);
    sprites.insert(sprites.begin(), sprite);
    sprite->engine = this;
}

void SpriteEngine::remove(Sprite* sprite) {
    if (sprite->engine != this) return;
    assert(busy == 0 && "sprites leave their engines after a pass, not during it");
    sprites.erase(std::find(sprites.begin(), sprites.end(), sprite));
    sprite->engine = nullptr;
}

void SpriteEngine::clear() {
    assert(busy == 0 && "sprites leave their engines after a pass, not during it");
    for (Sprite* sprite : sprites) sprite->engine = nullptr;
    sprites.clear();
}

void SpriteEngine::reserve(std::size_t count) {
    sprites.reserve(count);
    passSprites.reserve(count);
    extents.reserve(2 * count);
    candidates.reserve(2 * count);
}

void SpriteEngine::perform(float ms) {
    passSprites.assign(sprites.begin(), sprites.end());  // sprites may join engines while performing
    ++busy;
    for (Sprite* sprite : passSprites) sprite->perform(ms);
    --busy;
}

void SpriteEngine::draw() {
    glPushAttrib(GL_COLOR_BUFFER_BIT);
    glEnable(GL_BLEND);
    setBlendMode(blendMode);
    ++busy;
    for (Sprite* sprite : sprites) {
        if (!sprite->visible) continue;
        const bool ownBlend = sprite->blendMode != blendMode;
        if (ownBlend) {
            glPushAttrib(GL_COLOR_BUFFER_BIT);
            setBlendMode(sprite->blendMode);
        }
        sprite->drawSelf();
        if (ownBlend) glPopAttrib();
    }
    --busy;
    glPopAttrib();
}

void SpriteEngine::collectExtents(const SpriteEngine* engine, bool isOther) {
    // The exact test rounds the offset between two sprites by up to 1.5 units either way.
    const float margin = 2.0f;
    std::uint32_t index = 0;
    for (Sprite* sprite : engine->sprites) {
        const basic_Rect<int>& box = sprite->outerBoundingBox;
        // An empty bitmask leaves a box of negative size; the exact test still reads it as a span.
        const float left = sprite->position.x - sprite->hotspot.x + static_cast<float>(box.x);
        const float upper = -(sprite->position.y + sprite->hotspot.y) + static_cast<float>(box.y);
        const float width = static_cast<float>(box.width);
        const float height = static_cast<float>(box.height);
        extents.push_back({left + std::min(0.0f, width) - margin, left + std::max(0.0f, width) + margin,
                           upper + std::min(0.0f, height) - margin, upper + std::max(0.0f, height) + margin,
                           sprite, index++, isOther});
    }
}

void SpriteEngine::findCandidates(bool acrossEngines) {
    std::sort(extents.begin(), extents.end(), [](const Extent& a, const Extent& b) { return a.left < b.left; });
    candidates.clear();
    const size_t count = extents.size();
    for (size_t i = 0; i < count; ++i) {
        const Extent& a = extents[i];
        for (size_t j = i + 1; j < count && extents[j].left <= a.right; ++j) {
            const Extent& b = extents[j];
            if (acrossEngines && a.isOther == b.isOther) continue;
            if (b.upper > a.lower || a.upper > b.lower) continue;
            // order by the list position of this engine's sprite (the earlier one within an engine)
            const bool aFirst = acrossEngines ? !a.isOther : a.index < b.index;
            const Extent& first = aFirst ? a : b;
            const Extent& second = aFirst ? b : a;
            candidates.push_back({static_cast<std::uint64_t>(first.index) << 32 | second.index, first.sprite,
                                  second.sprite});
        }
    }
    std::sort(candidates.begin(), candidates.end());
}

void SpriteEngine::testCollisions() {
    extents.clear();
    collectExtents(this, false);
    findCandidates(false);
    ++busy;
    // A sprite's own flag is read once, before its first test, as a plain double loop would.
    const Sprite* current = nullptr;
    bool currentCollidable = false;
    for (const Candidate& candidate : candidates) {
        if (candidate.a != current) {
            current = candidate.a;
            currentCollidable = current->collidable;
        }
        if (currentCollidable && candidate.b->collidable && candidate.a->checkCollision(candidate.b)) {
            candidate.a->onCollision(candidate.b);
        }
    }
    --busy;
}

void SpriteEngine::testCollisions(SpriteEngine* other) {
    extents.clear();
    collectExtents(this, false);
    collectExtents(other, true);
    findCandidates(true);
    ++busy;
    ++other->busy;
    const Sprite* current = nullptr;
    bool currentCollidable = false;
    for (const Candidate& candidate : candidates) {
        if (candidate.a != current) {
            current = candidate.a;
            currentCollidable = current->collidable;
        }
        if (currentCollidable && candidate.b->collidable && candidate.a->checkCollision(candidate.b)) {
            candidate.a->onCollision(candidate.b);
            candidate.b->onCollision(candidate.a);
        }
    }
    --other->busy;
    --busy;
}

}  // namespace sprites
}  // namespace norvane
