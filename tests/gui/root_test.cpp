#include "gui/root.h"

#include "gui/probe.h"
#include "support/cursor.h"

using namespace norvane;
using namespace norvane::gui;

// Two probes in a pane: a at (110, 110) and b at (110, 150), 50 x 20 each.
struct Routing : GuiTest {
    void SetUp() override {
        box = pane(gui, {100, 100, 200, 200});
        a = add(*box, "a", {10, 10, 50, 20}), b = add(*box, "b", {10, 50, 50, 20});
        box->recalcNeighbours();
    }
    // Motion to (x, y) of the GUI, y upward.
    void moveTo(int x, int y) { q << mouseMotionEvent(Uint16(x), Uint16(480 - y)); }

    Component* box;
    Probe *a, *b;
};

TEST_F(Routing, KeysAndJoysticksGoToTheFocusAndWhatIsNotUsedFallsThrough) {
    a->setFocused(true);
    for (bool active : {false, true}) gui.setActive(active), q << keyEvent(SDLK_DOWN, true);  // inactive: passed on
    EXPECT_EQ(gui.getFocused(), b);
    // The focused component does not want p, the default keyUp handles nothing.
    for (SDL_Event e : {keyEvent(SDLK_p, true, 'p'), keyEvent(SDLK_p, false, 'p'), SDL_Event{SDL_VIDEOEXPOSE}}) q << e;
    EXPECT_EQ(behind.seen, (std::vector<int>{SDL_KEYDOWN, SDL_KEYDOWN, SDL_KEYUP, SDL_VIDEOEXPOSE}));
    EXPECT_EQ(journal, (Journal{"a key 274", "b key 112"}));
    // Axes pass only changes of the quantised value; the rest go on to the next evaluator.
    journal.clear(), behind.seen.clear();
    for (Sint16 value : {0, 12000, 17000, 30000, 5000, -20000}) q << joyAxisEvent(0, 3, value);
    for (Sint16 value : {20000, 32000}) q << joyAxisEvent(0, 1, value);  // held down: one move
    EXPECT_EQ(gui.getFocused(), a);
    for (Sint16 value : {100, 32000}) q << joyAxisEvent(0, 1, value);  // through the middle and down again
    EXPECT_EQ(gui.getFocused(), b);
    q << joyButtonEvent(1, 4);
    EXPECT_EQ(journal, (Journal{"b axis 3,1", "b axis 3,0", "b axis 3,-1", "b axis 1,1", "a axis 1,0", "a axis 1,1",
                                "b joybutton 1,4"}));
    EXPECT_TRUE(behind.seen.size() == 7u && callback.moves == 3);
}

TEST_F(Routing, HoverFocusesWhatLiesUnderTheCursorAndACapturedMouseFollowsItsComponent) {
    int cursorsDeleted = 0;
    auto* cursor = new NullCursor(&cursorsDeleted);
    for (int i = 0; i < 2; ++i) gui.setMouseCursor(cursor);  // the same one again: kept
    q << mouseMotionEvent(700, 0);  // beyond the corner: the cursor stays on the last pixels
    EXPECT_EQ((std::vector<float>{cursor->position.x, cursor->position.y, float(cursorsDeleted)}), (std::vector<float>{639, 479, 0}));
    EXPECT_EQ(gui.getFocused(), &gui);
    moveTo(115, 115);  // over a at (5, 5) inside it
    EXPECT_EQ(gui.getFocused(), a);
    moveTo(120, 118);
    moveTo(200, 200);  // over the pane itself: hover focuses it
    EXPECT_TRUE(gui.getFocused() == box && callback.moves == 0);
    // Enter and leave get GUI coordinates, moves are made relative.
    EXPECT_EQ(journal, (Journal{"a enter 115,115", "a move 10,8", "a leave 200,200"}));
    journal.clear();
    moveTo(115, 115);
    a->captureMouse(true);
    for (int xy : {116, 250}) moveTo(xy, xy);  // then off a: leaves, the focus goes to the GUI
    EXPECT_EQ(gui.getFocused(), &gui);
    moveTo(251, 250);  // still off: a sees the move, nobody else the hover
    moveTo(115, 115);  // back on: enters and takes the focus again
    EXPECT_EQ(gui.getFocused(), a);
    EXPECT_EQ(journal, (Journal{"a enter 115,115", "a move 6,6", "a leave 140,140", "a move 141,140", "a enter 5,5"}));
    // Buttons go to the captor, else to the focused component.
    journal.clear();
    b->captureMouse(false);  // only the holder can release
    q << mouseButtonEvent(1, true, 130, 480 - 170);
    a->captureMouse(false);
    b->setFocused(true);
    q << mouseButtonEvent(5, false, 0, 0);
    EXPECT_EQ(journal, (Journal{"a down1 20,60", "b up5 -110,330"}));
    gui.setVisible(false);  // nothing is found over a hidden GUI: the focus stays
    moveTo(200, 200);
    EXPECT_TRUE(gui.getFocused() == b && behind.seen.empty());  // motion and buttons are always used
    gui.setMouseCursor(new NullCursor(&cursorsDeleted));
    EXPECT_EQ(cursorsDeleted, 1);
    gui.setMouseCursor(nullptr);  // without a cursor sprite motion does nothing
    gui.setVisible(true);
    moveTo(115, 115);
    EXPECT_TRUE(gui.getFocused() == b && cursorsDeleted == 2);
}
