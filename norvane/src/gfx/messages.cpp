#include "gfx/messages.h"

#include <cmath>

#include "gfx/fonts.h"

namespace norvane {
namespace fonts {

void Message::perform(float ms) { time -= ms; }

void Message::draw(basic_Rect<float> rect, JustificationHorizontal horizontal, JustificationVertical vertical) {
    if (font) font->print(rect, horizontal, vertical, text.c_str());
}

BlinkMessage::BlinkMessage(std::string text, float time, float onTime, float offTime)
    : Message(std::move(text), time), phaseTime(onTime), onTime(onTime), offTime(offTime < 0.0f ? onTime : offTime) {}

void BlinkMessage::perform(float ms) {
    time -= ms;
    phaseTime -= ms;
    if (phaseTime >= 0.0f) return;
    const float cycle = onTime + offTime;
    // Phases that are never positive would keep this loop going; a step of many cycles skips them.
    if (!(cycle > 0.0f)) {
        phaseTime = 0.0f;
        return;
    }
    if (-phaseTime > cycle) phaseTime = -std::fmod(-phaseTime, cycle);
    while (phaseTime < 0.0f) {
        visible = !visible;
        phaseTime += visible ? onTime : offTime;
    }
}

void BlinkMessage::draw(basic_Rect<float> rect, JustificationHorizontal horizontal, JustificationVertical vertical) {
    if (visible) Message::draw(rect, horizontal, vertical);
}

Messages& Messages::operator+=(Message* message) {
    if (!accumulate) clear();
    messages.push_back(message);
    if (!message->font) message->font = font;
    return *this;
}

void Messages::perform(float ms) {
    for (Message* message : messages) message->perform(ms);
    for (auto it = messages.begin(); it != messages.end();) {
        if ((*it)->time > 0.0f) {
            ++it;
            continue;
        }
        delete *it;
        it = messages.erase(it);
    }
}

void Messages::draw() {
    for (Message* message : messages) message->draw(rect, JH_CENTER, JV_CENTER);
}

void Messages::clear() {
    for (Message* message : messages) delete message;
    messages.clear();
}

}  // namespace fonts
}  // namespace norvane
