#include <GL/gl.h>
#include <SDL/SDL_image.h>
#include <gtest/gtest.h>

#include <string>

#include "files/sysdirs.h"
#include "rendercontext.h"
#include "screen.h"
#include "screenshot.h"
#include "sprites/sprites.h"
#include "support/surfaces.h"
#include "support/window.h"

using norvane::Color;
using norvane::sprites::Sprite;
using norvane::sprites::SpriteEngine;

namespace {

// A 20 x 20 square of its colour below and right of its position.
class Block : public Sprite {
public:
    Block(float x, float y, Color c) : Sprite({x, y}, true) { color = c; }
    void drawSelf() override {
        color.apply();
        glRectf(position.x, position.y - 20, position.x + 20, position.y);
    }
};

class SpriteDrawing : public WindowTest {
protected:
    SurfacePtr frame() {
        glFinish();
        norvane::mkdirs(TEST_TMP_DIR);
        const std::string file = std::string(TEST_TMP_DIR) + "/sprites.png";
        norvane::saveScreenshot(file.c_str());
        return SurfacePtr(IMG_Load(file.c_str()));
    }
};

// Colour at (x, y) of the 2D context, y upwards.
Rgba at(SDL_Surface* shot, int x, int y) { return pixelAt(shot, x, 599 - y); }

}  // namespace

TEST_F(SpriteDrawing, EngineBlendsSpritesInOrderAndSkipsInvisibleOnes) {
    norvane::RenderContext2D context(norvane::basic_Vector2D<float>{800, 600});
    context.apply();  // blending off: the engine switches it on for its sprites only
    norvane::setClearColor(Color(0, 0, 0, 1));
    norvane::clearScreen();

    Block back(100, 200, Color(1, 0, 0, 0.5f)), alpha(110, 200, Color(0, 1, 0, 0.5f));
    Block additive(115, 200, Color(0, 1, 0, 0.5f)), hidden(100, 200, Color(1, 1, 1, 1));
    Block below(130, 200, Color(1, 0, 0, 0.5f));
    additive.blendMode = norvane::BLEND_ADDITIVE;
    hidden.visible = false;
    SpriteEngine engine;
    engine.blendMode = norvane::BLEND_ALPHA;
    for (Sprite* s : {static_cast<Sprite*>(&below), static_cast<Sprite*>(&back), static_cast<Sprite*>(&alpha),
                      static_cast<Sprite*>(&additive), static_cast<Sprite*>(&hidden)}) {
        engine.addBack(s);
    }
    engine.addFront(&below);  // already first; stays under everything
    engine.draw();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));  // the engine restores what it found
    SurfacePtr shot = frame();
    ASSERT_TRUE(shot);

    const struct {
        int x, r, g;
        const char* what;
    } expected[] = {
        {105, 128, 0, "red alone, and the hidden white block not drawn over it"},
        {112, 64, 128, "green blended over red"},
        {118, 64, 255, "green added to that"},
        {125, 0, 255, "green added to green"},
        {132, 128, 128, "green added to the red block drawn first"},
        {140, 128, 0, "the red block drawn first"},
    };
    for (const auto& e : expected) {
        EXPECT_TRUE(near(at(shot.get(), e.x, 190), e.r, e.g, 0, 255)) << e.what << ": " << at(shot.get(), e.x, 190);
    }
}
