#ifndef TESTS_SUPPORT_WINDOW_H
#define TESTS_SUPPORT_WINDOW_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "norvane.h"
#include "screen.h"

// An 800 x 600 window on the test's X display (Xvfb with Mesa's software renderer). It stays open
// until the process ends: SDL_Quit would unload the GL driver, and the leak checker could then no
// longer tell the driver's own allocations (suppressed) from ours.
class WindowTest : public testing::Test {
protected:
    void SetUp() override {
        // Without a display SDL would fall back to drawing on the terminal.
        setenv("SDL_VIDEODRIVER", "x11", 0);
        testing::internal::CaptureStdout();
        std::string error;
        // Xvfb resets when its last client leaves and refuses connections meanwhile; with tests
        // running in parallel that moment can come at any time, so try again for a while.
        for (int attempt = 0; attempt < 50; ++attempt) {
            try {
                norvane::init(norvane::SUBSYSTEM_VIDEO, false);
                norvane::setResolution(800, 600, 32, false, 0, 0);
                error.clear();
                break;
            } catch (const std::string& e) {
                error = e;
                SDL_Quit();
                SDL_Delay(100);
            }
        }
        startupLog = testing::internal::GetCapturedStdout();
        ASSERT_EQ(error, "") << startupLog;
        // Only the last attempt's lines.
        startupLog.erase(0, startupLog.rfind("[norvane:core] (info) Norvane version"));
    }

    std::string startupLog;
};

#endif
