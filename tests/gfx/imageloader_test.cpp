#include "gfx/imageloader.h"

#include <gtest/gtest.h>

#include "gfx/imagebank.h"
#include "gfx/simpleimage.h"
#include "image_files.h"
#include "norvane.h"
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

class Callback : public norvane::BackgroundTaskCallback {
public:
    void onStart(norvane::BackgroundTask*) override { events += "start "; }
    void onFinish(norvane::BackgroundTask*) override { events += "finish "; }
    std::string events;
};

}  // namespace

TEST(ImageLoader, StartsEachImageBeforeTheDeadlineAndCountsToTheEnd) {
    ASSERT_EQ(SDL_Init(SDL_INIT_TIMER), 0);
    std::vector<Start> starts;
    ImageBank bank;
    for (char c = 'a'; c <= 'l'; ++c) bank.add(std::string(1, c), new SlowImage(&starts));
    Callback callback;
    ImageLoader loader(&bank, &callback);
    EXPECT_EQ(callback.events, "start ");
    EXPECT_EQ(loader.getProgressRelative(), 0.0);

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
        // the first ended before the deadline, so the overrun is at most the last image started.
        for (size_t i = before + 1; i < starts.size(); ++i) {
            EXPECT_LT(starts[i - 1].endTicks, deadline) << starts[i].name;
        }
        // And the call gives up only once the deadline has passed.
        if (!loader.isFinished()) {
            EXPECT_GE(SDL_GetTicks(), deadline);
        }
        EXPECT_GE(loader.getProgressRelative(), progress);
        progress = loader.getProgressRelative();
        unsigned int done, total;
        loader.getProgress(&done, &total);
        EXPECT_EQ(done, starts.size());
        EXPECT_EQ(total, 12u);
    }
    EXPECT_EQ(progress, 1.0);
    EXPECT_GT(calls, 1);  // 36 ms of work never fits a 7 ms budget
    EXPECT_EQ(callback.events, "start finish ");
    std::string order;
    for (const Start& start : starts) order += start.name;
    EXPECT_EQ(order, "abcdefghijkl!");  // name order; only the last is marked last

    loader.perform(SDL_GetTicks() + 100);  // finished: nothing more happens
    EXPECT_EQ(callback.events, "start finish ");
    SDL_Quit();
}

TEST(ImageLoader, EmptyBankFinishesOnItsFirstCall) {
    ImageBank bank;
    Callback callback;
    ImageLoader loader(&bank, &callback);
    loader.perform(0);
    EXPECT_TRUE(loader.isFinished());
    EXPECT_EQ(callback.events, "start finish ");
}

// The real thing: the framework drives the loader between frames until the bank is on the card.
TEST_F(WindowTest, FrameworkLoadsABankPieceByPiece) {
    for (int i = 0; i < 6; ++i) writePngFile("loader/i" + std::to_string(i) + ".png", quarteredSurface(64, 64).get());
    ImageBank bank;
    bank.load(writeFile("loader/images.xml",
                        "<images><loop var=\"n\" from=\"0\" to=\"5\">"
                        "<image name=\"i[n]\" filename=\"i[n].png\" bitmaskThreshold=\"0.1\"/>"
                        "</loop></images>"),
              "");
    ASSERT_EQ(bank.size(), 6);
    Callback callback;
    auto* loader = new ImageLoader(&bank, &callback);
    norvane::backgroundTasks.push_back(loader);
    int frames = 0;
    while (!norvane::backgroundTasks.empty()) {
        ASSERT_LT(++frames, 10000);
        norvane::perform(SDL_GetTicks() + 1);
    }
    EXPECT_EQ(callback.events, "start finish ");
    for (int i = 0; i < 6; ++i) {
        const auto* image = static_cast<norvane::gfx::SimpleImage*>(bank.find("i" + std::to_string(i)));
        EXPECT_NE(image->getTextureName(), 0u);
        EXPECT_NE(image->getBitmask(), nullptr);
    }
    bank.release();
}
