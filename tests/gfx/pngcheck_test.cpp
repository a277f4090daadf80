#include <gtest/gtest.h>

#include "gfx/simpleimage.h"
#include "image_files.h"
#include "support/window.h"

// A PNG is measured before it is decoded: a few bytes may declare gigabytes of pixels.
TEST_F(WindowTest, PngsDeclaringHugePicturesAreRefusedBeforeDecoding) {
    const std::string png = readFile(writePng("declared.png", quarteredSurface(4, 4)));
    const size_t ihdr = png.find("IHDR");
    ASSERT_NE(ihdr, std::string::npos);
    for (auto [width, height] : {std::pair{100000, 4}, {4, 8193}}) {
        std::string declared = png;
        for (int i = 0; i < 4; ++i) {
            declared[ihdr + 4 + i] = static_cast<char>(width >> (24 - 8 * i));
            declared[ihdr + 8 + i] = static_cast<char>(height >> (24 - 8 * i));
        }
        norvane::gfx::SimpleImage image("huge", writeFile("huge.png", declared));
        const std::string size = std::to_string(width) + "x" + std::to_string(height);
        EXPECT_NE(thrownBy([&] { image.load(true, true); }).find(": " + size + " pixels exceed the largest texture."),
                  std::string::npos)
            << size;
        EXPECT_EQ(image.getTextureName(), 0u);
        EXPECT_EQ(image.getWidth(), 0);
    }
}
