#include "audio/sources.h"

#include <AL/al.h>
#include <SDL/SDL.h>

#include "audio/resources.h"
#include "helpers.h"

using namespace norvane::audio;
using namespace testaudio;

namespace {

struct Watch : SoundHandler {
    void soundInit(Sound*) override { ++inits; }
    void soundDone(Sound*) override { ++done; }
    int inits = 0, done = 0;
};

class Pool : public AudioTest {
protected:
    void SetUp() override {
        AudioTest::SetUp();
        tone.filename = makeOgg("tone.ogg", "0.5 sine 441");
        tone.load();
        looping.loop = true;
    }
    // The game's frame loop, until `watch` has seen its sound deleted.
    static void performUntilDone(SourcePool& pool, const Watch& watch) {
        for (int i = 0; i < 500 && watch.done == 0; ++i) {
            pool.perform(10.0f);
            SDL_Delay(10);
        }
    }
    Source* play(SourcePool& pool, Watch* watch, int priority) {
        Sound* sound = pool.play(&tone, &looping, watch, priority);
        return sound ? sound->getSource() : nullptr;
    }

    CachedSample tone;
    SoundProperties looping;
};

}  // namespace

TEST(SoundProperties, StereoPositionKeepsTheDistance) {
    const float cases[][3] = {{-2, -1, 0}, {-0.5f, -0.5f, 0.5f}, {0, 0, 1}, {0.25f, 0.25f, 0.75f}, {3, 1, 0}};
    for (const auto& c : cases) {
        SoundProperties p;
        p.setStereoPosition(c[0]);
        EXPECT_TRUE(p.x == c[1] && p.z == c[2]) << c[0];
    }
}

TEST_F(Pool, FullPoolCutsOffTheOldestLeastImportantSoundAndBrokenStreamsLeaveItWhole) {
    SourcePool pool(2);
    Watch first, second, third, refused, equal;
    Source* oldest = play(pool, &first, 0);
    play(pool, &second, 0);
    EXPECT_EQ(play(pool, &third, 0), oldest);
    EXPECT_EQ(first.done, 1);
    pool.stopAll();
    EXPECT_TRUE(pool.sounds.empty() && pool.expired.empty() && second.done + third.done == 2);
    oldest = play(pool, &first, 5);
    play(pool, &second, 5);
    EXPECT_EQ(captured([&] { EXPECT_EQ(play(pool, &refused, 4), nullptr); }),
              "[norvane:audio] (info) No source availabie, what to do??\n");
    EXPECT_EQ(refused.inits, 0);
    EXPECT_EQ(play(pool, &equal, 5), oldest);
    EXPECT_EQ(pool.getSize(), 2);
    pool.setPlayingVolumes(0.5f);  // playing sounds too, at their own volume times the pool's
    float gain = 0.0f;
    alGetSourcef(oldest->name, AL_GAIN, &gain);
    EXPECT_FLOAT_EQ(gain, 0.5f);
    tone.priority = 7;
    EXPECT_EQ(pool.play(&tone, &looping)->getSource()->priority, 7);  // the sample's priority

    // Free sources come first; an ended sound's source keeps its priority until reused.
    SourcePool fresh(2);
    Watch important, cheap, next;
    fresh.play(&tone, nullptr, &important, 5);
    Source* cheapSource = play(fresh, &cheap, 0);  // free, though 0 < 5
    performUntilDone(fresh, important);
    ASSERT_EQ(important.done, 1);
    EXPECT_EQ(play(fresh, &next, 0), cheapSource);  // the idle source still counts as priority 5
    EXPECT_EQ(cheap.done, 1);

    // A streamed sound cut off by a newer one must not stop its successor when it goes; samples
    // that cannot play cost no source, and one that breaks while playing ends with a log line.
    SourcePool single(1);
    StreamedSample stream, missing, damaged;
    stream.filename = tone.filename;
    single.play(&stream, &looping);
    Sound* successor = single.play(&tone, &looping, nullptr, 0);
    single.perform(10.0f);
    ALint state = 0;
    alGetSourcei(successor->getSource()->name, AL_SOURCE_STATE, &state);
    EXPECT_EQ(state, AL_PLAYING);
    missing.filename = "nowhere/x.ogg";
    EXPECT_EQ(thrownBy([&] { single.play(&missing); }),
              "Error loading file \"nowhere/x.ogg\": Could not open file \"nowhere/x.ogg\".");
    Sample plain;
    EXPECT_THROW(single.play(&plain), std::string);
    EXPECT_EQ(single.getSize(), 1);
    damaged.filename = damage(makeOgg("damaged.ogg", "3 whitenoise vol 0.3"));
    damaged.bufferSize = 16384;
    Watch watch;
    EXPECT_NE(captured([&] {
                  ASSERT_TRUE(single.play(&damaged, nullptr, &watch));
                  performUntilDone(single, watch);
              }).find("(error) Could not decode Ogg stream: "),
              std::string::npos);
}

// What the wave writer recorded: a cached sound on the left and a longer streamed one on the right,
// each at its volume times the pool's.
TEST_F(Pool, SoundsReachTheOutputAtTheirLevelAndSide) {
    StreamedSample right;
    right.filename = makeOgg("right.ogg", "52920s sine 882 vol 0.8");
    right.bufferSize = 16384;  // seven fills
    SourcePool pool(2);
    SoundProperties l, r;
    l.setStereoPosition(-1.0f);
    l.volume = 0.5f;
    r.setStereoPosition(1.0f);
    pool.setVolume(0.75f);
    Watch watch;
    EXPECT_EQ(captured([&] {  // no underrun
                  pool.play(&tone, &l);
                  pool.play(&right, &r, &watch);
                  performUntilDone(pool, watch);
              }),
              "");
    const Recording rec = stopAndRead();
    const size_t start = rec.firstSound();
    EXPECT_NEAR(amplitude(rec.left, start + 2000, 17000), 0.375f, 0.02f);
    EXPECT_NEAR(frequency(rec.left, start + 2000, 17000), 441.0f, 5.0f);
    EXPECT_LT(amplitude(rec.left, start + 23000, 20000), 0.01f);  // and then it ended
    for (size_t at = start + 1000; at + 2000 < start + 52920; at += 1000) {  // each buffer in turn
        ASSERT_NEAR(amplitude(rec.right, at, 1000), 0.6f, 0.03f) << at - start;
    }
    EXPECT_NEAR(frequency(rec.right, start + 1000, RATE), 882.0f, 5.0f);
    EXPECT_LT(amplitude(rec.right, start + 52920 + 1500, 2000), 0.01f);
}
