#include "screen.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

#include "gfx/justification.h"
#include "norvane.h"
#include "rendercontext.h"
#include "support/surfaces.h"
#include "support/window.h"
#include "xml/xml.h"

using norvane::Color;

TEST(Color, ReadFromXmlElements) {
    struct Case {
        std::vector<std::pair<std::string, std::string>> attributes;
        float r, g, b, a;
    } const cases[] = {
        {{{"code", "ff000080"}}, 1.0f, 0.0f, 0.0f, 128 / 255.0f},
        {{}, 0.0f, 0.0f, 0.0f, 1.0f},
        {{{"red", "0.5"}}, 0.5f, 0.0f, 0.0f, 1.0f},
        {{{"red", "0.25"}, {"green", "0.5"}, {"blue", "0.75"}, {"alpha", "0"}}, 0.25f, 0.5f, 0.75f, 0.0f},
        {{{"code", "00ff80"}}, 0.0f, 0.0f, 1.0f, 128 / 255.0f},  // six digits: no red
        {{{"code", " 0x336699cc"}, {"red", "1"}}, 0x33 / 255.0f, 0x66 / 255.0f, 0x99 / 255.0f, 0xcc / 255.0f},
        {{{"code", "12zz"}}, 0.0f, 0.0f, 0.0f, 0x12 / 255.0f},             // stops at the first non-hex digit
        {{{"code", "ffffffffffffffffff"}}, 1.0f, 1.0f, 1.0f, 1.0f},       // overflow reads as all ones
    };
    for (const Case& c : cases) {
        norvane::xml::Node node;
        for (const auto& attribute : c.attributes) node[attribute.first] = attribute.second;
        const Color color(&node);
        EXPECT_FLOAT_EQ(color.red, c.r) << node.toString(0);
        EXPECT_FLOAT_EQ(color.green, c.g) << node.toString(0);
        EXPECT_FLOAT_EQ(color.blue, c.b) << node.toString(0);
        EXPECT_FLOAT_EQ(color.alpha, c.a) << node.toString(0);
    }
}

TEST(Justification, WordsAreExactAndCaseSensitive) {
    EXPECT_EQ(norvane::justificationHorizontal("left"), norvane::JH_LEFT);
    EXPECT_EQ(norvane::justificationHorizontal("right"), norvane::JH_RIGHT);
    EXPECT_EQ(norvane::justificationVertical("center"), norvane::JV_CENTER);
    EXPECT_EQ(norvane::justificationVertical("bottom"), norvane::JV_BOTTOM);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(norvane::justificationHorizontal(norvane::STR_JUSTIFICATION_HORIZONTAL[i]), i);
        EXPECT_EQ(norvane::justificationVertical(norvane::STR_JUSTIFICATION_VERTICAL[i]), i);
    }
    try {
        norvane::justificationHorizontal("Left");
        FAIL() << "no exception";
    } catch (const std::string& e) {
        EXPECT_EQ(e, "Left is not a valid JustificationHorizontal value.");
    }
    try {
        norvane::justificationVertical("middle");
        FAIL() << "no exception";
    } catch (const std::string& e) {
        EXPECT_EQ(e, "middle is not a valid JustificationVertical value.");
    }
}

TEST(Screen, GetPixelReadsLittleEndianBytes) {
    SurfacePtr three(SDL_CreateRGBSurface(SDL_SWSURFACE, 2, 2, 24, 0xFF, 0xFF00, 0xFF0000, 0));
    Uint8* p = static_cast<Uint8*>(three->pixels) + three->pitch + 3;  // pixel (1, 1)
    p[0] = 0x01;
    p[1] = 0x02;
    p[2] = 0x03;
    EXPECT_EQ(norvane::getPixel(three.get(), 1, 1), 0x030201u);

    SurfacePtr four = makeRgbaSurface(3, 1);
    const Uint8 bytes[4] = {0x11, 0x22, 0x33, 0x44};
    std::memcpy(static_cast<Uint8*>(four->pixels) + 8, bytes, 4);
    EXPECT_EQ(norvane::getPixel(four.get(), 2, 0), 0x44332211u);
}

