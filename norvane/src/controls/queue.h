#ifndef NORVANE_CONTROLS_QUEUE_H
#define NORVANE_CONTROLS_QUEUE_H

#include <SDL/SDL.h>

#include <cstddef>
#include <list>
#include <vector>

#include "controls/evaluator.h"

namespace norvane {

class Trigger;

// Drains SDL's events through the evaluator stack and keeps the fired triggers, oldest first.
// Owns neither the evaluators nor the triggers.
class ControlQueue {
public:
    virtual ~ControlQueue() = default;
    virtual ControlQueue& operator<<(const SDL_Event& event);  // offers one event to the stack
    virtual ControlQueue& operator<<(Trigger* trigger);        // the same trigger may wait more than once
    virtual ControlQueue& operator>>(Trigger*& trigger);       // null when nothing waits
    virtual void perform(float ms);                            // enabled evaluators only
    virtual void flush();                                      // every evaluator; the waiting triggers stay
    virtual bool isEmpty() const;

    // Polls every pending SDL event. False when the window system asked the program to quit.
    bool readEvents();
    // Puts `evaluator` in front of the stack: the evaluator added last sees events first.
    void push(Evaluator* evaluator) { evaluators.push_front(evaluator); }

    std::list<Evaluator*> evaluators;
    Trigger* focusGainedTrigger = nullptr;
    Trigger* focusLostTrigger = nullptr;

private:
    // A vector read from `head` rather than a linked list: held triggers are queued every frame,
    // and a drained vector keeps its capacity.
    std::vector<Trigger*> triggers;
    size_t head = 0;
};

// The framework's one control queue.
extern ControlQueue queue;

}  // namespace norvane

#endif
