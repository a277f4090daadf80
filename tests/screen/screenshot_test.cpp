#include "screenshot.h"

#include <GL/gl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>

#include "files/sysdirs.h"
#include "rendercontext.h"
#include "support/surfaces.h"
#include "support/window.h"

namespace {

std::string tmpPath(const std::string& name) {
    norvane::mkdirs(TEST_TMP_DIR "/screen/");
    return std::string(TEST_TMP_DIR) + "/screen/" + name;
}

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

void fillRect(float x, float y, float w, float h) {
    glBegin(GL_QUADS);
    glVertex2f(x, y);
    glVertex2f(x + w, y);
    glVertex2f(x + w, y + h);
    glVertex2f(x, y + h);
    glEnd();
}

}  // namespace

TEST_F(WindowTest, ScreenshotShowsTheTopOfTheScreenFirst) {
    norvane::RenderContext2D(norvane::basic_Vector2D<float>{800.0f, 600.0f}).apply();
    norvane::setClearColor(norvane::Color(0.0f, 0.0f, 1.0f));
    norvane::clearScreen();
    glColor3f(1.0f, 0.0f, 0.0f);
    fillRect(0.0f, 590.0f, 800.0f, 10.0f);  // the top ten rows
    glColor3f(0.0f, 1.0f, 0.0f);
    fillRect(0.0f, 0.0f, 20.0f, 20.0f);  // lower left corner

    const std::string path = tmpPath("screenshot.png");
    norvane::saveScreenshot(path.c_str());
    SurfacePtr shot(IMG_Load(path.c_str()));
    ASSERT_TRUE(shot) << IMG_GetError();
    EXPECT_EQ(shot->w, 800);
    EXPECT_EQ(shot->h, 600);
    EXPECT_EQ(shot->format->BitsPerPixel, 32);
    EXPECT_TRUE(near(pixelAt(shot.get(), 400, 0), 255, 0, 0, 255, 0)) << pixelAt(shot.get(), 400, 0);
    EXPECT_TRUE(near(pixelAt(shot.get(), 799, 9), 255, 0, 0, 255, 0)) << pixelAt(shot.get(), 799, 9);
    EXPECT_TRUE(near(pixelAt(shot.get(), 400, 10), 0, 0, 255, 255, 0)) << pixelAt(shot.get(), 400, 10);
    EXPECT_TRUE(near(pixelAt(shot.get(), 5, 599), 0, 255, 0, 255, 0)) << pixelAt(shot.get(), 5, 599);
    EXPECT_TRUE(near(pixelAt(shot.get(), 19, 580), 0, 255, 0, 255, 0)) << pixelAt(shot.get(), 19, 580);
    EXPECT_TRUE(near(pixelAt(shot.get(), 20, 599), 0, 0, 255, 255, 0)) << pixelAt(shot.get(), 20, 599);

    // A second screenshot replaces the first and leaves no temporary file.
    norvane::setClearColor(norvane::Color(1.0f, 1.0f, 0.0f));
    norvane::clearScreen();
    norvane::saveScreenshot(path.c_str());
    shot.reset(IMG_Load(path.c_str()));
    ASSERT_TRUE(shot);
    EXPECT_TRUE(near(pixelAt(shot.get(), 400, 0), 255, 255, 0, 255, 0)) << pixelAt(shot.get(), 400, 0);
    EXPECT_NE(access((path + ".tmp").c_str(), F_OK), 0);
}

TEST(Png, EveryPixelSizeIsWrittenAsRgba) {
    SurfacePtr palette(SDL_CreateRGBSurface(SDL_SWSURFACE, 3, 1, 8, 0, 0, 0, 0));
    SDL_Color colors[3] = {{10, 20, 30, 0}, {200, 100, 50, 0}, {0, 255, 0, 0}};
    SDL_SetColors(palette.get(), colors, 0, 3);
    Uint8* indices = static_cast<Uint8*>(palette->pixels);
    indices[0] = 2;
    indices[1] = 0;
    indices[2] = 1;

    SurfacePtr rgb565(SDL_CreateRGBSurface(SDL_SWSURFACE, 1, 1, 16, 0xF800, 0x07E0, 0x001F, 0));
    static_cast<Uint16*>(rgb565->pixels)[0] = 0xF800;  // pure red

    SurfacePtr bgr(SDL_CreateRGBSurface(SDL_SWSURFACE, 1, 1, 24, 0xFF0000, 0x00FF00, 0x0000FF, 0));
    SDL_FillRect(bgr.get(), nullptr, SDL_MapRGB(bgr->format, 1, 2, 3));

    SurfacePtr rgba = makeRgbaSurface(1, 2);
    setPixel(rgba.get(), 0, 0, 9, 8, 7, 6);
    setPixel(rgba.get(), 0, 1, 1, 2, 3, 255);

    const std::string path = tmpPath("any.png");
    struct Case {
        SDL_Surface* surface;
        int x, y;
        Rgba expected;
    } const cases[] = {{palette.get(), 0, 0, {0, 255, 0, 255}},   {palette.get(), 1, 0, {10, 20, 30, 255}},
                       {palette.get(), 2, 0, {200, 100, 50, 255}}, {rgb565.get(), 0, 0, {255, 0, 0, 255}},
                       {bgr.get(), 0, 0, {1, 2, 3, 255}},          {rgba.get(), 0, 0, {9, 8, 7, 6}},
                       {rgba.get(), 0, 1, {1, 2, 3, 255}}};
    for (const Case& c : cases) {
        norvane::savePng(c.surface, path.c_str());
        SurfacePtr back(IMG_Load(path.c_str()));
        ASSERT_TRUE(back) << IMG_GetError();
        EXPECT_EQ(back->format->BitsPerPixel, 32);
        const Rgba got = pixelAt(back.get(), c.x, c.y);
        EXPECT_TRUE(near(got, c.expected.r, c.expected.g, c.expected.b, c.expected.a, 0))
            << c.surface->format->BitsPerPixel << " bits, pixel " << c.x << "," << c.y << ": " << got;
    }
}

TEST(Png, FailedSavesKeepThePreviousFile) {
    EXPECT_EQ(thrownBy([] { norvane::saveScreenshot("unused.png"); }),
              "Could not take a screenshot: there is no screen.");

    SurfacePtr good = makeRgbaSurface(2, 2);
    EXPECT_EQ(thrownBy([&] { norvane::savePng(good.get(), "/nonexistent/dir/shot.png"); }),
              "Could not open file \"/nonexistent/dir/shot.png\" for writing.");

    const std::string path = tmpPath("keep.png");
    norvane::savePng(good.get(), path.c_str());
    const std::string before = readAll(path);
    ASSERT_FALSE(before.empty());

    // libpng refuses an empty image half-way through writing.
    SurfacePtr empty = makeRgbaSurface(0, 4);
    ASSERT_TRUE(empty);
    testing::internal::CaptureStderr();
    EXPECT_EQ(thrownBy([&] { norvane::savePng(empty.get(), path.c_str()); }), "Could not set libpng error callback.");
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(readAll(path), before);
    EXPECT_NE(access((path + ".tmp").c_str(), F_OK), 0);

    // A directory in the way: the temporary file is written but cannot replace it.
    const std::string blocked = tmpPath("blocked.png");
    norvane::mkdirs(blocked + "/");
    EXPECT_EQ(thrownBy([&] { norvane::savePng(good.get(), blocked.c_str()); }),
              "Could not write file \"" + blocked + "\".");
    EXPECT_NE(access((blocked + ".tmp").c_str(), F_OK), 0);
}
