#ifndef NORVANE_FRAMEWORK_STATE_H
#define NORVANE_FRAMEWORK_STATE_H

namespace norvane {

class Trigger;

// One screen of the program (menu, running game). Its work is split into numbered layers so that a
// derived state can slip its own work in between the layers of its base.
class ApplicationState {
public:
    virtual ~ApplicationState();
    virtual void activate();    // deactivates the active state; that one stays alive
    virtual void deactivate();  // only if this state is the active one
    virtual void handleEvent(const Trigger* trigger) = 0;
    // Runs the perform layers; a state that set destroyPending is deleted at the next layer boundary.
    virtual void perform(unsigned int ticks);
    virtual void draw();
    virtual void doPerform(int layer, unsigned int ticks) = 0;
    virtual void doDraw(int layer) = 0;

    bool destroyPending = false;  // set it to end the state; `this` is gone after the current layer
    int performLayers = 0;
    int drawLayers = 0;
};

}  // namespace norvane

#endif
