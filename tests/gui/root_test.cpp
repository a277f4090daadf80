#include "gui/root.h"

#include <gtest/gtest.h>

#include "controls/queue.h"
#include "gui/probe.h"
#include "screen.h"
#include "sprites/sprites.h"

using namespace norvane;
using namespace norvane::gui;
using namespace probe;

namespace {

class Cursor : public sprites::Sprite {
public:
    Cursor() : Sprite({0, 0}, true) {}
    void drawSelf() override {}
};

// Takes every event and says so.
class Behind : public Evaluator {
public:
    bool evaluate(const SDL_Event& event, ControlQueue*) override {
        seen.push_back(event.type);
        return true;
    }
    std::vector<int> seen;
};

// An active 640 x 480 GUI at the bottom of the evaluator stack's front, two probes in a pane.
class Routing : public ::testing::Test {
protected:
    void SetUp() override {
        axisTable.clear();
        vpScreen = {0, 0, 640, 480};
        gui.setDimensions({0, 0, 640, 480});
        gui.setCallback(&callback);
        gui.setActive(true);
        gui.setVisible(true);
        pane = new Component;
        pane->setName("pane");
        pane->setDimensions({100, 100, 200, 200});
        gui += pane;
        a = new Probe(journal, "a");
        a->setDimensions({10, 10, 50, 20});
        *pane += a;
        b = new Probe(journal, "b");
        b->setDimensions({10, 50, 50, 20});
        *pane += b;
        pane->recalcNeighbours();
        q.push(&behind);
        q.push(&gui);
    }
    std::vector<std::string> journal;
    Callback callback;
    GUI gui;
    Component* pane;
    Probe* a;
    Probe* b;
    Behind behind;
    ControlQueue q;
};

}  // namespace

TEST_F(Routing, InactiveGuiPassesEverythingOnAndUnhandledKeysFallThrough) {
    a->setFocused(true);
    gui.setActive(false);
    q << keyEvent(SDL_KEYDOWN, SDLK_DOWN);
    EXPECT_TRUE(journal.empty());
    EXPECT_EQ(behind.seen.size(), 1u);
    EXPECT_EQ(gui.getFocused(), a);

    gui.setActive(true);
    q << keyEvent(SDL_KEYDOWN, SDLK_DOWN);
    EXPECT_EQ(gui.getFocused(), b);
    EXPECT_EQ(behind.seen.size(), 1u);  // consumed
    q << keyEvent(SDL_KEYDOWN, SDLK_p, 'p');  // the focused component does not want it
    EXPECT_EQ(behind.seen.size(), 2u);
    EXPECT_EQ(journal, (std::vector<std::string>{"a key 274", "b key 112"}));
    q << keyEvent(SDL_KEYUP, SDLK_p, 'p');  // the default keyUp handles nothing
    q << SDL_Event{SDL_VIDEOEXPOSE};
    EXPECT_EQ(behind.seen.size(), 4u);
}

TEST_F(Routing, JoystickAxisPassesOnlyChangesOfTheQuantisedValue) {
    a->setFocused(true);
    for (Sint16 value : {0, 12000, 17000, 30000, 5000, -20000}) q << joyAxisEvent(0, 3, value);
    EXPECT_EQ(journal, (std::vector<std::string>{"a axis 0,3,1", "a axis 0,3,0", "a axis 0,3,-1"}));
    // The unchanged values went on to the next evaluator; the axis is no navigation axis, so
    // the passed-on values were not wanted either.
    EXPECT_EQ(behind.seen.size(), 6u);

    journal.clear();
    q << joyAxisEvent(0, 1, 20000);  // held down: one move
    q << joyAxisEvent(0, 1, 32000);
    EXPECT_EQ(gui.getFocused(), b);
    q << joyAxisEvent(0, 1, 100);
    q << joyAxisEvent(0, 1, 32000);  // through the middle and down again: wraps to a
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_EQ(callback.moves, 2);

    q << joyButtonEvent(SDL_JOYBUTTONDOWN, 1, 4);
    EXPECT_EQ(journal.back(), "a joybutton 1,4");
}

TEST_F(Routing, HoverFocusesWhatLiesUnderTheCursorWithoutTellingTheCallback) {
    auto* cursor = new Cursor;
    gui.setMouseCursor(cursor);
    q << mouseMotionEvent(700, 10);
    EXPECT_FLOAT_EQ(cursor->position.x, 639);
    EXPECT_FLOAT_EQ(cursor->position.y, 470);
    EXPECT_EQ(gui.getFocused(), &gui);

    q << mouseMotionEvent(115, 480 - 115);  // over a at (5, 5) inside it
    EXPECT_EQ(gui.getFocused(), a);
    q << mouseMotionEvent(120, 480 - 118);
    q << mouseMotionEvent(200, 480 - 200);  // over the pane itself: hover focuses it
    EXPECT_EQ(gui.getFocused(), pane);
    // Enter and leave get GUI coordinates, moves are made relative.
    EXPECT_EQ(journal, (std::vector<std::string>{"a enter 115,115", "a move 10,8", "a leave 200,200"}));
    EXPECT_EQ(callback.moves, 0);

    gui.setVisible(false);  // nothing is found over a hidden GUI: the focus stays
    q << mouseMotionEvent(115, 480 - 115);
    EXPECT_EQ(gui.getFocused(), pane);
    EXPECT_TRUE(behind.seen.empty());  // motion is always used
}

TEST_F(Routing, CapturedMouseFollowsItsComponentInAndOut) {
    gui.setMouseCursor(new Cursor);
    q << mouseMotionEvent(115, 480 - 115);
    a->captureMouse(true);
    q << mouseMotionEvent(116, 480 - 116);
    q << mouseMotionEvent(250, 480 - 250);  // off a: leaves, the focus goes to the GUI
    EXPECT_EQ(gui.getFocused(), &gui);
    q << mouseMotionEvent(251, 480 - 250);  // still off: a sees the move, nobody else the hover
    q << mouseMotionEvent(115, 480 - 115);  // back on: enters and takes the focus again
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_EQ(journal, (std::vector<std::string>{"a enter 115,115", "a move 6,6", "a leave 140,140",
                                                 "a move 141,140", "a enter 5,5"}));
    b->captureMouse(false);  // only the holder can release
    EXPECT_EQ(gui.getMouseCaptured(), a);
    a->captureMouse(false);
    EXPECT_EQ(gui.getMouseCaptured(), nullptr);
}

TEST_F(Routing, MouseButtonsGoToTheCaptorOrTheFocusedComponentWithoutACursor) {
    q << mouseMotionEvent(115, 480 - 115);  // without a cursor sprite motion does nothing
    EXPECT_EQ(gui.getFocused(), &gui);
    EXPECT_TRUE(journal.empty());

    b->setFocused(true);
    q << mouseButtonEvent(SDL_MOUSEBUTTONDOWN, 1, 130, 480 - 170);
    a->captureMouse(true);
    q << mouseButtonEvent(SDL_MOUSEBUTTONUP, 1, 130, 480 - 170);
    q << mouseButtonEvent(SDL_MOUSEBUTTONDOWN, 5, 0, 0);
    EXPECT_EQ(journal, (std::vector<std::string>{"b down1 20,20", "a up1 20,60", "a down5 -110,370"}));
    EXPECT_TRUE(behind.seen.empty());
}