TEST(Screen, WithoutAWindow) {
    norvane::init(0, false);
    EXPECT_EQ(norvane::RenderContext2D().size.x, 0.0f);
    EXPECT_EQ(norvane::RenderContext2D().size.y, 0.0f);

    norvane::fullscreen = true;
    EXPECT_NO_THROW(norvane::setFullscreen(true));  // already so: SDL is not asked
    EXPECT_TRUE(norvane::fullscreen);
    norvane::fullscreen = false;

    unsetenv("DISPLAY");
    EXPECT_THROW(norvane::setResolution(800, 600, 32, false, 0, 0), std::string);
    EXPECT_EQ(norvane::screen, nullptr);
    EXPECT_EQ(norvane::currentViewport, nullptr);
    SDL_Quit();
}

TEST_F(WindowTest, OpensTheWindowAndReportsIt) {
    EXPECT_TRUE(std::regex_match(
        startupLog, std::regex(R"(\[norvane:core\] \(info\) Norvane version .*\n)"
                               R"(\[norvane:core\] \(info\) Norvane is now using OpenGL version "[^"]+" at 800x600x32\.\n)")))
        << startupLog;
    ASSERT_TRUE(norvane::screen);
    EXPECT_EQ(norvane::screen->w, 800);
    EXPECT_EQ(norvane::screen->h, 600);
    EXPECT_FALSE(norvane::fullscreen);
    ASSERT_EQ(norvane::currentViewport, &norvane::vpScreen);
    EXPECT_EQ(norvane::vpScreen.width, 800.0f);
    EXPECT_EQ(norvane::vpScreen.height, 600.0f);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 800);
    EXPECT_EQ(viewport[3], 600);
    GLint alphaBits = 0;
    glGetIntegerv(GL_ALPHA_BITS, &alphaBits);
    EXPECT_EQ(alphaBits, 8);

    const norvane::RenderContext2D context;
    EXPECT_EQ(context.size.x, 800.0f);
    EXPECT_EQ(context.size.y, 600.0f);
}

TEST_F(WindowTest, FullscreenTogglesOrSaysWhy) {
    try {
        norvane::setFullscreen(true);
        EXPECT_TRUE(norvane::fullscreen);
        norvane::toggleFullscreen();
        EXPECT_FALSE(norvane::fullscreen);
    } catch (const std::string& e) {
        EXPECT_EQ(e.rfind("Could not toggle fullscreen mode:", 0), 0u) << e;
        EXPECT_FALSE(norvane::fullscreen);
    }
}

TEST_F(WindowTest, ContextsEstablishTheirState) {
    norvane::RenderContext3D deep;
    deep.fogMode = 2;
    deep.wireframe = true;
    deep.apply();
    EXPECT_EQ(norvane::currentRenderContext, &deep);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST) && glIsEnabled(GL_CULL_FACE) && glIsEnabled(GL_FOG));
    GLint value = 0;
    glGetIntegerv(GL_FOG_MODE, &value);
    EXPECT_EQ(value, GL_EXP);

    // The 2D context undoes what the 3D one set, and maps game units onto the window:
    // (0, 0) lower left, (800, 600) upper right.
    norvane::RenderContext2D flat(norvane::basic_Vector2D<float>{800.0f, 600.0f});
    flat.blending = true;
    flat.blendMode = norvane::BLEND_ADDITIVE;
    flat.apply();
    EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST) || glIsEnabled(GL_CULL_FACE) || glIsEnabled(GL_FOG));
    GLint polygonModes[2];
    glGetIntegerv(GL_POLYGON_MODE, polygonModes);
    EXPECT_EQ(polygonModes[0], GL_FILL);
    EXPECT_TRUE(glIsEnabled(GL_BLEND));
    glGetIntegerv(GL_BLEND_DST, &value);
    EXPECT_EQ(value, GL_ONE);
    GLfloat projection[16];
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    EXPECT_FLOAT_EQ(projection[0], 2.0f / 800.0f);
    EXPECT_FLOAT_EQ(projection[5], 2.0f / 600.0f);
    EXPECT_FLOAT_EQ(projection[12], -1.0f);
    EXPECT_FLOAT_EQ(projection[13], -1.0f);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
