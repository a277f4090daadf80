#include "gfx/animations.h"

#include "debug/log.h"
#include "tools/blockpool.h"

namespace norvane {
namespace gfx {

namespace {
const char* const XML_ANIMATIONS = "animations";
const char* const XML_ANIMATION = "animation";
const char* const XML_FRAME = "frame";
const char* const XML_LOOP = "loop";
const char* const XML_NAME = "name";
const char* const XML_IMAGE = "image";
const char* const XML_IMAGE_BANK = "imageBank";
const char* const XML_DELAY = "delay";

BlockPool& referenceBlocks() {
    static BlockPool pool(sizeof(AnimationReference));
    return pool;
}
}  // namespace

const AnimationResourceBankGenerator animationResourceBankGenerator;

BasicResourceBank* AnimationResourceBankGenerator::generateBank(const std::string& type) const {
    return type == XML_ANIMATIONS ? new AnimationBank() : nullptr;
}

void Animation::getFromNode(const Node* node, ImageBank* images, xml::LoopList loops) {
    for (const Node* child : node->children) {
        if (child->name == XML_LOOP) {
            xml::readLoop(child, loops, dbgAnimations,
                          [&](const Node* loopNode) { getFromNode(loopNode, images, loops); });
        } else if (child->name == XML_FRAME) {
            const std::string* image = child->getAttribute(XML_IMAGE);
            if (!image) {
                debug::error(dbgImages, "No name specified for animation frame image. Skipping.");
                continue;
            }
            const float frameDelay = child->getAttributeFloat(XML_DELAY, delay);
            frames.emplace_back(images ? images->find(xml::substitute(*image, loops)) : nullptr, frameDelay);
        }
    }
}

AnimationReference* Animation::getReference(float speed) { return new AnimationReference(this, speed); }

void* AnimationReference::operator new(std::size_t size) {
    return size == sizeof(AnimationReference) ? referenceBlocks().take() : ::operator new(size);
}

void AnimationReference::operator delete(void* p, std::size_t size) {
    if (size == sizeof(AnimationReference)) {
        referenceBlocks().give(p);
    } else {
        ::operator delete(p);
    }
}

void AnimationReference::reserve(std::size_t count) { referenceBlocks().reserve(count); }

AnimationReference::AnimationReference(Animation* animation, float speed) : animation(animation), speed(speed) {
    const int count = static_cast<int>(animation->frames.size());
    endIndex = animation->loop ? count : count - 1;
    setFrame(count > 0 ? &animation->frames.front() : nullptr);
}

void AnimationReference::setFrame(AnimationFrame* newFrame) {
    frame = newFrame;
    currentImage = frame ? frame->image : nullptr;
    if (!currentImage) return;
    width = currentImage->getWidth();
    height = currentImage->getHeight();
    bitmask = currentImage->getBitmask();
    hotspot = currentImage->getHotspot();
    outerBoundingBox = currentImage->getOuterBoundingBox();
    innerBoundingBox = currentImage->getInnerBoundingBox();
}

void AnimationReference::perform(float ms) {
    if (index == endIndex || !frame) return;  // finished, or nothing to play
    elapsed += ms;
    if (!(elapsed > speed * frame->delay)) return;
    std::vector<AnimationFrame>& frames = animation->frames;
    const int count = static_cast<int>(frames.size());
    // Frames that take no time off (delay or speed not positive, or too small to matter next to
    // `elapsed`) would keep this going forever: one pass over such frames ends the step.
    int idleSteps = 0;
    do {
        if (index != endIndex) {
            index += endIndex < index ? -1 : 1;
            if (index >= count) index = 0;
            setFrame(&frames[static_cast<size_t>(index)]);
        }
        const float before = elapsed;
        elapsed -= speed * frame->delay;
        idleSteps = elapsed < before ? 0 : idleSteps + 1;
    } while (elapsed > speed * frame->delay && idleSteps < count);
}

void AnimationReference::draw(const basic_Vector2D<float>& position, BlendMode mode) const {
    if (currentImage) currentImage->draw(position, mode);
}

void AnimationReference::draw(const basic_Rect<float>& rect, BlendMode mode) const {
    if (currentImage) currentImage->draw(rect, mode);
}

void AnimationReference::drawStretched(const basic_Rect<float>& rect, BlendMode mode) const {
    if (currentImage) currentImage->drawStretched(rect, mode);
}

std::string AnimationBank::getNodeName() { return XML_ANIMATIONS; }

void AnimationBank::getFromNode(const Node* node, const std::string&) { getFromNode(node, nullptr); }

void AnimationBank::getFromNode(const Node* node, ImageBank* images) {
    getContentsFromNode(node, imageBankOf(node, images));
}

ImageBank* AnimationBank::imageBankOf(const Node* node, ImageBank* images) const {
    const std::string* name = node->getAttribute(XML_IMAGE_BANK);
    if (!name || !manager) return images;
    auto it = manager->banks.find(*name);
    if (it == manager->banks.end()) return images;
    ImageBank* named = dynamic_cast<ImageBank*>(it->second);
    return named ? named : images;
}

void AnimationBank::getContentsFromNode(const Node* node, ImageBank* images) {
    static xml::LoopList loops;  // shared by all animation banks, empty between definitions
    for (const Node* child : node->children) {
        if (child->name == XML_LOOP) {
            xml::readLoop(child, loops, dbgAnimations, [&](const Node* loopNode) { getFromNode(loopNode, images); });
            continue;
        }
        if (child->name != XML_ANIMATION) continue;
        const std::string* rawName = child->getAttribute(XML_NAME);
        if (!rawName) {
            debug::error(dbgImages, "No name specified for animation. Skipping.");
            continue;
        }
        // Animation names take the counters in plain decimal; frame images get them padded.
        xml::LoopList plain = loops;
        for (xml::LoopData& loop : plain) loop.digits = 0;
        const std::string name = xml::substitute(*rawName, plain);
        Animation* animation = new Animation(name);
        animation->delay = child->getAttributeFloat(XML_DELAY, animation->delay);
        animation->loop = child->getAttributeBool(XML_LOOP, animation->loop);
        try {
            animation->getFromNode(child, imageBankOf(child, images), loops);
        } catch (const std::string& text) {
            debug::error(dbgAnimations, "Error reading animation \"%s\": %s", name.c_str(), text.c_str());
            delete animation;
            continue;
        }
        add(name, animation);
    }
}

}  // namespace gfx
}  // namespace norvane
