#include "gui/core.h"

#include <gtest/gtest.h>

#include "controls/queue.h"
#include "gui/probe.h"
#include "gui/root.h"

using namespace norvane;
using namespace norvane::gui;
using probe::Callback;
using probe::Probe;

namespace {

// A GUI with a callback and a journal; components are added by the tests.
class Tree : public ::testing::Test {
protected:
    void SetUp() override {
        gui.setCallback(&callback);
        gui.setVisible(true);  // a GUI starts hidden, and the mouse finds nothing in a hidden one
    }

    Probe* add(Component& parent, const std::string& name, bool focusable = true) {
        auto* p = new Probe(journal, name, focusable);
        parent += p;
        return p;
    }
    Probe* place(Component& parent, const std::string& name, int x, int y, int w = 1, int h = 1) {
        auto* p = new Probe(journal, name);
        p->gridX = x;
        p->gridY = y;
        p->gridWidth = w;
        p->gridHeight = h;
        parent += p;
        return p;
    }
    std::string focusName() { return gui.getFocused()->getName(); }
    void press(SDLKey key) { gui.getFocused()->keyDown(&q, key, KMOD_NONE, 0); }

    std::vector<std::string> journal;
    Callback callback;
    GUI gui;
    ControlQueue q;
};

}  // namespace

TEST_F(Tree, AddingPlacesUnplacedChildrenInOneColumnAndMovesThemBetweenParents) {
    Probe* label = add(gui, "label", false);
    Probe* a = add(gui, "a");
    Probe* b = place(gui, "b", 3, 4);
    Probe* c = add(gui, "c");
    EXPECT_EQ(label->gridY, 0);
    EXPECT_EQ(a->gridY, 1);  // the label counts although it takes no part in the grid
    EXPECT_EQ(b->gridX, 3);
    EXPECT_EQ(b->gridY, 4);
    EXPECT_EQ(c->gridX, 0);
    EXPECT_EQ(c->gridY, 3);

    Component pane;
    pane += a;  // keeps its cell: it was placed before
    EXPECT_EQ(a->getParent(), &pane);
    EXPECT_EQ(gui.getChildren(), (std::vector<Component*>{label, b, c}));
    EXPECT_EQ(pane.getChildren(), (std::vector<Component*>{a}));

    try {
        gui -= a;
        FAIL() << "removing a stranger must throw";
    } catch (const std::string& message) {
        EXPECT_EQ(message, "Trying to remove a component which is not a child.");
    }
    delete c;  // leaves its parent by itself
    EXPECT_EQ(gui.getChildren(), (std::vector<Component*>{label, b}));
    pane -= a;
    EXPECT_EQ(a->getParent(), nullptr);
    delete a;
}

TEST_F(Tree, LookupByNamePrefersDirectChildrenAndBringToFrontReorders) {
    auto* pane = new Component;
    pane->setName("pane");
    gui += pane;
    Probe* deep = add(*pane, "twin");
    Probe* direct = add(gui, "twin");
    Probe* last = add(gui, "last");
    EXPECT_EQ(gui["twin"], direct);
    EXPECT_EQ((*pane)["twin"], deep);
    EXPECT_EQ(gui["nobody"], nullptr);
    last->bringToFront();
    EXPECT_EQ(gui.getChildren(), (std::vector<Component*>{last, pane, direct}));
}

TEST_F(Tree, FindSkipsHiddenAndDisabledAndReturnsTheTopmostChild) {
    gui.setDimensions({0, 0, 100, 100});
    auto* pane = new Component;
    pane->setDimensions({10, 10, 50, 50});
    gui += pane;
    Probe* under = add(*pane, "under");
    under->setDimensions({0, 0, 20, 20});
    Probe* over = add(*pane, "over");
    over->setDimensions({0, 0, 20, 20});
    over->bringToFront();

    EXPECT_EQ(gui.find({15, 15}), over);
    EXPECT_EQ(gui.find({30, 30}), pane);  // inside the pane, beside the probes
    EXPECT_EQ(gui.find({100, 50}), nullptr);  // the far edges are outside
    EXPECT_EQ(gui.find({0, 0}), &gui);
    over->setVisible(false);
    EXPECT_EQ(gui.find({15, 15}), under);
    under->setEnabled(false);
    EXPECT_EQ(gui.find({15, 15}), pane);
    pane->setEnabled(false);
    EXPECT_EQ(pane->find({5, 5}), nullptr);  // even though the point lies inside
}

