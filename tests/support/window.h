#ifndef TESTS_SUPPORT_WINDOW_H
#define TESTS_SUPPORT_WINDOW_H

#include <GL/gl.h>
#include <SDL/SDL_image.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "norvane.h"
#include "rendercontext.h"
#include "screen.h"
#include "screenshot.h"
#include "support/files.h"
#include "support/surfaces.h"

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
        startupLog.erase(0, startupLog.rfind("[norvane:core] (info) Norvane version"));  // the last attempt's
    }

    // A 2D context over the whole window, one unit a pixel, cleared to `clear`.
    static void begin2D(const norvane::Color& clear, bool blending = false,
                        norvane::BlendMode mode = norvane::BLEND_ALPHA) {
        norvane::RenderContext2D context(norvane::basic_Vector2D<float>{800, 600});
        context.blending = blending;
        context.blendMode = mode;
        context.apply();
        norvane::setClearColor(clear);
        norvane::clearScreen();
        glColor4f(1, 1, 1, 1);
    }
    // The window saved as `name` in the test's scratch folder (to be looked at) and read back.
    static SurfacePtr screenshot(const std::string& name) {
        glFinish();
        const std::string path = scratchPath(name);
        norvane::saveScreenshot(path.c_str());
        return SurfacePtr(IMG_Load(path.c_str()));
    }
    // Pixel (x, y) of a window screenshot, y upward as the 2D context runs.
    static Rgba up(SDL_Surface* shot, int x, int y) { return pixelAt(shot, x, shot->h - 1 - y); }

    std::string startupLog;
};

#endif
