#include "gui/root.h"

#include <gtest/gtest.h>

#include "gui/probe.h"
#include "support/cursor.h"

using namespace norvane;
using namespace norvane::gui;

namespace {

// Two probes in a pane: a at (110, 110) and b at (110, 150), 50 x 20 each.
class Routing : public GuiTest {
protected:
    void SetUp() override {
        box = pane(gui, {100, 100, 200, 200});
        a = add(*box, "a", {10, 10, 50, 20});
        b = add(*box, "b", {10, 50, 50, 20});
        box->recalcNeighbours();
    }
    // Motion to (x, y) of the GUI, y upward.
    void moveTo(int x, int y) { q << mouseMotionEvent(Uint16(x), Uint16(480 - y)); }

    Component* box;
    Probe* a;
    Probe* b;
};

}  // namespace

TEST_F(Routing, InactiveGuiPassesEverythingOnAndUnhandledEventsFallThrough) {
    a->setFocused(true);
    gui.setActive(false);
    q << keyEvent(SDLK_DOWN, true);
    EXPECT_TRUE(journal.empty());
    gui.setActive(true);
    q << keyEvent(SDLK_DOWN, true);  // used
    EXPECT_EQ(gui.getFocused(), b);
    q << keyEvent(SDLK_p, true, 'p');   // the focused component does not want it
    q << keyEvent(SDLK_p, false, 'p');  // the default keyUp handles nothing
    q << SDL_Event{SDL_VIDEOEXPOSE};
    EXPECT_EQ(behind.seen, (std::vector<int>{SDL_KEYDOWN, SDL_KEYDOWN, SDL_KEYUP, SDL_VIDEOEXPOSE}));
    EXPECT_EQ(journal, (Journal{"a key 274", "b key 112"}));
}

TEST_F(Routing, JoystickAxisPassesOnlyChangesOfTheQuantisedValue) {
    a->setFocused(true);
    for (Sint16 value : {0, 12000, 17000, 30000, 5000, -20000}) q << joyAxisEvent(0, 3, value);
    EXPECT_EQ(journal, (Journal{"a axis 0,3,1", "a axis 0,3,0", "a axis 0,3,-1"}));
    // The unchanged values went on to the next evaluator; the axis is no navigation axis, so
    // the passed-on values were not wanted either.
    EXPECT_EQ(behind.seen.size(), 6u);
    for (Sint16 value : {20000, 32000}) q << joyAxisEvent(0, 1, value);  // held down: one move
    EXPECT_EQ(gui.getFocused(), b);
    for (Sint16 value : {100, 32000}) q << joyAxisEvent(0, 1, value);  // through the middle and down again
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_EQ(callback.moves, 2);
    q << joyButtonEvent(1, 4);
    EXPECT_EQ(journal.back(), "a joybutton 1,4");
}

TEST_F(Routing, HoverFocusesWhatLiesUnderTheCursorAndACapturedMouseFollowsItsComponent) {
    int cursorsDeleted = 0;
    auto* cursor = new NullCursor(&cursorsDeleted);
    gui.setMouseCursor(cursor);
    gui.setMouseCursor(cursor);  // the same one again: kept
    q << mouseMotionEvent(700, 10);
    EXPECT_EQ((std::vector<float>{cursor->position.x, cursor->position.y}), (std::vector<float>{639, 470}));
    EXPECT_EQ(gui.getFocused(), &gui);
    moveTo(115, 115);  // over a at (5, 5) inside it
    EXPECT_EQ(gui.getFocused(), a);
    moveTo(120, 118);
    moveTo(200, 200);  // over the pane itself: hover focuses it
    EXPECT_EQ(gui.getFocused(), box);
    EXPECT_EQ(callback.moves, 0);
    // Enter and leave get GUI coordinates, moves are made relative.
    EXPECT_EQ(journal, (Journal{"a enter 115,115", "a move 10,8", "a leave 200,200"}));
    journal.clear();
    moveTo(115, 115);
    a->captureMouse(true);
    moveTo(116, 116);
    moveTo(250, 250);  // off a: leaves, the focus goes to the GUI
    EXPECT_EQ(gui.getFocused(), &gui);
    moveTo(251, 250);  // still off: a sees the move, nobody else the hover
    moveTo(115, 115);  // back on: enters and takes the focus again
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_EQ(journal,
              (Journal{"a enter 115,115", "a move 6,6", "a leave 140,140", "a move 141,140", "a enter 5,5"}));
    b->captureMouse(false);  // only the holder can release
    EXPECT_EQ(gui.getMouseCaptured(), a);
    a->captureMouse(false);
    EXPECT_EQ(gui.getMouseCaptured(), nullptr);
    gui.setVisible(false);  // nothing is found over a hidden GUI: the focus stays
    moveTo(200, 200);
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_TRUE(behind.seen.empty());  // motion is always used
    gui.setMouseCursor(new NullCursor(&cursorsDeleted));
    EXPECT_EQ(cursorsDeleted, 1);
}

TEST_F(Routing, MouseButtonsGoToTheCaptorOrTheFocusedComponentWithoutACursor) {
    moveTo(115, 115);  // without a cursor sprite motion does nothing
    EXPECT_EQ(gui.getFocused(), &gui);
    b->setFocused(true);
    q << mouseButtonEvent(1, true, 130, 480 - 170);
    a->captureMouse(true);
    q << mouseButtonEvent(1, false, 130, 480 - 170);
    q << mouseButtonEvent(5, true, 0, 0);
    EXPECT_EQ(journal, (Journal{"b down1 20,20", "a up1 20,60", "a down5 -110,370"}));
    EXPECT_TRUE(behind.seen.empty());
}
