#include "gfx/simpleimage.h"

#include "gfx/bitmask.h"
#include "gfx/imagebank.h"
#include "image_files.h"
#include "support/window.h"

using namespace norvane;
using namespace norvane::gfx;

static GLint textureParameter(const SimpleImage* image, GLenum parameter) {
    glBindTexture(GL_TEXTURE_2D, image->getTextureName());
    GLint value = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, parameter, &value);
    return value;
}

TEST_F(WindowTest, TexturesArePaddedToPowersOfTwoAndMasksComeFromTheUnpaddedImage) {
    for (const auto& [w, h, tw, th] : {std::tuple{100, 50, 128, 64}, {64, 64, 64, 64}, {3, 17, 4, 32}}) {
        SimpleImage image("i", writePng("size.png", makeRgbaSurface(w, h)));
        image.load(true, true);
        EXPECT_EQ((std::vector<float>{float(image.getWidth()), float(image.getHeight()), float(image.getTextureWidth()),
                                      float(image.getTextureHeight()), image.getLeftTexCoord(), image.getUpperTexCoord(),
                                      image.getRightTexCoord(), image.getLowerTexCoord()}),
                  (std::vector<float>{float(w), float(h), float(tw), float(th), 0, 0, float(w) / tw, float(h) / th}));
        // No threshold, no bitmask: the whole image is the outer box and nothing the inner one.
        EXPECT_TRUE(!image.getBitmask() && image.getOuterBoundingBox().width * image.getOuterBoundingBox().height == w * h &&
                    image.getInnerBoundingBox().width == 0);
        image.release(true);
    }
    SimpleImage image("i", writePng("masked.png", surfaceFromPicture({"..........", "..#######.", "..#######.",
                                                                       "..#######.", "..#######.", ".........."})));
    image.setBitmaskThreshold(0.5f);
    image.refresh(true);
    const basic_Rect<int> outer = image.getOuterBoundingBox(), inner = image.getInnerBoundingBox();
    EXPECT_EQ((std::vector<int>{outer.x, outer.y, outer.width, outer.height, inner.width * inner.height, !image.getBitmask()}),
              (std::vector<int>{2, 1, 7, 4, 28, 0}));
    // A reload keeps the mask and, as every load does, resets the boxes to the whole image.
    const Bitmask* mask = image.getBitmask();
    image.reload(true);
    EXPECT_TRUE(image.getBitmask() == mask && image.getOuterBoundingBox().width + image.getInnerBoundingBox().width == 10 &&
                glGetError() == GL_NO_ERROR);
}

TEST_F(WindowTest, FiltersAreCappedByTheBank) {
    writePng("f.png", quarteredSurface(16, 16));
    ImageBank bank;
    bank.load(writeFile("images.xml", "<images><image name=\"none\" filename=\"f.png\" filter=\"none\"/><image name=\"linear\""
                                      " filename=\"f.png\" clamp=\"true\"/><image name=\"bilinear\" filename=\"f.png\" filter=\"bilinear\"/>"
                                      "<image name=\"trilinear\" filename=\"f.png\" filter=\"trilinear\"/></images>"), "");
    bank.refresh(nullptr);
    auto image = [&](const char* name) { return static_cast<SimpleImage*>(bank.find(name)); };
    for (const auto& [name, minFilter, magFilter, levelOneWidth] :
         {std::tuple{"none", GL_NEAREST, GL_NEAREST, 0}, {"linear", GL_LINEAR, GL_LINEAR, 0},
          {"bilinear", GL_LINEAR, GL_LINEAR, 8}, {"trilinear", GL_LINEAR, GL_LINEAR, 8}}) {
        GLint levelOne = 0;  // mipmaps
        const GLint min = textureParameter(image(name), GL_TEXTURE_MIN_FILTER);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 1, GL_TEXTURE_WIDTH, &levelOne);
        EXPECT_EQ((std::vector<GLint>{min, textureParameter(image(name), GL_TEXTURE_MAG_FILTER), levelOne}),
                  (std::vector<GLint>{GLint(minFilter), GLint(magFilter), levelOneWidth})) << name;
    }
    for (const auto& [name, wrap, mode] : {std::tuple{"linear", GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE},
                                           {"linear", GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE}, {"none", GL_TEXTURE_WRAP_S, GL_REPEAT}})
        EXPECT_EQ(textureParameter(image(name), wrap), mode) << name;
    // With the cap raised, a refresh only filters the textures that are there.
    bank.maxFilter = FILTER_TRILINEAR;
    const unsigned int texture = image("trilinear")->getTextureName();
    bank.refresh(nullptr);
    EXPECT_EQ((std::vector<GLint>{GLint(image("trilinear")->getTextureName()), textureParameter(image("trilinear"), GL_TEXTURE_MIN_FILTER),
                                  textureParameter(image("bilinear"), GL_TEXTURE_MIN_FILTER)}),
              (std::vector<GLint>{GLint(texture), GL_LINEAR_MIPMAP_LINEAR, GL_NEAREST_MIPMAP_LINEAR}));
    for (int i = 0; i < 2; ++i) bank.release();  // twice does nothing
    EXPECT_EQ(image("none")->getTextureName() + image("none")->getWidth(), 16u);
    image("none")->setFilter(FILTER_NONE);  // no texture: nothing to filter or draw
    image("none")->draw(basic_Vector2D<float>{0.0f, 0.0f}, BLEND_ALPHA);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// A PNG is measured before it is decoded: a few bytes may declare gigabytes of pixels.
