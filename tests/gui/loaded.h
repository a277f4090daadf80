#ifndef TESTS_GUI_LOADED_H
#define TESTS_GUI_LOADED_H

#include "controls/inputevaluator.h"
#include "gui/probe.h"
#include "support/files.h"
#include "support/manager.h"

using Codes = std::vector<int>;

// A GUI beside the evaluator "menu" (trigger tn: code n, data 100 + n); active, 640 x 480, with a counting callback.
struct LoadedGui : ::testing::Test {
    norvane::gui::GUI* load(const std::string& guiContent, const std::string& guiAttributes = "") {
        std::string triggers;
        for (int code = 1; code <= 9; ++code)
            triggers += "<trigger code=\"" + std::to_string(code) + "\" name=\"t" + std::to_string(code) + "\" data=\"" +
                        std::to_string(100 + code) + "\"/>";
        const std::string path = writeFile("gui.xml", "<resources><inputEvaluator name=\"menu\">" + triggers + "</inputEvaluator>"
                                           "<gui name=\"gui\" width=\"640\" height=\"480\" visible=\"true\"" + guiAttributes + ">" +
                                           guiContent + "</gui></resources>");
        log = captured([&] { manager.load(path, ""); });
        gui = manager.get<norvane::gui::GUI>("gui");
        if (!gui) return nullptr;
        gui->setActive(true);
        gui->setCallback(&callback);
        norvane::vpScreen = {0, 0, 640, 480};
        q.push(&behind), q.push(gui);
        return gui;
    }
    // Codes of the triggers fired since the last call; data is checked on the way.
    Codes fired() {
        Codes codes;
        for (norvane::Trigger* t : drain(q)) {
            EXPECT_EQ(t->data, 100 + t->code) << t->name;
            codes.push_back(t->code);
        }
        return codes;
    }
    void send(const SDL_Event& event) { q << event; }
    void key(SDLKey sym, Uint16 unicode = 0) { send(keyEvent(sym, true, unicode)), send(keyEvent(sym, false)); }
    norvane::Trigger* trigger(const std::string& name) { return manager.get<norvane::InputEvaluator>("menu")->find(name); }
    template <typename T> T* get(const std::string& name) { return dynamic_cast<T*>((*gui)[name]); }
    // Mouse button `b` at (dx, dy) inside `c`, in window coordinates (y downward).
    void click(const norvane::gui::Component* c, bool down, float dx = 5, float dy = 5, Uint8 b = 1) {
        send(mouseButtonEvent(b, down, Uint16(c->getPos().x + dx), Uint16(480 - (c->getPos().y + dy))));
    }
    void moveTo(const norvane::gui::Component* c) { send(mouseMotionEvent(Uint16(c->getPos().x + 5), Uint16(480 - (c->getPos().y + 5)))); }

    Callback callback;  // outlives the GUI
    OwningManager manager;
    CatchAll behind;  // what the GUI did not use
    norvane::ControlQueue q;
    norvane::gui::GUI* gui = nullptr;
    std::string log;
};

#endif
