#include <gtest/gtest.h>
#include <unistd.h>

#include "controls/queue.h"
#include "gui/probe.h"
#include "gui/standard.h"
#include "sprites/sprites.h"
#include "screen.h"

using namespace norvane;
using namespace norvane::gui;

namespace {

class Cursor : public sprites::Sprite {
public:
    Cursor() : Sprite({0, 0}, true) {}
    void drawSelf() override {}
};

// Real mouse moves, clicks and key presses from xdotool into a 320 x 240 window with three
// buttons in a column, 200 x 40 each, their tops at y 30, 90 and 150 of the window.
class RealInput : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(std::getenv("DISPLAY"), nullptr) << "run the tests under xvfb-run";
        // Tests of other folders open their windows at the top left meanwhile; the pointer must
        // not meet one of them on its way to this window, so it keeps to the far corner.
        setenv("SDL_VIDEO_WINDOW_POS", "700,520", 1);
        setenv("SDL_VIDEODRIVER", "x11", 1);
        ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
        ASSERT_TRUE(SDL_SetVideoMode(320, 240, 0, 0)) << SDL_GetError();
        vpScreen = {0, 0, 320, 240};
        SDL_EnableUNICODE(1);  // buttons click on the character
        caption = "norvane gui " + std::to_string(getpid());
        SDL_WM_SetCaption(caption.c_str(), nullptr);
        gui.setDimensions({0, 0, 320, 240});
        gui.setVisible(true);
        gui.setActive(true);
        gui.setCallback(&callback);
        gui.setMouseCursor(new Cursor);
        for (int i = 0; i < 3; ++i) {
            buttons[i] = new Button;
            buttons[i]->setName("b" + std::to_string(i));
            buttons[i]->setDimensions({60, 170.0f - 60.0f * i, 200, 40});
            buttons[i]->setTrigger(probe::fakeTrigger(uintptr_t(i + 1)));
            gui += buttons[i];
        }
        gui.recalcNeighbours();
        q.push(&gui);
    }
    void TearDown() override { SDL_Quit(); }

    void xdotool(const std::string& arguments) {
        const std::string command = "xdotool " + arguments;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    // Frames until `done` holds, reading events as the loop does; a generous bound, not a timing check.
    template <typename Done>
    bool pumpUntil(Done done) {
        for (int frame = 0; frame < 500; ++frame) {
            q.readEvents();
            gui.perform(&q, 10.0f);
            for (Trigger* t : probe::drain(q)) fired.push_back(t);
            if (done()) return true;
            SDL_Delay(10);
        }
        return false;
    }
    bool focusIs(int i) { return gui.getFocused() == buttons[i]; }

    std::string caption;
    probe::Callback callback;
    GUI gui;
    Button* buttons[3];
    ControlQueue q;
    std::vector<Trigger*> fired;
};

}  // namespace

TEST_F(RealInput, MouseAndKeysMoveTheFocusAndConfirm) {
    const std::string window = "search --sync --name '^" + caption + "$'";
    xdotool(window + " windowfocus --sync");

    // Hovering focuses; a click confirms the hovered button.
    xdotool(window + " mousemove --sync --window %1 150 110");
    ASSERT_TRUE(pumpUntil([&] { return focusIs(1); }));
    xdotool("click 1");
    ASSERT_TRUE(pumpUntil([&] { return callback.confirms == 1; }));
    EXPECT_EQ(fired, (std::vector<Trigger*>{probe::fakeTrigger(2)}));
    EXPECT_EQ(callback.moves, 0);

    // The arrows move down the column and wrap; Return and space confirm.
    xdotool("key Down");
    ASSERT_TRUE(pumpUntil([&] { return focusIs(2); }));
    xdotool("key Down");
    ASSERT_TRUE(pumpUntil([&] { return focusIs(0); }));
    xdotool("key Return");
    ASSERT_TRUE(pumpUntil([&] { return callback.confirms == 2; }));
    xdotool("key Up key space");
    ASSERT_TRUE(pumpUntil([&] { return callback.confirms == 3; }));
    EXPECT_TRUE(focusIs(2));
    EXPECT_EQ(callback.moves, 3);

    // Pressed on one button and released on another: no click.
    xdotool(window + " mousemove --sync --window %1 150 50 mousedown 1");
    ASSERT_TRUE(pumpUntil([&] { return buttons[0]->getState().down; }));
    xdotool(window + " mousemove --sync --window %1 150 170 mouseup 1");
    ASSERT_TRUE(pumpUntil([&] { return gui.getMouseCaptured() == nullptr; }));
    EXPECT_EQ(callback.confirms, 3);
    EXPECT_EQ(fired, (std::vector<Trigger*>{probe::fakeTrigger(2), probe::fakeTrigger(1), probe::fakeTrigger(3)}));

    // Inactive, the GUI lets the keys through: nothing moves.
    gui.setActive(false);
    xdotool("key Down");
    for (int i = 0; i < 20; ++i) pumpUntil([] { return true; });
    EXPECT_EQ(callback.moves, 3);
}