TEST_F(WindowTest, BrokenOrHugeImageFilesThrowAndLeaveNoTexture) {
    const std::string good = readFile(writePng("good.png", quarteredSurface(16, 16)));
    std::string corrupt = good;
    for (size_t i = good.size() / 2; i < good.size() - 12; ++i) corrupt[i] = static_cast<char>(corrupt[i] ^ 0x5A);
    auto declaring = [&](int width, int height) {
        std::string png = good;
        for (int i = 0; i < 4; ++i)  // the IHDR chunk's data
            png[16 + i] = char(width >> (24 - 8 * i)), png[20 + i] = char(height >> (24 - 8 * i));
        return writeFile("huge" + std::to_string(width) + ".png", png);
    };
    const std::pair<std::string, std::string> files[] = {{scratchPath("missing.png"), ""}, {writeFile("text.png", "Not an image.\n"), ""},
        {writeFile("truncated.png", good.substr(0, good.size() / 2)), ""}, {writeFile("corrupt.png", corrupt), ""},
        {writeFile("empty.png", ""), ""}, {declaring(100000, 4), "100000x4 pixels exceed the largest texture."},
        {declaring(4, 8193), "4x8193 pixels exceed the largest texture."}};
    for (const auto& [file, why] : files) {
        SimpleImage image("i", file);
        const std::string error = thrownBy([&] { image.load(true, true); });
        EXPECT_EQ(error.rfind("Could not load \"" + file + "\": ", 0), 0u) << error;
        EXPECT_TRUE(error.back() == '.' && error.find(why) != std::string::npos) << error;
        EXPECT_EQ(image.getTextureName() + unsigned(image.getWidth()), 0u);
    }
}

