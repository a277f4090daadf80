#ifndef NORVANE_GFX_ANIMATIONS_H
#define NORVANE_GFX_ANIMATIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "gfx/image.h"
#include "gfx/imagebank.h"
#include "resources/manager.h"
#include "xml/xml.h"

namespace norvane {
namespace gfx {

class AnimationBank;
class AnimationReference;

struct AnimationFrame {
    AnimationFrame() = default;
    AnimationFrame(Image* image, float delay) : image(image), delay(delay) {}

    Image* image = nullptr;  // null when the bank had no such image: the frame shows nothing
    float delay = 0.0f;      // ms
};

// A named sequence of frames from an image bank.
class Animation : public NamedResource<AnimationBank, std::string> {
public:
    Animation() = default;
    explicit Animation(const std::string& name) { this->name = name; }

    // `loops` is a copy: the loops active around this element.
    void getFromNode(const Node* node, ImageBank* images, xml::LoopList loops);
    AnimationReference* getReference(float speed);  // owned by the caller

    std::vector<AnimationFrame> frames;
    float delay = 10.0f;  // ms, for frames that give none
    bool loop = true;     // most sprites cycle; one-shot animations say loop="false"
};

// A playing animation: an image that shows the current frame, so sprites take still and animated
// images alike. Must not outlive its animation or the frames' images.
class AnimationReference : public Image {
public:
    AnimationReference() = default;
    AnimationReference(Animation* animation, float speed);

    // Pooled: every animated sprite that appears makes one.
    static void* operator new(std::size_t size);
    static void operator delete(void* p, std::size_t size);
    static void reserve(std::size_t count);  // keeps room for `count` references made later

    void perform(float ms) override;
    void draw(const basic_Vector2D<float>& position, BlendMode mode) const override;
    void draw(const basic_Rect<float>& rect, BlendMode mode) const override;
    void drawStretched(const basic_Rect<float>& rect, BlendMode mode) const override;

    // Copies the frame image's size, bitmask, hotspot and boxes; null keeps them as they were.
    void setFrame(AnimationFrame* newFrame);
    bool isFinished() const { return !(animation && animation->loop) && index == endIndex; }

    AnimationFrame* frame = nullptr;
    Image* currentImage = nullptr;
    Animation* animation = nullptr;
    float speed = 1.0f;  // factor on every frame's delay
    int index = 0;
    float elapsed = 0.0f;  // ms spent in the current frame
    // Where playing stops: the frame count when looping (never reached, the index wraps), else
    // the last frame; -1 for a non-looping animation without frames.
    int endIndex = 0;
};

class AnimationBank : public NamedResourceBank<Animation> {
public:
    std::string getNodeName() override;
    // Frames are looked up in the image bank the element names through "imageBank".
    void getFromNode(const Node* node, const std::string& dir) override;
    void getFromNode(const Node* node, ImageBank* images);
    void getContentsFromNode(const Node* node, ImageBank* images);

private:
    // The bank `node` names in the manager, or `images` if it names none.
    ImageBank* imageBankOf(const Node* node, ImageBank* images) const;
};

class AnimationResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;
};

extern const AnimationResourceBankGenerator animationResourceBankGenerator;

}  // namespace gfx
}  // namespace norvane

#endif
