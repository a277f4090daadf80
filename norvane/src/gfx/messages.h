#ifndef NORVANE_GFX_MESSAGES_H
#define NORVANE_GFX_MESSAGES_H

#include <list>
#include <string>

#include "gfx/justification.h"
#include "math/geometry.h"

namespace norvane {
namespace fonts {

class Font;

// A text shown until its time runs out.
class Message {
public:
    Message() = default;
    Message(std::string text, float time) : text(std::move(text)), time(time) {}
    virtual ~Message() = default;

    virtual void perform(float ms);
    virtual void draw(basic_Rect<float> rect, JustificationHorizontal horizontal, JustificationVertical vertical);

    Font* font = nullptr;  // not owned; without one nothing is drawn
    std::string text;
    float time = 0.0f;  // ms left
};

// Shown for onTime, hidden for offTime, and so on.
class BlinkMessage : public Message {
public:
    BlinkMessage() = default;
    // A negative offTime means the same as onTime.
    BlinkMessage(std::string text, float time, float onTime, float offTime);

    void perform(float ms) override;
    void draw(basic_Rect<float> rect, JustificationHorizontal horizontal, JustificationVertical vertical) override;

    float phaseTime = 0.0f;  // ms left in the current phase; the phase changes once it is negative
    bool visible = true;
    float onTime = 0.0f;
    float offTime = 0.0f;
};

// The messages of one screen area, centred in `rect` and drawn over each other.
class Messages {
public:
    Messages() = default;
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;
    ~Messages() { clear(); }

    // Takes ownership; unless `accumulate` is set the new message replaces all others.
    Messages& operator+=(Message* message);
    void perform(float ms);  // drops the messages whose time is used up
    void draw();
    void clear();

    std::list<Message*> messages;  // in the order added, owned
    basic_Rect<float> rect;
    Font* font = nullptr;  // for messages added without one
    bool accumulate = false;
};

}  // namespace fonts
}  // namespace norvane

#endif
