#include "gfx/imageloader.h"

#include <gtest/gtest.h>

#include <cstdio>

#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "image_files.h"
#include "norvane.h"
#include "support/tasks.h"
#include "support/window.h"

using norvane::gfx::ImageBank;
using norvane::gfx::ImageLoader;

namespace {

struct Start {
    std::string name;
    unsigned int endTicks;  // SDL's clock when the image was done
};

// Takes a few milliseconds to "load" and notes itself in `starts`.
class SlowImage : public norvane::gfx::ImageResource {
public:
    explicit SlowImage(std::vector<Start>* starts) : starts(starts) {}
    void load(bool, bool) override {}
    void refresh(bool last) override {
        SDL_Delay(3);
        starts->push_back({name + (last ? "!" : ""), SDL_GetTicks()});
    }
    void setFilter(norvane::gfx::ImageFilter) override {}
    void draw(const norvane::basic_Vector2D<float>&, norvane::BlendMode) const override {}
    void draw(const norvane::basic_Rect<float>&, norvane::BlendMode) const override {}
    void drawStretched(const norvane::basic_Rect<float>&, norvane::BlendMode) const override {}

private:
    std::vector<Start>* starts;
};


}  // namespace

TEST(ImageLoader, StartsEachImageBeforeTheDeadlineAndCountsToTheEnd) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    std::vector<Start> starts;
    ImageBank bank;
    for (char c = 'a'; c <= 'l'; ++c) bank.add(std::string(1, c), new SlowImage(&starts));
    TaskEvents callback;
    ImageLoader loader(&bank, &callback);
    EXPECT_EQ(callback.events, "start ");
    loader.perform(SDL_GetTicks());  // no time at all: nothing starts
    EXPECT_TRUE(starts.empty());
    double progress = 0.0;
    int calls = 0;
    while (!loader.isFinished()) {
        ASSERT_LT(++calls, 1000);
        const size_t before = starts.size();
        const unsigned int deadline = SDL_GetTicks() + 7;
        loader.perform(deadline);
        // The clock is read before each image: an image follows another in the same call only if
        // the first ended before the deadline, and a call gives up only once the deadline has passed.
        for (size_t i = before + 1; i < starts.size(); ++i) EXPECT_LT(starts[i - 1].endTicks, deadline);
        EXPECT_TRUE(loader.isFinished() || SDL_GetTicks() >= deadline);
        EXPECT_GE(loader.getProgressRelative(), progress);
        progress = loader.getProgressRelative();
        unsigned int done, total;
        loader.getProgress(&done, &total);
        EXPECT_EQ(done, starts.size());
        EXPECT_EQ(total, 12u);
    }
    EXPECT_EQ(progress, 1.0);
    EXPECT_GT(calls, 1);  // 36 ms of work never fits a 7 ms budget
    std::string order;
    for (const Start& start : starts) order += start.name;
    EXPECT_EQ(order, "abcdefghijkl!");  // name order; only the last is marked last
    loader.perform(SDL_GetTicks() + 100);  // finished: nothing more happens
    EXPECT_EQ(callback.events, "start finish ");
    ImageBank empty;
    ImageLoader none(&empty, &callback);
    none.perform(0);  // an empty bank finishes on its first call
    EXPECT_EQ(callback.events, "start finish start finish ");
    SDL_Quit();
}

// The real thing: the framework drives the loader between frames until the bank is on the card.
// The game's start-up reports a missing picture and ends, so the loader must not swallow it.
TEST_F(WindowTest, FrameworkLoadsABankPieceByPieceAndStopsAtAFileThatWillNotLoad) {
    for (int i = 0; i < 6; ++i) writePng("i" + std::to_string(i) + ".png", quarteredSurface(64, 64));
    std::remove(scratchPath("i6.png").c_str());  // made by an earlier run
    ImageBank bank;
    bank.load(writeFile("images.xml", "<images><loop var=\"n\" from=\"0\" to=\"6\">"
                                      "<image name=\"i[n]\" filename=\"i[n].png\" bitmaskThreshold=\"0.1\"/>"
                                      "</loop><image name=\"z\" filename=\"i0.png\"/></images>"),
              "");
    ASSERT_EQ(bank.size(), 8);  // i6.png does not exist
    TaskEvents callback;
    norvane::backgroundTasks.push_back(new ImageLoader(&bank, &callback));
    auto frames = [] {
        for (int frame = 0; !norvane::backgroundTasks.empty() && frame < 10000; ++frame) {
            norvane::perform(SDL_GetTicks() + 1);
        }
    };
    for (int attempt = 0; attempt < 2; ++attempt) {  // it stays at the broken image
        EXPECT_EQ(thrownBy(frames).rfind("Could not load \"" + scratchPath("i6.png") + "\": ", 0), 0u);
    }
    auto texture = [&](const std::string& name) {
        return static_cast<norvane::gfx::SimpleImage*>(bank.find(name))->getTextureName();
    };
    EXPECT_TRUE(texture("i5") && !texture("z"));
    EXPECT_EQ(callback.events, "start ");
    writePng("i6.png", quarteredSurface(4, 4));
    frames();
    EXPECT_EQ(callback.events, "start finish ");
    for (int i = 0; i < 7; ++i) {
        const auto* image = static_cast<norvane::gfx::SimpleImage*>(bank.find("i" + std::to_string(i)));
        EXPECT_NE(image->getTextureName(), 0u);
        EXPECT_NE(image->getBitmask(), nullptr);
    }
    EXPECT_NE(texture("z"), 0u);
    bank.release();
}
