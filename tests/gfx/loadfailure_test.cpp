#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "gfx/imagebank.h"
#include "gfx/imageloader.h"
#include "gfx/simpleimage.h"
#include "image_files.h"
#include "norvane.h"
#include "support/window.h"

using norvane::gfx::ImageBank;
using norvane::gfx::SimpleImage;

namespace {

class Callback : public norvane::BackgroundTaskCallback {
public:
    void onStart(norvane::BackgroundTask*) override {}
    void onFinish(norvane::BackgroundTask*) override { finished = true; }
    bool finished = false;
};

GLuint texture(const ImageBank& bank, const std::string& name) {
    return static_cast<const SimpleImage*>(bank.find(name))->getTextureName();
}

}  // namespace

// The game's start-up reports a missing picture and ends, so the loader must not swallow it.
TEST_F(WindowTest, AFileThatWillNotLoadThrowsOutOfTheFrameworksBackgroundStep) {
    writePngFile("failing/a.png", quarteredSurface(4, 4).get());
    writePngFile("failing/c.png", quarteredSurface(4, 4).get());
    std::remove(gfxPath("failing/b.png").c_str());  // made by an earlier run
    ImageBank bank;
    bank.load(writeFile("failing/images.xml", "<images><image name=\"a\" filename=\"a.png\"/>"
                                              "<image name=\"b\" filename=\"b.png\"/>"
                                              "<image name=\"c\" filename=\"c.png\"/></images>"),
              "");
    Callback callback;
    auto* loader = new norvane::gfx::ImageLoader(&bank, &callback);
    norvane::backgroundTasks.push_back(loader);
    for (int attempt = 0; attempt < 2; ++attempt) {  // it stays at the broken image
        try {
            norvane::perform(SDL_GetTicks() + 10000);
            ADD_FAILURE() << "no exception";
        } catch (const std::string& e) {
            EXPECT_EQ(e.rfind("Could not load \"" + gfxPath("failing/b.png") + "\": ", 0), 0u) << e;
        }
    }
    EXPECT_NE(texture(bank, "a"), 0u);
    EXPECT_EQ(texture(bank, "c"), 0u);
    EXPECT_FALSE(callback.finished);
    ASSERT_EQ(norvane::backgroundTasks.size(), 1u);

    writePngFile("failing/b.png", quarteredSurface(4, 4).get());
    norvane::perform(SDL_GetTicks() + 10000);
    EXPECT_TRUE(callback.finished);
    EXPECT_TRUE(norvane::backgroundTasks.empty());
    EXPECT_NE(texture(bank, "b"), 0u);
    EXPECT_NE(texture(bank, "c"), 0u);
    bank.release();
}
