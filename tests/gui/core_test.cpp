#include "gui/core.h"

#include "gui/probe.h"
#include "support/files.h"

using namespace norvane;
using namespace norvane::gui;
using Children = std::vector<Component*>;

struct Tree : GuiTest {
    // The focus after each key, pressed on whatever holds the focus then; navigation keys are always used.
    Journal press(std::vector<SDLKey> keys) {
        Journal names;
        for (SDLKey key : keys) {
            EXPECT_TRUE(gui.getFocused()->keyDown(&q, key, KMOD_NONE, 0)) << key;
            names.push_back(gui.getFocused()->getName());
        }
        return names;
    }
};

TEST_F(Tree, ChildrenAreAddedInOneColumnFoundByNameOrPlaceAndMovedBetweenParents) {
    Probe *label = add(gui, "label", {}, false), *a = add(gui, "a"), *b = add(gui, "b", {}, true, 3, 4), *c = add(gui, "c");
    // The label counts although it takes no part in the grid.
    EXPECT_EQ((std::vector<int>{label->gridY, a->gridY, b->gridX, b->gridY, c->gridX, c->gridY}), (std::vector<int>{0, 1, 3, 4, 0, 3}));
    Component* box = pane(gui, {10, 10, 50, 50});
    Probe *under = add(*box, "c", {0, 0, 20, 20}), *over = add(*box, "over", {0, 0, 20, 20});
    EXPECT_EQ((Children{gui["c"], (*box)["c"], gui["nobody"]}), (Children{c, under, nullptr}));  // direct children first
    over->bringToFront();
    gui.setDimensions({0, 0, 100, 100});
    // The topmost child; the far edges are outside; hidden and disabled components are passed over.
    EXPECT_EQ((Children{gui.find({15, 15}), gui.find({30, 30}), gui.find({100, 50}), gui.find({50, 100}), gui.find({0, 0})}),
              (Children{over, box, nullptr, nullptr, &gui}));
    over->setVisible(false);
    const Component* shown = gui.find({15, 15});
    under->setEnabled(false);
    EXPECT_TRUE(shown == under && gui.find({15, 15}) == box);
    EXPECT_EQ(thrownBy([&] { Component() -= a; }), "Trying to remove a component which is not a child.");
    delete c;  // leaves its parent by itself
    EXPECT_EQ(gui.getChildren(), (Children{label, a, b, box}));
    // Coordinates are relative to every ancestor; centring truncates toward zero.
    gui.setDimensions({5, 5, 800, 600});
    box->setDimensions({100, 50, 300, 200});
    under->setDimensions({10, 20, 31, 10});
    const basic_Vector2D<float> r = under->getRelativeCoordinates({200, 100});
    under->center({300, 0});  // (300 - 31) / 2 = 134; y stays
    const basic_Vector2D<float> centred = under->getPos();
    under->center({20, 5});  // (20 - 31) / 2 = -5, (5 - 10) / 2 = -2
    EXPECT_EQ((std::vector<float>{r.x, r.y, centred.x, centred.y, under->getPos().x, under->getPos().y}),
              (std::vector<float>{85, 25, 134, 20, -5, -2}));

    under->setFocused(true);
    EXPECT_TRUE(under->isFocused() && box->isFocused() && gui.isFocused());
    b->setFocused(true);
    EXPECT_FALSE(under->isFocused() || box->isFocused());
    under->setFocused(false);  // does not hold it: nothing happens
    EXPECT_TRUE(b->isFocused() && gui.isFocused());
    b->setFocused(false);
    EXPECT_TRUE(!b->isFocused() && !gui.isFocused() && gui.getFocused() == b);  // the pointer stays
    under->setFocused(true);
    under->captureMouse(true);
    delete box;  // a focused, capturing component must not leave a dangling pointer behind
    EXPECT_TRUE(gui.getFocused() == &gui && !gui.getMouseCaptured());
    // Removing a subtree takes the focus back only from inside it.
    Probe* kept = add(gui, "kept");
    kept->setFocused(true);
    gui -= label;
    delete label;
    EXPECT_TRUE(gui.getFocused() == kept && kept->isFocused());
    gui -= kept;
    EXPECT_TRUE(gui.getFocused() == &gui && !kept->isFocused());
    delete kept;
}

