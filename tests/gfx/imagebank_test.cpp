#include "gfx/imagebank.h"

#include <gtest/gtest.h>

#include "gfx/simpleimage.h"
#include "image_files.h"
#include "support/window.h"

using norvane::gfx::ImageBank;
using norvane::gfx::SimpleImage;

namespace {

// The manager forgets its banks; the tests destroy them.
struct OwningManager : norvane::ResourceManager {
    ~OwningManager() override {
        for (auto& entry : banks) delete entry.second;
    }
    ImageBank* images(const std::string& name) {
        auto it = banks.find(name);
        return it == banks.end() ? nullptr : dynamic_cast<ImageBank*>(it->second);
    }
};

class ImageBankTest : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStdout();
        norvane::init(0, false);  // names the log groups
        testing::internal::GetCapturedStdout();
    }
};

std::vector<std::string> names(const ImageBank& bank) {
    std::vector<std::string> result;
    for (const auto& entry : bank.resources) result.push_back(entry.first);
    return result;
}

}  // namespace

TEST_F(ImageBankTest, DefinitionLoadsBanksInDocumentOrderWithTheirMessages) {
    const std::string file = writeFile("defs/resources.xml",
                                       "<resources dir=\"gfx/\">\n"
                                       "  <images name=\"imagesGame\" dir=\"ships/\">\n"
                                       "    <image name=\"full\" filename=\"full.png\" hotX=\"3.5\" hotY=\"-2\"\n"
                                       "           bitmaskThreshold=\"0.25\" clamp=\"true\" filter=\"trilinear\"/>\n"
                                       "    <image name=\"dup\" filename=\"one.png\"/>\n"
                                       "    <image filename=\"a.png\"/>\n"
                                       "    <sprite name=\"ignored\" filename=\"s.png\"/>\n"
                                       "    <image name=\"lost\"/>\n"
                                       "    <image/>\n"
                                       "    <image name=\"odd\" filename=\"o.png\" filter=\"Trilinear\"/>\n"
                                       "    <image name=\"dup\" filename=\"two.png\"/>\n"
                                       "  </images>\n"
                                       "  <sprockets name=\"b\"/>\n"
                                       "  <images dir=\"nameless/\"/>\n"
                                       "  <images name=\"imagesMenu\">\n"
                                       "    <loop from=\"1\" to=\"2\"><image name=\"never\" filename=\"n.png\"/></loop>\n"
                                       "    <image name=\"logo\" filename=\"logo.png\"/>\n"
                                       "  </images>\n"
                                       "</resources>\n");
    OwningManager manager;
    testing::internal::CaptureStdout();
    manager.load(file, "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[norvane:images] (warning) No name specified for image. Using filename.\n"
              "[norvane:images] (error) No filename specified for image \"lost\". Skipping entry.\n"
              "[norvane:images] (warning) No name specified for image. Using filename.\n"
              "[norvane:images] (error) No filename specified for image \"\". Skipping entry.\n"
              "[norvane:resources] (warning) Unknown resource bank type \"sprockets\".\n"
              "[norvane:resources] (error) Missing name attribute from resource bank node.\n"
              "[norvane:images] (error) No variable specified for loop. Skipping loop.\n");
    ASSERT_EQ(manager.banks.size(), 2u);

    const ImageBank* game = manager.images("imagesGame");
    ASSERT_TRUE(game);
    EXPECT_EQ(names(*game), (std::vector<std::string>{"a.png", "dup", "full", "odd"}));
    const std::string dir = std::string(TEST_TMP_DIR) + "/gfx/defs/gfx/ships/";
    auto* full = static_cast<SimpleImage*>(game->find("full"));
    EXPECT_EQ(full->getFilename(), dir + "full.png");
    EXPECT_EQ(full->name, "full");
    EXPECT_EQ(full->bank, game);
    EXPECT_FLOAT_EQ(full->getHotspot().x, 3.5f);
    EXPECT_FLOAT_EQ(full->getHotspot().y, -2.0f);
    EXPECT_FLOAT_EQ(full->getBitmaskThreshold(), 0.25f);
    EXPECT_TRUE(full->getClamp());
    EXPECT_EQ(full->getFilter(), norvane::gfx::FILTER_TRILINEAR);
    EXPECT_EQ(full->getTextureName(), 0u);  // nothing is loaded yet

    // Defaults; a misspelt filter is linear; the later "dup" replaced the earlier.
    const auto* plain = game->find("a.png");
    EXPECT_EQ(plain->getFilename(), dir + "a.png");
    EXPECT_FLOAT_EQ(plain->getBitmaskThreshold(), -1.0f);
    EXPECT_EQ(plain->getFilter(), norvane::gfx::FILTER_LINEAR);
    EXPECT_EQ(game->find("odd")->getFilter(), norvane::gfx::FILTER_LINEAR);
    EXPECT_EQ(game->find("dup")->getFilename(), dir + "two.png");

    const ImageBank* menu = manager.images("imagesMenu");
    ASSERT_TRUE(menu);
    EXPECT_EQ(names(*menu), (std::vector<std::string>{"logo"}));
    EXPECT_EQ(menu->find("logo")->getFilename(), std::string(TEST_TMP_DIR) + "/gfx/defs/gfx/logo.png");
}

