#ifndef TESTS_GUI_PROBE_H
#define TESTS_GUI_PROBE_H

#include "gui/core.h"
#include "gui/root.h"
#include "screen.h"
#include "support/events.h"

using Journal = std::vector<std::string>;

// A component that writes what it gets into a shared journal as "name call x,y".
class Probe : public norvane::gui::Component {
public:
    using Point = norvane::basic_Vector2D<float>;
    using Queue = norvane::ControlQueue;

    Probe(Journal& journal, const std::string& probeName, bool isFocusable) : journal(journal) {
        name = probeName, focusable = isFocusable;
    }
    void enter(Queue*, const Point& p) override { note("enter", p); }
    void leave(Queue*, const Point& p) override { note("leave", p); }
    void mouseDown(Queue*, const Point& p, unsigned char b) override { note("down" + std::to_string(b), p); }
    void mouseUp(Queue*, const Point& p, unsigned char b) override { note("up" + std::to_string(b), p); }
    void mouseMove(Queue*, const Point& p) override { note("move", p); }
    bool keyDown(Queue* q, SDLKey key, SDLMod mod, unsigned short unicode) override {
        note("key " + std::to_string(key));
        return Component::keyDown(q, key, mod, unicode);
    }
    bool joyButtonDown(Queue*, unsigned char joystick, unsigned char button) override {
        note("joybutton " + std::to_string(joystick) + "," + std::to_string(button));
        return true;
    }
    bool joyAxisMotion(Queue* q, unsigned char joystick, unsigned char axis, short value) override {
        note("axis " + std::to_string(axis) + "," + std::to_string(value));
        return Component::joyAxisMotion(q, joystick, axis, value);
    }
    void performSelf(Queue*, float) override { note("perform"); }

private:
    void note(const std::string& what, const Point& p) { note(what + " " + std::to_string(int(p.x)) + "," + std::to_string(int(p.y))); }
    void note(const std::string& what) { journal.push_back(name + " " + what); }
    Journal& journal;
};

struct Callback : norvane::gui::GUICallback {
    void onMove() override { ++moves; }
    void onConfirm() override { ++confirms; }
    int moves = 0, confirms = 0;
};

struct GuiTest : testing::Test {
    GuiTest() {
        norvane::gui::axisTable.clear();
        norvane::vpScreen = {0, 0, 640, 480};
        gui.setDimensions({0, 0, 640, 480});
        gui.setCallback(&callback);
        gui.setActive(true), gui.setVisible(true);
        q.push(&behind), q.push(&gui);
    }
    // A probe in `parent`; grid cell (-1, -1) leaves the placing to the parent.
    Probe* add(norvane::gui::Component& parent, const std::string& name, norvane::basic_Rect<float> rect = {},
               bool focusable = true, int x = -1, int y = -1, int w = 1) {
        auto* p = new Probe(journal, name, focusable);
        p->setDimensions(rect);
        p->gridX = x, p->gridY = y, p->gridWidth = w;
        parent += p;
        return p;
    }
    norvane::gui::Component* pane(norvane::gui::Component& parent, const norvane::basic_Rect<float>& rect = {}) {
        auto* c = new norvane::gui::Component;
        c->setDimensions(rect);
        parent += c;
        return c;
    }

    Journal journal;
    Callback callback;
    norvane::gui::GUI gui;
    CatchAll behind;
    norvane::ControlQueue q;
};

#endif