TEST_F(Tree, RelativeCoordinatesSubtractEveryAncestorAndCenterTruncates) {
    gui.setDimensions({5, 5, 800, 600});
    auto* pane = new Component;
    pane->setDimensions({100, 50, 300, 200});
    gui += pane;
    Probe* p = add(*pane, "p");
    p->setDimensions({10, 20, 31, 10});
    const basic_Vector2D<float> r = p->getRelativeCoordinates({200, 100});
    EXPECT_FLOAT_EQ(r.x, 85);
    EXPECT_FLOAT_EQ(r.y, 25);

    p->center({300, 0});  // (300 - 31) / 2 = 134; y stays
    EXPECT_FLOAT_EQ(p->getPos().x, 134);
    EXPECT_FLOAT_EQ(p->getPos().y, 20);
    p->center({20, 5});  // negative halves round toward zero: (20 - 31) / 2 = -5, (5 - 10) / 2 = -2
    EXPECT_FLOAT_EQ(p->getPos().x, -5);
    EXPECT_FLOAT_EQ(p->getPos().y, -2);
}

TEST_F(Tree, FocusFlagsFollowTheChainAndLeavingTheTreeGivesTheFocusBack) {
    auto* pane = new Component;
    gui += pane;
    Probe* a = add(*pane, "a");
    Probe* b = add(gui, "b");
    EXPECT_EQ(gui.getFocused(), &gui);
    a->setFocused(true);
    EXPECT_TRUE(a->isFocused());
    EXPECT_TRUE(pane->isFocused());
    EXPECT_TRUE(gui.isFocused());
    b->setFocused(true);
    EXPECT_FALSE(a->isFocused());
    EXPECT_FALSE(pane->isFocused());
    EXPECT_TRUE(gui.isFocused());
    a->setFocused(false);  // does not hold it: nothing happens
    EXPECT_TRUE(b->isFocused());
    b->setFocused(false);
    EXPECT_FALSE(b->isFocused());
    EXPECT_FALSE(gui.isFocused());
    EXPECT_EQ(gui.getFocused(), b);  // the pointer stays

    a->setFocused(true);
    a->captureMouse(true);
    delete pane;  // a focused, capturing component must not leave a dangling pointer behind
    EXPECT_EQ(gui.getFocused(), &gui);
    EXPECT_EQ(gui.getMouseCaptured(), nullptr);
    EXPECT_EQ(callback.moves, 0);  // direct focusing is no navigation
}

TEST_F(Tree, ArrowsWrapInAColumnAndStopAtEmptyCells) {
    Probe* a = add(gui, "a");
    add(gui, "b");
    Probe* c = add(gui, "c");
    gui.recalcNeighbours();
    c->setFocused(true);
    press(SDLK_DOWN);
    EXPECT_EQ(focusName(), "a");
    press(SDLK_UP);
    EXPECT_EQ(focusName(), "c");
    press(SDLK_LEFT);  // alone in its row: no neighbour, no callback
    EXPECT_EQ(focusName(), "c");
    EXPECT_EQ(callback.moves, 2);

    // A label in row 0 leaves an empty cell that the search does not skip.
    Component pane;
    add(pane, "label", false);
    Probe* first = add(pane, "first");
    Probe* second = add(pane, "second");
    pane.recalcNeighbours();
    EXPECT_EQ(first->neighbours[North], nullptr);
    EXPECT_EQ(first->neighbours[South], second);
    EXPECT_EQ(second->neighbours[South], nullptr);
    (void)a;
}

TEST_F(Tree, SpanningCellsAndTwoColumnWrap) {
    Probe* wide = place(gui, "wide", 0, 0, 2, 1);
    Probe* left = place(gui, "left", 0, 1);
    Probe* right = place(gui, "right", 1, 1);
    Probe* tall = place(gui, "tall", 2, 0, 1, 2);
    gui.recalcNeighbours();
    EXPECT_EQ(wide->neighbours[East], nullptr);  // from its top-left cell, (1, 0) is itself
    EXPECT_EQ(wide->neighbours[West], tall);
    EXPECT_EQ(right->neighbours[North], wide);
    EXPECT_EQ(left->neighbours[West], tall);
    EXPECT_EQ(tall->neighbours[South], nullptr);  // it spans the whole column
    EXPECT_EQ(tall->neighbours[East], wide);

    Component twoColumns;
    Probe* span = place(twoColumns, "span", 0, 0, 2, 1);
    place(twoColumns, "under", 0, 1);
    twoColumns.recalcNeighbours();
    EXPECT_EQ(span->neighbours[East], nullptr);
    EXPECT_EQ(span->neighbours[West], nullptr);
}

