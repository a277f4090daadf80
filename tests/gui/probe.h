#ifndef TESTS_GUI_PROBE_H
#define TESTS_GUI_PROBE_H

#include <string>
#include <vector>

#include "gui/core.h"
#include "gui/root.h"

// A component that writes every event it gets into a shared journal as "name call x,y".
class Probe : public norvane::gui::Component {
public:
    using Point = norvane::basic_Vector2D<float>;
    using Queue = norvane::ControlQueue;

    Probe(std::vector<std::string>& journal, const std::string& probeName, bool isFocusable = true)
        : journal(journal) {
        name = probeName;
        focusable = isFocusable;
    }
    void enter(Queue*, const Point& p) override { log("enter", p); }
    void leave(Queue*, const Point& p) override { log("leave", p); }
    void mouseDown(Queue*, const Point& p, unsigned char b) override { log("down" + std::to_string(b), p); }
    void mouseUp(Queue*, const Point& p, unsigned char b) override { log("up" + std::to_string(b), p); }
    void mouseMove(Queue*, const Point& p) override { log("move", p); }
    bool keyDown(Queue* q, SDLKey key, SDLMod mod, unsigned short unicode) override {
        note("key " + std::to_string(key));
        return Component::keyDown(q, key, mod, unicode);
    }
    bool joyButtonDown(Queue*, unsigned char joystick, unsigned char button) override {
        note("joybutton " + std::to_string(joystick) + "," + std::to_string(button));
        return true;
    }
    bool joyAxisMotion(Queue* q, unsigned char joystick, unsigned char axis, short value) override {
        note("axis " + std::to_string(joystick) + "," + std::to_string(axis) + "," + std::to_string(value));
        return Component::joyAxisMotion(q, joystick, axis, value);
    }
    void performSelf(Queue*, float) override { note("perform"); }

    std::vector<std::string>& journal;

private:
    void note(const std::string& what) { journal.push_back(name + " " + what); }
    void log(const std::string& call, const Point& p) {
        note(call + " " + std::to_string(int(p.x)) + "," + std::to_string(int(p.y)));
    }
};

// Counts the callback's calls.
struct Callback : norvane::gui::GUICallback {
    void onMove() override { ++moves; }
    void onConfirm() override { ++confirms; }
    int moves = 0;
    int confirms = 0;
};

#endif
