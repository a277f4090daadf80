#ifndef TESTS_SUPPORT_XDOTOOL_H
#define TESTS_SUPPORT_XDOTOOL_H

#include <SDL/SDL.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

// A real window on the test display that xdotool moves the pointer over and types into. The
// folder's tests.cmake takes the display lock: the keyboard focus must be this test's alone.
class XdotoolTest : public testing::Test {
protected:
    void openWindow(int width, int height) {
        ASSERT_NE(std::getenv("DISPLAY"), nullptr) << "run the tests under xvfb-run";
        setenv("SDL_VIDEODRIVER", "x11", 1);
        // An Xvfb started without -noreset refuses connections while it resets after its last client.
        for (int attempt = 0; attempt < 50 && SDL_Init(SDL_INIT_VIDEO) != 0; ++attempt) SDL_Delay(100);
        ASSERT_TRUE(SDL_WasInit(SDL_INIT_VIDEO)) << SDL_GetError();
        ASSERT_TRUE(SDL_SetVideoMode(width, height, 0, 0)) << SDL_GetError();
        const std::string caption = "norvane test " + std::to_string(getpid());
        SDL_WM_SetCaption(caption.c_str(), nullptr);
        window = "search --sync --name '^" + caption + "$'";
    }
    void TearDown() override { SDL_Quit(); }

    static void xdotool(const std::string& arguments) {
        const std::string command = "xdotool " + arguments;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }
    // Runs `frame` until `done` holds; a generous bound, not a timing check.
    template <typename Frame, typename Done>
    static bool pumpUntil(Frame frame, Done done) {
        for (int i = 0; i < 1000; ++i) {
            frame();
            if (done()) return true;
            SDL_Delay(10);
        }
        return false;
    }

    std::string window;  // xdotool's words for finding the window
};

#endif
