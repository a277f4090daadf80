#include "screen.h"

#include <regex>

#include "support/window.h"
#include "xml/xml.h"

using norvane::Color;

TEST(Screen, ColoursComeFromXmlPixelsFromLittleEndianBytesAndNothingOpensWithoutADisplay) {
    // The code wins; six digits have no red.
    for (const auto& [attributes, rgba] : std::vector<std::pair<std::vector<std::pair<std::string, std::string>>, std::vector<float>>>{
             {{{"code", "ff000080"}, {"red", "0"}}, {1, 0, 0, 128 / 255.0f}}, {{}, {0, 0, 0, 1}},
             {{{"red", "0.25"}, {"green", "0.5"}, {"blue", "0.75"}, {"alpha", "0"}}, {0.25f, 0.5f, 0.75f, 0}},
             {{{"code", "3366cc"}}, {0, 0x33 / 255.0f, 0x66 / 255.0f, 0xcc / 255.0f}}}) {
        norvane::xml::Node node;
        for (const auto& [name, value] : attributes) node[name] = value;
        const Color color(&node);
        EXPECT_EQ((std::vector<float>{color.red, color.green, color.blue, color.alpha}), rgba) << node.toString(0);
    }
    const Uint8 bytes[4] = {0x11, 0x22, 0x33, 0x44};
    SurfacePtr three(SDL_CreateRGBSurface(SDL_SWSURFACE, 2, 2, 24, 0xFF, 0xFF00, 0xFF0000, 0));
    std::memcpy(static_cast<Uint8*>(three->pixels) + three->pitch + 3, bytes, 3);  // pixel (1, 1)
    SurfacePtr four = makeRgbaSurface(3, 1);
    std::memcpy(static_cast<Uint8*>(four->pixels) + 8, bytes, 4);
    EXPECT_TRUE(norvane::getPixel(three.get(), 1, 1) == 0x332211u && norvane::getPixel(four.get(), 2, 0) == 0x44332211u);

    captured([] { norvane::init(0, false); });
    EXPECT_EQ(norvane::RenderContext2D().size.x, 0.0f);  // no viewport yet
    norvane::fullscreen = true;
    EXPECT_NO_THROW(norvane::setFullscreen(true));  // already so: SDL is not asked
    norvane::fullscreen = false;
    unsetenv("DISPLAY");
    EXPECT_THROW(norvane::setResolution(800, 600, 32, false, 0, 0), std::string);
    EXPECT_TRUE(!norvane::screen && !norvane::currentViewport);
    SDL_Quit();
}

TEST_F(WindowTest, OpensTheWindowReportsItTogglesFullscreenOrSaysWhyAndContextsEstablishTheirState) {
    EXPECT_TRUE(std::regex_match(
        startupLog, std::regex(R"(\[norvane:core\] \(info\) Norvane version .*\n)"
                               R"(\[norvane:core\] \(info\) Norvane is now using OpenGL version "[^"]+" at 800x600x32\.\n)")))
        << startupLog;
    ASSERT_TRUE(norvane::screen && norvane::currentViewport == &norvane::vpScreen);
    GLint viewport[4], alphaBits = 0;
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetIntegerv(GL_ALPHA_BITS, &alphaBits);
    const norvane::RenderContext2D context;
    EXPECT_EQ((std::vector<float>{float(norvane::screen->w), float(viewport[3]), float(alphaBits), context.size.x,
                                  norvane::vpScreen.height}), (std::vector<float>{800, 600, 8, 800, 600}));
    try {
        norvane::setFullscreen(true);
        EXPECT_TRUE(norvane::fullscreen);
        norvane::toggleFullscreen();
    } catch (const std::string& e) {
        EXPECT_EQ(e.rfind("Could not toggle fullscreen mode:", 0), 0u) << e;
    }
    EXPECT_FALSE(norvane::fullscreen);

    norvane::RenderContext3D deep;
    deep.fogMode = 2, deep.wireframe = true;
    deep.apply();
    GLint fog = 0, polygonModes[2] = {}, blendDst = 0;
    glGetIntegerv(GL_FOG_MODE, &fog);
    EXPECT_TRUE(norvane::currentRenderContext == &deep && glIsEnabled(GL_DEPTH_TEST) && glIsEnabled(GL_CULL_FACE) &&
                glIsEnabled(GL_FOG) && fog == GL_EXP);
    // The 2D context undoes the 3D one and maps (0, 0) to the lower left, (800, 600) to the upper right.
    begin2D(Color(0, 0, 0), true, norvane::BLEND_ADDITIVE);
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST) || glIsEnabled(GL_CULL_FACE) || glIsEnabled(GL_FOG));
    glGetIntegerv(GL_POLYGON_MODE, polygonModes);
    glGetIntegerv(GL_BLEND_DST, &blendDst);
    EXPECT_TRUE(polygonModes[0] == GL_FILL && glIsEnabled(GL_BLEND) && blendDst == GL_ONE);
    GLfloat projection[16];
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_EQ((std::vector<float>{projection[0], projection[5], projection[12], projection[13]}),
              (std::vector<float>{2.0f / 800.0f, 2.0f / 600.0f, -1.0f, -1.0f}));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