TEST_F(WindowTest, DrawsAtPointsStretchedAndTiledInEachBlendMode) {
    SimpleImage square("square", writePng("square.png", quarteredSurface(16, 16)));  // not padded
    SimpleImage padded("padded", writePng("padded.png", quarteredSurface(12, 10)));  // 16 x 16 texture
    const Rgba K{0, 0, 0, 0}, R{255, 0, 0, 0}, G{0, 255, 0, 0}, B{0, 0, 255, 0}, W{255, 255, 255, 0}, Y{255, 255, 0, 0},
               C{0, 255, 255, 0}, M{255, 0, 255, 0}, D{64, 64, 64, 0};
    // 24-bit RGB, which SDL_image delivers with the bytes in R, G, B order, 5 x 3 and so padded.
    const Rgba rgbRows[3][5] = {{R, G, B, W, K}, {Y, C, M, K, W}, {D, D, D, D, D}};
    std::string ppm = "P6\n5 3\n255\n";
    for (const auto& row : rgbRows)
        for (const Rgba& p : row) ppm += {char(p.r), char(p.g), char(p.b)};
    SimpleImage rgb("rgb", writeFile("rgb.ppm", ppm));
    // 24-bit BGR, converted before upload.
    SurfacePtr bgrSurface(SDL_CreateRGBSurface(SDL_SWSURFACE, 2, 2, 24, 0xFF0000, 0x00FF00, 0x0000FF, 0));
    for (const auto& [x, y, r, g, b] : {std::tuple{0, 0, 255, 0, 0}, {1, 0, 0, 255, 0}, {0, 1, 0, 0, 255}, {1, 1, 255, 255, 255}}) {
        SDL_Rect pixel{Sint16(x), Sint16(y), 1, 1};
        SDL_FillRect(bgrSurface.get(), &pixel, SDL_MapRGB(bgrSurface->format, Uint8(r), Uint8(g), Uint8(b)));
    }
    const std::string bmp = scratchPath("bgr.bmp");
    ASSERT_EQ(SDL_SaveBMP(bgrSurface.get(), bmp.c_str()), 0);
    SimpleImage converted("bgr", bmp);
    for (SimpleImage* image : {&square, &padded, &rgb, &converted}) image->refresh(true), image->setFilter(FILTER_NONE);  // exact pixels
    begin2D(Color(0.5f, 0.5f, 0.5f), true, BLEND_ADDITIVE);
    square.draw(basic_Vector2D<float>{100, 500}, BLEND_DEFAULT);  // keeps the context's additive
    square.draw(basic_Vector2D<float>{200, 500}, BLEND_ALPHA);
    square.setHotspot(basic_Vector2D<float>{4, -8});
    square.draw(basic_Vector2D<float>{400, 520}, BLEND_ALPHA);
    square.drawStretched(basic_Rect<float>{100, 300, 64, 32}, BLEND_ALPHA);
    square.draw(basic_Rect<float>{300, 300, 40, 20}, BLEND_ALPHA);
    padded.draw(basic_Rect<float>{500, 300, 30, 15}, BLEND_ALPHA);
    padded.drawStretched(basic_Rect<float>{600, 100, 120, 100}, BLEND_ADDITIVE);
    rgb.drawStretched(basic_Rect<float>{100, 100, 50, 30}, BLEND_ALPHA);
    converted.drawStretched(basic_Rect<float>{200, 100, 20, 20}, BLEND_ALPHA);
    ASSERT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    SurfacePtr shot = screenshot("scene.png");
    ASSERT_TRUE(shot);
    auto expectAt = [&](int x, int y, Rgba want) {
        const Rgba got = up(shot.get(), x, y);
        EXPECT_TRUE(near(got, want.r, want.g, want.b, 255, 3)) << "at " << x << "," << y << ": " << got;
    };
    // The quarters red, white, blue and half-transparent green, alpha-blended and added onto gray.
    const Rgba gray{128, 128, 128, 0}, greenA{64, 192, 64, 0}, redAdd{255, 128, 128, 0}, blueAdd{128, 128, 255, 0},
               greenAdd{128, 255, 128, 0};
    // Four quarters of a w x h picture with its lower-left corner at (x, y), and nothing around it.
    for (const auto& [x, y, w, h, tl, tr, bl, br] :
         {std::tuple{100, 500, 16, 16, redAdd, W, blueAdd, greenAdd}, {200, 500, 16, 16, R, W, B, greenA},
          {396, 512, 16, 16, R, W, B, greenA} /* hotspot (4, -8) at (400, 520) */, {100, 300, 64, 32, R, W, B, greenA},
          {600, 100, 120, 100, redAdd, W, blueAdd, greenAdd} /* padding never shows */, {200, 100, 20, 20, R, G, B, W}}) {
        for (const auto& [px, py, want] : {std::tuple{x, y + h - 1, tl}, {x + w - 1, y + h - 1, tr}, {x, y, bl}, {x + w - 1, y, br},
                                           {x - 1, y, gray}, {x + w, y, gray}, {x, y - 1, gray}, {x, y + h, gray}})
            expectAt(px, py, want);
    }
    // Tiled from (300, 320) down through a repeating texture: 16-unit tiles, the last cut to 8 and 4, showing their
    // upper-left part; then quad by quad from a padded texture: 12 x 10 tiles, cut to 6 and 5.
    for (const auto& [x, y, want] : {std::tuple{334, 316, R}, {326, 316, W}, {339, 316, R}, {340, 316, gray}, {310, 308, greenA},
                                     {302, 302, R}, {310, 302, W}, {302, 299, gray}, {526, 312, R}, {520, 312, W}, {529, 312, R},
                                     {530, 312, gray}, {508, 307, greenA}, {526, 307, B}, {529, 302, R}, {502, 299, gray}, {502, 315, gray}})
        expectAt(x, y, want);
    // Each RGB pixel stretched to 10 x 10.
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 5; ++column) expectAt(105 + 10 * column, 125 - 10 * row, rgbRows[row][column]);
    for (SimpleImage* image : {&square, &padded, &rgb, &converted}) image->release(true);
}
