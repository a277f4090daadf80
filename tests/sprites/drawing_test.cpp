#include "gfx/animations.h"
#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "sprites/sprites.h"
#include "support/window.h"

using namespace norvane;
using namespace norvane::sprites;
using norvane::gfx::SimpleImage;

struct Block : Sprite {
    Block(float x, Color c) : Sprite({x, 200}, true) { color = c; }
    void drawSelf() override {
        color.apply();
        glRectf(position.x, position.y - 20, position.x + 20, position.y);
    }
};

// "wide": 8 x 4, red then green, its last column transparent, hotspot (2, 1); "empty": 16 x 16, transparent.
struct SpriteDrawing : WindowTest {
    void SetUp() override {
        WindowTest::SetUp();
        SurfacePtr wide = makeRgbaSurface(8, 4);
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 8; ++x) setPixel(wide.get(), x, y, x < 4 ? 255 : 0, x < 4 ? 0 : 255, 0, x < 7 ? 255 : 0);
        const std::pair<const char*, SurfacePtr> files[] = {{"wide", std::move(wide)}, {"empty", makeRgbaSurface(16, 16)}};
        for (const auto& [name, surface] : files) {
            norvane::savePng(surface.get(), scratchPath(name).c_str());
            images.add(name, new SimpleImage(name, scratchPath(name)));
            images.find(name)->setBitmaskThreshold(0.5f);
        }
        images.find("wide")->setHotspot({2, 1});
        images.refresh(nullptr);
        begin2D(Color(0, 0, 0, 1));  // blending off
    }
    void TearDown() override { images.release(); }
    Rgba at(int x, int y) {
        if (!shot) shot = screenshot("sprites.png");
        return up(shot.get(), x, y);
    }

    norvane::gfx::ImageBank images;
    SurfacePtr shot;
};

TEST_F(SpriteDrawing, EngineBlendsSpritesInOrderAndSkipsInvisibleOnes) {
    Block below(130, Color(1, 0, 0, 0.5f)), back(100, Color(1, 0, 0, 0.5f)), alpha(110, Color(0, 1, 0, 0.5f));
    Block additive(115, Color(0, 1, 0, 0.5f)), hidden(100, Color(1, 1, 1, 1));
    additive.blendMode = BLEND_ADDITIVE, hidden.visible = false;
    SpriteEngine engine;
    engine.blendMode = BLEND_ALPHA;
    for (Sprite* s : std::vector<Sprite*>{&back, &alpha, &additive, &hidden, &below}) engine.addBack(s);
    engine.addFront(&below);  // drawn first, under everything
    engine.draw();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));  // the engine restores what it found
    // Red alone (the hidden white not drawn), green over red, green added to that, to green, to the first red, red alone.
    for (const auto& [x, r, g] : {std::tuple{105, 128, 0}, {112, 64, 128}, {118, 64, 255}, {125, 0, 255}, {132, 128, 128}, {140, 128, 0}})
        EXPECT_TRUE(near(at(x, 190), r, g, 0, 255)) << x << ": " << at(x, 190);
}

TEST_F(SpriteDrawing, ImageSpritesDrawAtTheirPositionLessTheHotspotCollideByPixelsAndFollowTheirAnimation) {
    ImageSprite ship({100, 200}, true, images.find("wide")), tinted({100, 100}, true, images.find("wide"));
    ImageSprite blank({100, 200}, true, nullptr);  // nothing to draw, nothing to collide with
    tinted.color = Color(1, 1, 1, 0.5f);
    EXPECT_EQ(ship.outerBoundingBox.width, 7);  // from the bitmask: the last column is empty
    SpriteEngine engine;
    for (Sprite* s : std::vector<Sprite*>{&ship, &tinted, &blank}) engine.addBack(s);
    engine.draw();
    // Upper-left corner at (98, 201): x 98..105, y 197..200; the tinted one below at half alpha.
    for (const auto& [x, y, r, g] : {std::tuple{98, 200, 255, 0}, {98, 197, 255, 0}, {104, 197, 0, 255}, {97, 198, 0, 0},
                                     {98, 201, 0, 0}, {98, 196, 0, 0}, {105, 198, 0, 0}, {99, 98, 128, 0}})
        EXPECT_TRUE(near(at(x, y), r, g, 0, 255, 3)) << x << "," << y << ": " << at(x, y);

    ImageSprite other({106, 200}, true, images.find("wide")), hollow({100, 200}, true, images.find("empty"));
    EXPECT_TRUE(ship.checkCollision(&other));
    other.position.x = 107;  // its first column on the ship's transparent last one
    EXPECT_FALSE(ship.checkCollision(&other) || ship.checkCollision(&hollow) || hollow.checkCollision(&ship) ||
                 blank.checkCollision(&ship));

    gfx::Animation grow("grow");
    grow.frames = {{images.find("wide"), 50}, {images.find("empty"), 50}};
    ImageSprite sprite({0, 0}, true, images.find("wide"));
    sprite.setAnimation(&grow, 1.0f);
    sprite.perform(51);
    // The empty image's box overlaps nothing.
    EXPECT_EQ((std::vector<float>{sprite.size.x, sprite.hotspot.x, float(sprite.outerBoundingBox.width),
                                  float(sprite.getBitmask() == images.find("empty")->getBitmask())}), (std::vector<float>{16, 0, -15, 1}));
    // The sprite owns animation references, never bank images; the leak checker sees to the rest.
    sprite.setAnimation(&grow, 2.0f);
    sprite.setImage(images.find("wide"));
    const float wide = sprite.size.x;
    sprite.setAnimation(&grow, 1.0f);
    sprite.autoclearImage();
    sprite.getImageData();
    EXPECT_EQ((std::vector<float>{wide, sprite.size.x}), (std::vector<float>{8, 0}));
    sprite.setAnimation(&grow, 1.0f);  // deleted with the sprite
}
