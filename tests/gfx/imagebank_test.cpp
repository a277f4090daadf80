#include "gfx/imagebank.h"

#include "gfx/simpleimage.h"
#include "image_files.h"
#include "support/manager.h"
#include "support/window.h"

using namespace norvane::gfx;

// "name:file" of each image, the file relative to `dir`.
static std::string names(const ImageBank& bank, const std::string& dir) {
    std::string result;
    for (const auto& [name, image] : bank.resources) result += name + ":" + image->getFilename().substr(dir.size()) + " ";
    return result;
}

struct CountingHandler : norvane::RefreshingBankHandler {
    void elementRefreshed() override { ++count; }
    int count = 0;
};

TEST(ImageBank, DefinitionReadsImagesWithTheirSettingsLoopsAndMessages) {
    captured([] { norvane::init(0, false); });  // names the log groups
    // A loop's variable is gone once it has ended: "[i]" stays as it is.
    const std::string file = writeFile("resources.xml", "<resources dir=\"gfx/\"><images name=\"imagesGame\" dir=\"ships/\">"
        "<image name=\"full\" filename=\"full.png\" hotX=\"3.5\" hotY=\"-2\" bitmaskThreshold=\"0.25\" clamp=\"true\" filter=\"trilinear\"/>"
        "<image name=\"dup\" filename=\"one.png\"/><image filename=\"a.png\"/><sprite name=\"s\" filename=\"s.png\"/><image name=\"lost\"/>"
        "<image/><image name=\"odd\" filename=\"o.png\" filter=\"Trilinear\"/><image name=\"dup\" filename=\"two.png\"/></images>"
        "<images name=\"imagesMenu\"><loop var=\"i\" from=\"1\" to=\"2\" digits=\"2\"><image name=\"ship[i]\" filename=\"s[i].png\"/></loop>"
        "<loop from=\"1\" to=\"2\"><image name=\"never\" filename=\"n.png\"/></loop><image name=\"[i]\" filename=\"after.png\"/>"
        "</images></resources>");
    OwningManager manager;
    EXPECT_EQ(captured([&] { manager.load(file, ""); }),
              "[norvane:images] (warning) No name specified for image. Using filename.\n"
              "[norvane:images] (error) No filename specified for image \"lost\". Skipping entry.\n"
              "[norvane:images] (warning) No name specified for image. Using filename.\n"
              "[norvane:images] (error) No filename specified for image \"\". Skipping entry.\n"
              "[norvane:images] (error) No variable specified for loop. Skipping loop.\n");
    const std::string dir = scratchPath("gfx/");
    const ImageBank* game = manager.get<ImageBank>("imagesGame");
    ASSERT_TRUE(game);
    // Defaults; a misspelt filter is linear; the later "dup" replaced the earlier.
    EXPECT_EQ(names(*game, dir), "a.png:ships/a.png dup:ships/two.png full:ships/full.png odd:ships/o.png ");
    EXPECT_EQ(names(*manager.get<ImageBank>("imagesMenu"), dir), "[i]:after.png ship01:s01.png ship02:s02.png ");
    auto* full = static_cast<SimpleImage*>(game->find("full"));
    const ImageResource* plain = game->find("a.png");
    EXPECT_EQ((std::vector<float>{full->getHotspot().x, full->getHotspot().y, full->getBitmaskThreshold(), float(full->getClamp()),
                                  float(full->getFilter()), plain->getBitmaskThreshold(), float(plain->getClamp()),
                                  float(game->find("odd")->getFilter())}),
              (std::vector<float>{3.5f, -2, 0.25f, 1, FILTER_TRILINEAR, -1, 0, FILTER_LINEAR}));
}

TEST_F(WindowTest, ImageBankStopsAtAFileThatWillNotLoadAndReleases) {
    writePng("good1.png", quarteredSurface(8, 8));
    writePng("good2.png", quarteredSurface(4, 2));
    writeFile("broken.png", "\x89PNG\r\n\x1a\n broken");
    ImageBank bank;
    bank.load(writeFile("images.xml", "<images><image name=\"a\" filename=\"good1.png\"/><image name=\"b\" filename=\"broken.png\"/>"
                                      "<image name=\"c\" filename=\"good2.png\" bitmaskThreshold=\"0.5\"/></images>"), "");
    CountingHandler handler;
    const std::string broken = "Could not load \"" + scratchPath("broken.png") + "\": ";
    auto texture = [&](const char* name) { return static_cast<SimpleImage*>(bank.find(name))->getTextureName(); };
    EXPECT_EQ(thrownBy([&] { bank.refresh(&handler); }).rfind(broken, 0), 0u);
    EXPECT_TRUE(handler.count == 1 && texture("a") && !texture("b") && !texture("c"));
    // Reloading reads every file again and stops at the broken one again.
    EXPECT_EQ(thrownBy([&] { bank.reload(); }).rfind(broken, 0), 0u);
    writePng("broken.png", quarteredSurface(2, 2));
    bank.refresh(&handler);
    EXPECT_TRUE(handler.count == 4 && texture("a") && texture("b") && texture("c"));
    EXPECT_TRUE(bank.find("c")->getBitmask() && bank.find("c")->getOuterBoundingBox().width == 4);
    bank.release();
    EXPECT_FALSE(texture("a") || texture("c"));
}
