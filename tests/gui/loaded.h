#ifndef TESTS_GUI_LOADED_H
#define TESTS_GUI_LOADED_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "gui/probe.h"
#include "gui/root.h"
#include "resources/manager.h"

namespace loaded {

// A GUI read from a definition beside the input evaluator "menu", whose triggers t1 .. t9 have the
// codes 1 .. 9 and the data 100 + code. Active, visible, 640 x 480, with a counting callback.
class LoadedGui : public ::testing::Test {
protected:
    void TearDown() override;
    norvane::gui::GUI* load(const std::string& guiContent);
    // Codes of the triggers fired since the last call; data is checked on the way.
    std::vector<int> fired();
    // Offers `event` to the queue as the control queue does for SDL's events.
    void send(const SDL_Event& event) { q << event; }
    void key(SDLKey key, Uint16 unicode = 0);  // down and up
    template <typename T>
    T* get(const std::string& name) {
        return dynamic_cast<T*>((*gui)[name]);
    }

    norvane::ResourceManager manager;
    norvane::ControlQueue q;
    norvane::gui::GUI* gui = nullptr;
    probe::Callback callback;
    std::string log;
};

}  // namespace loaded

#endif