TEST_F(ImageBankTest, LoopsNameImagesAndFiles) {
    const std::string file = writeFile("loops.xml",
                                       "<images>"
                                       "<loop var=\"i\" from=\"1\" to=\"3\" digits=\"2\">"
                                       "<image name=\"ship[i]\" filename=\"ship[i].png\"/></loop>"
                                       "<loop var=\"x\" from=\"1\" to=\"2\"><loop var=\"y\" from=\"1\" to=\"2\">"
                                       "<image name=\"t[x][y]\" filename=\"t[y].png\"/></loop></loop>"
                                       "<loop var=\"f\" from=\"0\" to=\"1\"><image filename=\"frame[f].png\"/></loop>"
                                       "<image name=\"[i]\" filename=\"after.png\"/>"
                                       "</images>");
    ImageBank bank;
    testing::internal::CaptureStdout();
    bank.load(file, "base/");
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_EQ(names(bank), (std::vector<std::string>{"[i]", "frame0.png", "frame1.png", "ship01", "ship02", "ship03",
                                                     "t11", "t12", "t21", "t22"}));
    EXPECT_EQ(bank.find("ship02")->getFilename(), "base/ship02.png");
    EXPECT_EQ(bank.find("t21")->getFilename(), "base/t1.png");
    EXPECT_EQ(bank.size(), 10);
    // A loop's variable is gone once the loop has ended.
    EXPECT_EQ(bank.find("[i]")->getFilename(), "base/after.png");
    EXPECT_EQ(log,
              "[norvane:images] (warning) No name specified for image. Using filename.\n"
              "[norvane:images] (warning) No name specified for image. Using filename.\n");
}

namespace {

class CountingHandler : public norvane::RefreshingBankHandler {
public:
    void elementRefreshed() override { ++count; }
    int count = 0;
};

}  // namespace

TEST_F(WindowTest, BrokenFileInADefinitionStopsTheRefresh) {
    writePngFile("mixed/good1.png", quarteredSurface(8, 8).get());
    writePngFile("mixed/good2.png", quarteredSurface(4, 2).get());
    writeFile("mixed/broken.png", "\x89PNG\r\n\x1a\n broken");
    const std::string file = writeFile("mixed/images.xml",
                                       "<images>"
                                       "<image name=\"a\" filename=\"good1.png\"/>"
                                       "<image name=\"b\" filename=\"broken.png\"/>"
                                       "<image name=\"c\" filename=\"good2.png\" bitmaskThreshold=\"0.5\"/>"
                                       "</images>");
    ImageBank bank;
    bank.load(file, "");
    ASSERT_EQ(bank.size(), 3);
    CountingHandler handler;
    const std::string dir = std::string(TEST_TMP_DIR) + "/gfx/mixed/";
    auto expectBrokenThrown = [&](auto action) {
        try {
            action();
            ADD_FAILURE() << "no exception";
        } catch (const std::string& e) {
            EXPECT_EQ(e.rfind("Could not load \"" + dir + "broken.png\": ", 0), 0u) << e;
        }
    };
    expectBrokenThrown([&] { bank.refresh(&handler); });
    EXPECT_EQ(handler.count, 1);
    auto texture = [&](const char* name) { return static_cast<SimpleImage*>(bank.find(name))->getTextureName(); };
    EXPECT_NE(texture("a"), 0u);
    EXPECT_EQ(texture("b"), 0u);
    EXPECT_EQ(texture("c"), 0u);

    // Reloading reads every file again and stops at the broken one again.
    expectBrokenThrown([&] { bank.reload(); });
    EXPECT_NE(texture("a"), 0u);
    writePngFile("mixed/broken.png", quarteredSurface(2, 2).get());
    bank.refresh(&handler);
    EXPECT_EQ(handler.count, 4);
    EXPECT_NE(texture("b"), 0u);
    ASSERT_NE(bank.find("c")->getBitmask(), nullptr);
    EXPECT_EQ(bank.find("c")->getOuterBoundingBox().width, 4);
    bank.release();
    EXPECT_EQ(texture("a"), 0u);
    EXPECT_EQ(texture("c"), 0u);
}
