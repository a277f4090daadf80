#include "gfx/imageloader.h"

#include <cstdio>

#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "image_files.h"
#include "support/tasks.h"
#include "support/window.h"

using namespace norvane::gfx;

TEST(ImageLoader, StartsImagesOnlyBeforeTheDeadlineAndFinishesOnce) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    ImageBank bank;  // without a window the images load as nothing, at once
    for (const char* name : {"a", "b", "c"}) bank.add(name, new SimpleImage(name, "none.png"));
    TaskEvents callback;
    ImageLoader loader(&bank, &callback);
    unsigned int done, total;
    for (auto [ms, progress] : {std::pair{0u, 3.0}, {1000u, 34.0}}) {  // no time at all: nothing starts
        loader.perform(SDL_GetTicks() + ms);
        loader.getProgress(&done, &total);
        EXPECT_EQ(done * 10 + total + loader.getProgressRelative(), progress);
    }
    loader.perform(SDL_GetTicks() + 1000);  // finished: nothing more happens
    ImageBank empty;
    ImageLoader none(&empty, &callback);
    none.perform(0);  // an empty bank finishes on its first call
    EXPECT_EQ(callback.events, "start finish start finish ");
    SDL_Quit();
}

// The real thing: frames load the bank; a missing picture must reach the game's start-up, which reports it and ends.
TEST_F(WindowTest, FrameworkLoadsABankPieceByPieceAndStopsAtAFileThatWillNotLoad) {
    for (int i = 0; i < 6; ++i) writePng("i" + std::to_string(i) + ".png", quarteredSurface(64, 64));
    std::remove(scratchPath("i6.png").c_str());  // made by an earlier run
    ImageBank bank;
    bank.load(writeFile("images.xml", "<images><loop var=\"n\" from=\"0\" to=\"6\"><image name=\"i[n]\" filename=\"i[n].png\""
                                      " bitmaskThreshold=\"0.1\"/></loop><image name=\"z\" filename=\"i0.png\"/></images>"), "");
    TaskEvents callback;
    norvane::backgroundTasks.push_back(new ImageLoader(&bank, &callback));
    auto frames = [] {
        for (int frame = 0; !norvane::backgroundTasks.empty() && frame < 10000; ++frame) norvane::perform(SDL_GetTicks() + 1);
    };
    auto image = [&](const std::string& name) { return static_cast<SimpleImage*>(bank.find(name)); };
    for (int attempt = 0; attempt < 2; ++attempt)  // it stays at the broken image
        EXPECT_EQ(thrownBy(frames).rfind("Could not load \"" + scratchPath("i6.png") + "\": ", 0), 0u);
    EXPECT_TRUE(image("i5")->getTextureName() && !image("z")->getTextureName() && callback.events == "start ");
    writePng("i6.png", quarteredSurface(4, 4));
    frames();
    EXPECT_EQ(callback.events, "start finish ");
    for (const char* name : {"i0", "i3", "i6", "z"}) EXPECT_NE(image(name)->getTextureName(), 0u) << name;
    EXPECT_NE(image("i6")->getBitmask(), nullptr);
    bank.release();
}