TEST_F(Tree, ArrowsAxesAndTabMoveTheFocusSkippingWhatIsOutOfReach) {
    for (const char* name : {"a", "b", "c", "d"}) add(gui, name);
    gui.recalcNeighbours();
    gui["c"]->setFocused(true);  // direct focusing is no navigation
    EXPECT_EQ(press({SDLK_DOWN, SDLK_UP, SDLK_LEFT, SDLK_RIGHT}), (Journal{"d", "c", "c", "c"}));  // alone in its row
    gui["b"]->setVisible(false);
    gui["c"]->setEnabled(false);
    gui["a"]->setFocused(true);
    EXPECT_EQ(press({SDLK_DOWN, SDLK_DOWN, SDLK_UP}), (Journal{"d", "a", "d"}));
    EXPECT_EQ(callback.moves, 5);
    // The joystick's axis 1 moves as the arrows do; only joystick 0 and axes 0 and 1 count.
    Component* d = gui["d"];
    EXPECT_TRUE(d->joyAxisMotion(&q, 0, 1, 1) && gui["a"]->joyAxisMotion(&q, 0, 1, -1));
    EXPECT_FALSE(d->joyAxisMotion(&q, 1, 1, 1) || d->joyAxisMotion(&q, 0, 2, 1));
    EXPECT_EQ(gui.getFocused(), d);
    // A direction trigger wins over the neighbour.
    gui["a"]->setEnabled(false);
    d->triggers[East] = fakeTrigger(7);
    EXPECT_EQ(press({SDLK_DOWN, SDLK_RIGHT}), (Journal{"d", "d"}));  // nothing else in reach: no callback
    EXPECT_TRUE(d->joyAxisMotion(&q, 0, 0, 1));
    EXPECT_TRUE(drain(q) == (std::vector<Trigger*>{fakeTrigger(7), fakeTrigger(7)}) && callback.moves == 7);
    EXPECT_FALSE(d->keyDown(&q, SDLK_a, KMOD_NONE, 'a'));

    // Tab cycles inside the innermost non-focusable container, down into a focusable one's children and back up to it.
    Component* box = pane(gui);
    Probe* label = add(*box, "label", {}, false);
    add(*box, "first");
    Probe* slider = add(*box, "slider");
    for (const char* name : {"dec", "inc"}) add(*slider, name);
    add(*box, "last");
    (*box)["first"]->setFocused(true);
    EXPECT_EQ(press({SDLK_TAB, SDLK_TAB, SDLK_TAB, SDLK_TAB, SDLK_TAB, SDLK_TAB}),
              (Journal{"slider", "dec", "inc", "slider", "dec", "inc"}));
    (*box)["last"]->setFocused(true);
    EXPECT_EQ(press({SDLK_TAB}), (Journal{"first"}));
    for (Component* c : box->getChildren()) c->setEnabled(c == label);
    label->setFocused(true);  // with nothing focusable in reach, Tab changes nothing
    EXPECT_EQ(press({SDLK_TAB}), (Journal{"label"}));

    Component* grid = pane(gui);
    Probe *wide = add(*grid, "wide", {}, true, 0, 0, 2), *left = add(*grid, "left", {}, true, 0, 1);
    Probe *right = add(*grid, "right", {}, true, 1, 1), *tall = add(*grid, "tall", {}, true, 2, 0);
    tall->gridHeight = 2;
    grid->recalcNeighbours();
    // From its top-left cell, (1, 0) is the wide one itself; the tall one spans the whole column.
    EXPECT_EQ((Children{wide->neighbours[East], wide->neighbours[West], right->neighbours[North],
                        left->neighbours[West], tall->neighbours[South], tall->neighbours[East]}),
              (Children{nullptr, tall, wide, tall, nullptr, wide}));
}

TEST_F(Tree, PerformRunsChildrenLastToFirstAndStopsAtDisabledComponents) {
    Probe* box = add(gui, "box", {}, false);
    for (const char* name : {"a", "b"}) add(*box, name);
    Probe* c = add(gui, "c");
    gui.perform(&q, 16.0f);
    box->setEnabled(false);
    c->setVisible(false);  // hidden components still perform
    gui.perform(&q, 16.0f);
    EXPECT_EQ(journal, (Journal{"c perform", "box perform", "b perform", "a perform", "c perform"}));
}
