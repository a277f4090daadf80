#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <string>

#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "events.h"

using namespace norvane;

namespace {

// Real key presses from xdotool into a real window on the test display.
class Keyboard : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(std::getenv("DISPLAY"), nullptr) << "run the tests under xvfb-run";
        unsetenv("SDL_VIDEODRIVER");  // the folder's dummy driver has no keyboard
        // An Xvfb started without -noreset refuses connections while it resets after its last client.
        for (int attempt = 0; attempt < 50 && SDL_Init(SDL_INIT_VIDEO) != 0; ++attempt) SDL_Delay(100);
        ASSERT_TRUE(SDL_WasInit(SDL_INIT_VIDEO)) << SDL_GetError();
        ASSERT_TRUE(SDL_SetVideoMode(160, 120, 0, 0)) << SDL_GetError();
        caption = "norvane keyboard " + std::to_string(getpid());
        SDL_WM_SetCaption(caption.c_str(), nullptr);
    }
    void TearDown() override { SDL_Quit(); }

    void xdotool(const std::string& arguments) {
        const std::string command = "xdotool " + arguments;
        ASSERT_EQ(std::system(command.c_str()), 0) << command;
    }

    // Frames until `done` holds, reading events as the loop does; a generous bound, not a timing check.
    template <typename Done>
    bool pumpUntil(Done done) {
        for (int frame = 0; frame < 1000; ++frame) {
            q.readEvents();
            if (done()) return true;
            SDL_Delay(10);
        }
        return false;
    }

    std::string caption;
    ControlQueue q;
};

}  // namespace

TEST_F(Keyboard, FocusChangesAndRealKeysReachTheirTriggers) {
    InputEvaluator evaluator;
    Trigger* fire = new Trigger(&evaluator, 204, "fire", "", ksPressed);
    new KeyTranslator(fire, SDLK_a, ksDefault, 1.0f);
    Trigger* pause = new Trigger(&evaluator, 101, "pause", "", ksDown);
    new KeyTranslator(pause, SDLK_p, ksDefault, 1.0f);
    Trigger focusLost(nullptr, 1, "lost", "", ksDown);
    Trigger focusGained(nullptr, 2, "gained", "", ksDown);
    q.push(&evaluator);
    q.focusLostTrigger = &focusLost;
    q.focusGainedTrigger = &focusGained;
    std::vector<Trigger*> fired;
    auto firedSomething = [&] {
        for (Trigger* t : drain(q)) fired.push_back(t);
        return !fired.empty();
    };

    // SDL starts out believing it has the focus, so the first focusing reports nothing; moving the
    // focus to the root window and back shows both focus triggers.
    const std::string window = "search --sync --name '^" + caption + "$'";
    xdotool(window + " windowfocus --sync");
    q.readEvents();
    drain(q);
    xdotool("search --maxdepth 0 --name '' windowfocus --sync");
    ASSERT_TRUE(pumpUntil(firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{&focusLost}));
    fired.clear();
    xdotool(window + " windowfocus --sync");
    ASSERT_TRUE(pumpUntil(firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{&focusGained}));

    xdotool("key p");
    fired.clear();
    ASSERT_TRUE(pumpUntil(firedSomething));
    EXPECT_EQ(fired, (std::vector<Trigger*>{pause}));

    xdotool("keydown a");
    ASSERT_TRUE(pumpUntil([&] { return fire->isActive(); }));
    EXPECT_TRUE(q.isEmpty());  // the press itself queues nothing
    for (int frame = 0; frame < 5; ++frame) {
        q.readEvents();
        q.perform(16);
        EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire})) << "frame " << frame;
    }

    xdotool("keyup a");
    ASSERT_TRUE(pumpUntil([&] { return !fire->isActive(); }));
    EXPECT_EQ(drain(q), (std::vector<Trigger*>{fire}));  // the release, once
    q.perform(16);
    EXPECT_TRUE(q.isEmpty());
}
