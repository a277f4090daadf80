#include <gtest/gtest.h>

#include <memory>

#include "gfx/bitmask.h"
#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "support/window.h"
#include "xml/xml.h"

// Every image bank of the game's own definition reads without a message and every file it names
// becomes a texture (and a bitmask where it asks for one).
TEST_F(WindowTest, EveryImageOfTheGameDataLoads) {
    const std::string dataDir = SOURCE_DIR "/data/";
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML((dataDir + "resources.xml").c_str()));
    ASSERT_TRUE(root);
    int banks = 0, images = 0;
    for (const norvane::xml::Node* element : root->children) {
        if (element->name != "images") continue;
        ++banks;
        norvane::gfx::ImageBank bank;
        testing::internal::CaptureStdout();
        bank.getFromNode(element, dataDir + element->getAttribute("dir", std::string()));
        bank.refresh(nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << element->getAttribute("name", std::string());
        for (const auto& entry : bank.resources) {
            const auto* image = static_cast<const norvane::gfx::SimpleImage*>(entry.second);
            ++images;
            EXPECT_NE(image->getTextureName(), 0u) << entry.first;
            EXPECT_EQ(image->getBitmask() != nullptr, image->getBitmaskThreshold() >= 0.0f) << entry.first;
        }
        bank.release();
    }
    EXPECT_GE(banks, 1);
    EXPECT_GE(images, 100);
}
