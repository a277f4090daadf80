// Inputs that once crashed, hung or tripped a sanitizer in the fuzz harnesses, fed through the
// readers the harnesses drive. Each must load, or be refused, with a clear log line.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gfx/animations.h"
#include "gfx/fonts.h"
#include "gfx/simpleimage.h"
#include "norvane.h"
#include "resources/manager.h"
#include "support/captured.h"
#include "support/files.h"
#include "support/manager.h"
#include "support/window.h"

using namespace norvane;

namespace {

const std::string INPUTS = SOURCE_DIR "/tests/fuzzcases/inputs/";

std::vector<std::string> inputsOf(const std::string& reader) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(INPUTS + reader)) names.push_back(e.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

// A font directory holding `input` as its description.
std::string fontDir(const std::string& input) {
    const std::string description = writeFile(input + "/bitmapfont.xml", readFile(INPUTS + "resources/" + input));
    return description.substr(0, description.rfind('/') + 1);
}

// As the resources harness reads: a font description into a font directory, anything else as a
// resources document whose banks are then used and destroyed. Returns the log and the thrown text.
std::string readResources(const std::string& input) {
    const std::string text = readFile(INPUTS + "resources/" + input);
    std::string thrown;
    const std::string log = captured([&] {
        fonts::FontBank fontBank;
        OwningManager manager;
        try {
            if (text.substr(0, 64).find("<bitmapfont") == std::string::npos) {
                manager.load(INPUTS + "resources/" + input, scratchPath(input + "/"));
            } else {
                auto* font = new fonts::BitmapFont(fontDir(input));
                fontBank.add(font->name, font);
                EXPECT_GE(font->getWidth("Vantorix \xe9\x01~\x7f\x80\xff"), 0);
            }
        } catch (const std::string& e) {
            thrown = e;
        }
        for (auto& bank : manager.banks) {
            if (auto* animations = dynamic_cast<gfx::AnimationBank*>(bank.second)) {
                for (auto& entry : animations->resources) {
                    std::unique_ptr<gfx::AnimationReference> ref(entry.second->getReference(1.0f));
                    ref->perform(100.0f);
                }
            }
        }
    });
    return log + thrown;
}

class FuzzCases : public testing::Test {
protected:
    void SetUp() override { captured([] { init(0, false); }); }  // names the log groups
};

}  // namespace

TEST_F(FuzzCases, EveryResourcesInputLoads) {
    const std::map<std::string, std::string> expected = {
        // The inner loop's step, clamped by strtol, used to become 0 and the loop never ended.
        {"fuzzer-timeout-loop-step.xml",
         "[norvane:images] (error) Loop range invalid: i [5;1] (step: -9223372036854775808). Skipping loop."},
        {"timeout-loop-step-truncated.xml", "(error) Loop range invalid: i [5;0] (step: -4294967296). Skipping loop."},
        // The padding used to overflow while placing the glyphs.
        {"ubsan-font-vpadding-overflow.xml",
         "(warning) Font \"f\": vPadding 9223372036854775807 is out of range, using 0."},
    };
    const std::vector<std::string> inputs = inputsOf("resources");
    EXPECT_GE(inputs.size(), expected.size());
    for (const std::string& input : inputs) {
        const std::string log = readResources(input);
        auto it = expected.find(input);
        EXPECT_TRUE(it == expected.end() || log.find(it->second) != std::string::npos) << input << ":\n" << log;
    }
}

// PNGs declaring chunks far longer than the file used to make libpng read on for seconds.
TEST_F(WindowTest, EveryPngInputIsRefusedBeforeDecodingAndAFontWithTwoImagesOfOneFilePrints) {
    const std::vector<std::string> inputs = inputsOf("png");
    EXPECT_GE(inputs.size(), 2u);
    for (const std::string& input : inputs) {
        gfx::SimpleImage image("i", INPUTS + "png/" + input);
        const std::string thrown = thrownBy([&] { image.load(true, true); });
        EXPECT_NE(thrown.find("runs past the end of the file."), std::string::npos) << input << ": " << thrown;
        EXPECT_EQ(image.getTextureName(), 0u);
    }

    // Two images of one file used to free the first while its glyphs still pointed to it.
    const std::string dir = fontDir("ubsan-font-duplicate-image-dangling.xml");
    savePng(makeRgbaSurface(8, 8).get(), (dir + "a.png").c_str());
    std::unique_ptr<fonts::BitmapFont> font;
    captured([&] { font.reset(new fonts::BitmapFont(dir)); });
    ASSERT_EQ(font->images->size(), 1);
    EXPECT_EQ(font->singleImage, font->images->resources.begin()->second);
    EXPECT_NE(font->singleImage->getTextureName(), 0u);
    EXPECT_EQ(font->getWidth("A"), 4);
    font->print("AA");
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
