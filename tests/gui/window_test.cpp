#include <gtest/gtest.h>

#include "controls/queue.h"
#include "gui/probe.h"
#include "gui/standard.h"
#include "screen.h"
#include "support/cursor.h"
#include "support/events.h"
#include "support/xdotool.h"

using namespace norvane;
using namespace norvane::gui;

// Real mouse moves, clicks and key presses from xdotool into a 320 x 240 window with three
// buttons in a column, 200 x 40 each, their tops at y 30, 90 and 150 of the window.
TEST_F(XdotoolTest, MouseAndKeysMoveTheFocusAndConfirm) {
    // Tests of other folders open their windows at the top left meanwhile; the pointer must not
    // meet one of them on its way to this window, so it keeps to the far corner.
    setenv("SDL_VIDEO_WINDOW_POS", "700,520", 1);
    openWindow(320, 240);
    SDL_EnableUNICODE(1);  // buttons click on the character
    vpScreen = {0, 0, 320, 240};
    Callback callback;
    GUI gui;
    gui.setDimensions({0, 0, 320, 240});
    gui.setVisible(true);
    gui.setActive(true);
    gui.setCallback(&callback);
    gui.setMouseCursor(new NullCursor);
    Button* buttons[3];
    for (int i = 0; i < 3; ++i) {
        gui += buttons[i] = new Button;
        buttons[i]->setDimensions({60, 170.0f - 60.0f * i, 200, 40});
        buttons[i]->setTrigger(fakeTrigger(uintptr_t(i + 1)));
    }
    gui.recalcNeighbours();
    ControlQueue q;
    q.push(&gui);
    std::vector<Trigger*> fired;
    auto frame = [&] {
        q.readEvents();
        gui.perform(&q, 10.0f);
        for (Trigger* t : drain(q)) fired.push_back(t);
    };
    auto focusIs = [&](int i) { return [&, i] { return gui.getFocused() == buttons[i]; }; };
    auto confirmed = [&](int n) { return [&, n] { return callback.confirms == n; }; };

    xdotool(window + " windowfocus --sync");
    // Hovering focuses; a click confirms the hovered button.
    xdotool(window + " mousemove --sync --window %1 150 110");
    ASSERT_TRUE(pumpUntil(frame, focusIs(1)));
    xdotool("click 1");
    ASSERT_TRUE(pumpUntil(frame, confirmed(1)));
    EXPECT_EQ(callback.moves, 0);
    // The arrows move down the column and wrap; Return and space confirm.
    xdotool("key Down");
    ASSERT_TRUE(pumpUntil(frame, focusIs(2)));
    xdotool("key Down");
    ASSERT_TRUE(pumpUntil(frame, focusIs(0)));
    xdotool("key Return");
    ASSERT_TRUE(pumpUntil(frame, confirmed(2)));
    xdotool("key Up key space");
    ASSERT_TRUE(pumpUntil(frame, confirmed(3)));
    EXPECT_TRUE(focusIs(2)() && callback.moves == 3);
    EXPECT_EQ(fired, (std::vector<Trigger*>{fakeTrigger(2), fakeTrigger(1), fakeTrigger(3)}));
}
