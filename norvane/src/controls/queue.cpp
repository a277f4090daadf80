#include "controls/queue.h"

namespace norvane {

ControlQueue queue;

namespace {
// Below this many taken entries the front is not worth compacting away.
const size_t COMPACT_THRESHOLD = 64;
}  // namespace

ControlQueue& ControlQueue::operator<<(const SDL_Event& event) {
    for (Evaluator* evaluator : evaluators) {
        if (evaluator->enabled && evaluator->evaluate(event, this)) break;
    }
    return *this;
}

ControlQueue& ControlQueue::operator<<(Trigger* trigger) {
    // A queue that is never drained to the end must not grow without bound.
    if (head >= COMPACT_THRESHOLD && head * 2 >= triggers.size()) {
        triggers.erase(triggers.begin(), triggers.begin() + static_cast<std::ptrdiff_t>(head));
        head = 0;
    }
    triggers.push_back(trigger);
    return *this;
}

ControlQueue& ControlQueue::operator>>(Trigger*& trigger) {
    if (isEmpty()) {
        trigger = nullptr;
        return *this;
    }
    trigger = triggers[head++];
    if (head == triggers.size()) {
        triggers.clear();
        head = 0;
    }
    return *this;
}

void ControlQueue::perform(float ms) {
    for (Evaluator* evaluator : evaluators) {
        if (evaluator->enabled) evaluator->perform(ms, this);
    }
}

void ControlQueue::flush() {
    for (Evaluator* evaluator : evaluators) evaluator->flush();
}

bool ControlQueue::isEmpty() const { return head == triggers.size(); }

bool ControlQueue::readEvents() {
    bool result = true;
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_QUIT) {
            result = false;
            continue;
        }
        if (event.type == SDL_ACTIVEEVENT && (event.active.state & (SDL_APPINPUTFOCUS | SDL_APPACTIVE))) {
            Trigger* focusTrigger = event.active.gain ? focusGainedTrigger : focusLostTrigger;
            if (focusTrigger) *this << focusTrigger;
        }
        *this << event;
    }
    return result;
}

}  // namespace norvane
