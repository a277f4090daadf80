#include "screenshot.h"

#include <unistd.h>

#include "support/window.h"

static bool exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

TEST_F(WindowTest, ScreenshotShowsTheTopOfTheScreenFirst) {
    begin2D(norvane::Color(0.0f, 0.0f, 1.0f));
    glColor3f(1.0f, 0.0f, 0.0f);
    glRectf(0.0f, 590.0f, 800.0f, 600.0f);  // the top ten rows
    glColor3f(0.0f, 1.0f, 0.0f);
    glRectf(0.0f, 0.0f, 20.0f, 20.0f);  // lower left corner
    SurfacePtr shot = screenshot("screenshot.png");
    ASSERT_TRUE(shot && shot->w * shot->h == 800 * 600) << IMG_GetError();
    for (const auto& [x, y, r, g, b] : {std::tuple{799, 9, 255, 0, 0}, {400, 10, 0, 0, 255}, {19, 580, 0, 255, 0}, {20, 599, 0, 0, 255}})
        EXPECT_TRUE(near(pixelAt(shot.get(), x, y), r, g, b, 255, 0)) << x << "," << y << ": " << pixelAt(shot.get(), x, y);
    // A second screenshot replaces the first and leaves no temporary file.
    begin2D(norvane::Color(1.0f, 1.0f, 0.0f));
    shot = screenshot("screenshot.png");
    EXPECT_TRUE(near(pixelAt(shot.get(), 400, 0), 255, 255, 0, 255, 0)) << pixelAt(shot.get(), 400, 0);
    EXPECT_FALSE(exists(scratchPath("screenshot.png.tmp")));
}

TEST(Png, EveryPixelSizeIsWrittenAsRgbaAndFailedSavesKeepThePreviousFile) {
    SurfacePtr palette(SDL_CreateRGBSurface(SDL_SWSURFACE, 2, 1, 8, 0, 0, 0, 0));
    SDL_Color colors[2] = {{10, 20, 30, 0}, {200, 100, 50, 0}};
    SDL_SetColors(palette.get(), colors, 0, 2);
    static_cast<Uint8*>(palette->pixels)[1] = 1;
    SurfacePtr rgb565(SDL_CreateRGBSurface(SDL_SWSURFACE, 1, 1, 16, 0xF800, 0x07E0, 0x001F, 0));
    static_cast<Uint16*>(rgb565->pixels)[0] = 0xF800;  // pure red
    SurfacePtr bgr(SDL_CreateRGBSurface(SDL_SWSURFACE, 1, 1, 24, 0xFF0000, 0x00FF00, 0x0000FF, 0));
    SDL_FillRect(bgr.get(), nullptr, SDL_MapRGB(bgr->format, 1, 2, 3));
    SurfacePtr rgba = makeRgbaSurface(1, 2);
    setPixel(rgba.get(), 0, 1, 9, 8, 7, 6);
    const std::string path = scratchPath("any.png");
    for (const auto& [surface, x, y, want] : {std::tuple{palette.get(), 1, 0, Rgba{200, 100, 50, 255}},
                                              {rgb565.get(), 0, 0, {255, 0, 0, 255}}, {bgr.get(), 0, 0, {1, 2, 3, 255}},
                                              {rgba.get(), 0, 1, {9, 8, 7, 6}}}) {
        norvane::savePng(surface, path.c_str());
        SurfacePtr back(IMG_Load(path.c_str()));
        ASSERT_TRUE(back) << IMG_GetError();
        const Rgba got = pixelAt(back.get(), x, y);
        EXPECT_TRUE(back->format->BitsPerPixel == 32 && near(got, want.r, want.g, want.b, want.a, 0))
            << surface->format->BitsPerPixel << " bits: " << got;
    }

    EXPECT_EQ(thrownBy([] { norvane::saveScreenshot("unused.png"); }), "Could not take a screenshot: there is no screen.");
    EXPECT_EQ(thrownBy([&] { norvane::savePng(rgba.get(), "/nonexistent/dir/shot.png"); }),
              "Could not open file \"/nonexistent/dir/shot.png\" for writing.");
    const std::string before = readFile(path);
    SurfacePtr empty = makeRgbaSurface(0, 4);  // libpng refuses an empty image half-way through writing
    testing::internal::CaptureStderr();
    EXPECT_EQ(thrownBy([&] { norvane::savePng(empty.get(), path.c_str()); }), "Could not set libpng error callback.");
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(readFile(path) == before && !exists(path + ".tmp"));
    // A directory in the way: the temporary file is written but cannot replace it.
    const std::string dir = scratchPath("blocked.png/"), blocked = dir.substr(0, dir.size() - 1);
    EXPECT_EQ(thrownBy([&] { norvane::savePng(rgba.get(), blocked.c_str()); }), "Could not write file \"" + blocked + "\".");
    EXPECT_FALSE(exists(blocked + ".tmp"));
}
