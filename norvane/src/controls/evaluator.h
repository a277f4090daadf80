#ifndef NORVANE_CONTROLS_EVALUATOR_H
#define NORVANE_CONTROLS_EVALUATOR_H

#include <SDL/SDL.h>

namespace norvane {

class ControlQueue;

// Receiver of SDL events in the control queue's stack; the first enabled one that consumes an event keeps it.
class Evaluator {
public:
    virtual ~Evaluator() = default;
    // Once a frame with the elapsed milliseconds; held input is repeated from here.
    virtual void perform(float, ControlQueue*) {}
    // True when the event is consumed: evaluators further back never see it.
    virtual bool evaluate(const SDL_Event& event, ControlQueue* queue) = 0;
    // Forgets held input without firing anything.
    virtual void flush() {}

    bool enabled = true;  // a disabled evaluator is still flushed
};

}  // namespace norvane

#endif