TEST_F(Tree, NavigationPassesOverHiddenAndDisabledComponents) {
    Probe* a = add(gui, "a");
    Probe* b = add(gui, "b");
    Probe* c = add(gui, "c");
    Probe* d = add(gui, "d");
    gui.recalcNeighbours();
    a->setFocused(true);
    b->setVisible(false);
    c->setEnabled(false);
    press(SDLK_DOWN);
    EXPECT_EQ(focusName(), "d");
    press(SDLK_DOWN);  // wraps to the top
    EXPECT_EQ(focusName(), "a");
    press(SDLK_UP);
    EXPECT_EQ(focusName(), "d");
    a->setEnabled(false);
    d->setFocused(true);
    press(SDLK_DOWN);  // everything else is out of reach: the focus stays, no callback
    EXPECT_EQ(focusName(), "d");
    EXPECT_EQ(callback.moves, 3);
}

TEST_F(Tree, DirectionTriggerWinsOverTheNeighbourAndJoystickAxesNavigate) {
    Probe* a = add(gui, "a");
    add(gui, "b");
    gui.recalcNeighbours();
    a->setFocused(true);
    a->triggers[East] = probe::fakeTrigger(7);
    press(SDLK_RIGHT);
    EXPECT_EQ(probe::drain(q), (std::vector<Trigger*>{probe::fakeTrigger(7)}));
    EXPECT_EQ(focusName(), "a");
    EXPECT_EQ(callback.moves, 0);

    EXPECT_TRUE(a->joyAxisMotion(&q, 0, 1, 1));
    EXPECT_EQ(focusName(), "b");
    EXPECT_TRUE(gui.getFocused()->joyAxisMotion(&q, 0, 1, 0));  // centred: handled, no move
    EXPECT_TRUE(gui.getFocused()->joyAxisMotion(&q, 0, 1, -1));
    EXPECT_EQ(focusName(), "a");
    EXPECT_FALSE(a->joyAxisMotion(&q, 1, 1, 1));  // only joystick 0
    EXPECT_FALSE(a->joyAxisMotion(&q, 0, 2, 1));
    EXPECT_TRUE(a->joyAxisMotion(&q, 0, 0, 1));  // East: the trigger again
    EXPECT_EQ(probe::drain(q).size(), 1u);
    EXPECT_EQ(callback.moves, 2);
    EXPECT_FALSE(a->keyDown(&q, SDLK_a, KMOD_NONE, 'a'));
}

TEST_F(Tree, TabCyclesInsideTheInnermostNonFocusableContainer) {
    auto* pane = new Component;
    gui += pane;
    add(*pane, "label", false);
    Probe* first = add(*pane, "first");
    auto* slider = add(*pane, "slider");
    add(*slider, "dec");
    add(*slider, "inc");
    add(*pane, "last");
    add(gui, "outside");

    first->setFocused(true);
    std::vector<std::string> order;
    for (int i = 0; i < 6; ++i) {
        press(SDLK_TAB);
        order.push_back(focusName());
    }
    // Tab descends into the slider's step buttons and climbs back to the focusable slider.
    EXPECT_EQ(order, (std::vector<std::string>{"slider", "dec", "inc", "slider", "dec", "inc"}));
    gui["last"]->setFocused(true);
    press(SDLK_TAB);
    EXPECT_EQ(focusName(), "first");
    EXPECT_EQ(callback.moves, 7);
}

TEST_F(Tree, TabWithoutAnythingToFocusChangesNothing) {
    auto* pane = new Component;
    gui += pane;
    Probe* label = add(*pane, "label", false);
    add(*pane, "other", false);
    add(gui, "outside");
    label->setFocused(true);  // hovering focuses anything
    press(SDLK_TAB);
    EXPECT_EQ(focusName(), "label");
    EXPECT_EQ(callback.moves, 0);

    Probe* hidden = add(*pane, "hidden");
    hidden->setVisible(false);
    press(SDLK_TAB);
    EXPECT_EQ(focusName(), "label");

    Component lonely;
    lonely.focusNext();  // no parent: the walk ends at once
}

TEST_F(Tree, PerformRunsChildrenLastToFirstAndStopsAtDisabledComponents) {
    auto* pane = new Probe(journal, "pane", false);
    gui += pane;
    add(*pane, "a");
    add(*pane, "b");
    Probe* c = add(gui, "c");
    gui.perform(&q, 16.0f);
    EXPECT_EQ(journal, (std::vector<std::string>{"c perform", "pane perform", "b perform", "a perform"}));
    journal.clear();
    pane->setEnabled(false);
    c->setVisible(false);  // hidden components still perform
    gui.perform(&q, 16.0f);
    EXPECT_EQ(journal, (std::vector<std::string>{"c perform"}));
}
