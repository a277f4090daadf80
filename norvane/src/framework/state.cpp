#include "framework/state.h"

#include "framework/application.h"

namespace norvane {

ApplicationState::~ApplicationState() {
    if (application && application->state == this) application->state = nullptr;
}

void ApplicationState::activate() {
    if (!application) return;
    if (application->state && application->state != this) application->state->deactivate();
    application->state = this;
}

void ApplicationState::deactivate() {
    if (application && application->state == this) application->state = nullptr;
}

void ApplicationState::perform(unsigned int ticks) {
    if (destroyPending) {
        delete this;
        return;
    }
    for (int layer = 0; layer < performLayers; ++layer) {
        doPerform(layer, ticks);
        if (destroyPending) {
            delete this;
            return;
        }
    }
}

void ApplicationState::draw() {
    for (int layer = 0; layer < drawLayers; ++layer) doDraw(layer);
}

}  // namespace norvane
