#include "audio/sources.h"

#include <AL/al.h>
#include <SDL/SDL.h>

#include <cmath>

#include "audio/resources.h"
#include "helpers.h"

using namespace norvane::audio;
using namespace testaudio;

namespace {

struct Watch : SoundHandler {
    void soundInit(Sound*) override { ++inits; }
    void soundStreamed(Sound*) override { ++streamed; }
    void soundDone(Sound*) override { ++done; }
    int inits = 0, streamed = 0, done = 0;
};

float gainOf(const Sound* sound) {
    float gain = -1.0f;
    alGetSourcef(sound->getSource()->name, AL_GAIN, &gain);
    return gain;
}

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

    CachedSample tone;
    SoundProperties looping;
};

}  // namespace

TEST(SoundProperties, StereoPositionKeepsTheDistance) {
    const float cases[][3] = {{-2, -1, 0}, {-1, -1, 0}, {-0.5f, -0.5f, 0.5f}, {0, 0, 1}, {0.25f, 0.25f, 0.75f},
                              {1, 1, 0},   {3, 1, 0}};
    for (const auto& c : cases) {
        SoundProperties p;
        p.setStereoPosition(c[0]);
        EXPECT_FLOAT_EQ(p.x, c[1]) << c[0];
        EXPECT_FLOAT_EQ(p.z, c[2]) << c[0];
    }
}

TEST_F(Pool, FullPoolCutsOffTheOldestLeastImportantSound) {
    SourcePool pool(2);
    Watch first, second, third, refused, equal, high;
    Source* oldest = pool.play(&tone, &looping, &first, 0)->getSource();
    pool.play(&tone, &looping, &second, 0);
    EXPECT_EQ(pool.play(&tone, &looping, &third, 0)->getSource(), oldest);
    EXPECT_EQ(first.done, 1);
    EXPECT_EQ(second.done, 0);

    pool.stopAll();
    EXPECT_TRUE(pool.sounds.empty() && pool.expired.empty());
    EXPECT_EQ(second.done + third.done, 2);
    first = second = Watch();
    oldest = pool.play(&tone, &looping, &first, 5)->getSource();
    pool.play(&tone, &looping, &second, 5);
    testing::internal::CaptureStdout();
    EXPECT_EQ(pool.play(&tone, &looping, &refused, 4), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "[norvane:audio] (info) No source availabie, what to do??\n");
    EXPECT_EQ(refused.inits, 0);
    EXPECT_EQ(pool.play(&tone, &looping, &equal, 5)->getSource(), oldest);
    EXPECT_EQ(pool.getSize(), 2);

    tone.priority = 7;
    EXPECT_EQ(pool.play(&tone, &looping, &high)->getSource()->priority, 7);  // the sample's priority
}

TEST_F(Pool, FreeSourcesComeFirstAndEndedSoundsKeepTheirKey) {
    SourcePool pool(2);
    Watch important, cheap, next;
    pool.play(&tone, nullptr, &important, 5);
    Source* cheapSource = pool.play(&tone, &looping, &cheap, 0)->getSource();  // free, though 0 < 5
    EXPECT_EQ(important.done, 0);
    performUntilDone(pool, important);
    ASSERT_EQ(important.done, 1);
    // The idle source still counts as priority 5: the playing priority-0 sound is cut off instead.
    EXPECT_EQ(pool.play(&tone, &looping, &next, 0)->getSource(), cheapSource);
    EXPECT_EQ(cheap.done, 1);
}

TEST_F(Pool, VolumesApplyToNewSoundsOrAtOnce) {
    SourcePool pool(2);
    SoundProperties loud = looping;
    loud.volume = 0.8f;
    Sound* before = pool.play(&tone, &loud);
    pool.setVolume(0.5f);
    Sound* after = pool.play(&tone, &loud);
    EXPECT_FLOAT_EQ(gainOf(before), 0.8f);
    EXPECT_FLOAT_EQ(gainOf(after), 0.4f);
    pool.setPlayingVolumes(0.25f);
    EXPECT_FLOAT_EQ(gainOf(before), 0.2f);
    EXPECT_FLOAT_EQ(gainOf(after), 0.2f);
}

TEST_F(Pool, BrokenSamplesNeitherCostASourceNorStopTheGame) {
    SourcePool pool(1);
    StreamedSample missing;
    missing.filename = "nowhere/x.ogg";
    try {
        pool.play(&missing);
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "Error loading file \"nowhere/x.ogg\": Could not open file \"nowhere/x.ogg\".");
    }
    Sample plain;
    EXPECT_THROW(pool.play(&plain), std::string);
    EXPECT_EQ(pool.getSize(), 1);

    std::string data = readFile(makeOgg("damaged.ogg", "3 whitenoise vol 0.3"));
    data[data.size() / 2] ^= 1;
    StreamedSample damaged;
    damaged.filename = writeFile("damaged.ogg", data);
    damaged.bufferSize = 16384;
    Watch watch;
    testing::internal::CaptureStdout();
    ASSERT_TRUE(pool.play(&damaged, nullptr, &watch));
    performUntilDone(pool, watch);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("(error) Could not decode Ogg stream: "), std::string::npos);
}

// What the wave writer recorded: a cached sound on the left, then a streamed one on the right.
TEST_F(Pool, SoundsReachTheOutputAtTheirLevelAndSide) {
    CachedSample left;
    left.filename = makeOgg("left.ogg", "0.4 sine 441 vol 0.8");
    left.load();
    StreamedSample right;
    right.filename = makeOgg("right.ogg", "52920s sine 882 vol 0.8");
    right.bufferSize = 16384;  // seven fills

    SourcePool pool(2);
    SoundProperties props;
    props.setStereoPosition(-1.0f);
    props.volume = 0.5f;
    Watch first, second;
    testing::internal::CaptureStdout();
    pool.play(&left, &props, &first);
    performUntilDone(pool, first);
    props.setStereoPosition(1.0f);
    props.volume = 1.0f;
    pool.setVolume(0.75f);
    pool.play(&right, &props, &second);
    performUntilDone(pool, second);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");  // no underrun
    const Recording rec = stopAndRead();

    const size_t start = rec.firstSound();
    EXPECT_NEAR(amplitude(rec.left, start + 2000, 13000), 0.4f, 0.02f);
    EXPECT_NEAR(frequency(rec.left, start + 2000, 13000), 441.0f, 5.0f);
    EXPECT_LT(amplitude(rec.right, start, 17000), 0.01f);
    size_t begin = start + 17640;
    while (begin < rec.right.size() && std::fabs(rec.right[begin]) < 0.01f) ++begin;
    for (size_t at = begin + 1000; at + 2000 < begin + 52920; at += 1000) {  // each buffer in turn
        ASSERT_NEAR(amplitude(rec.right, at, 1000), 0.6f, 0.03f) << at - begin;
    }
    EXPECT_NEAR(frequency(rec.right, begin + 1000, RATE), 882.0f, 5.0f);
    EXPECT_LT(amplitude(rec.left, begin, RATE), 0.01f);
    EXPECT_LT(amplitude(rec.right, begin + 52920 + 500, 2000), 0.01f);  // and then it ended
}
