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
        tone.filename = writeOgg("tone.ogg", sine(22050, 441, 0.5f));
        tone.load();
        blip.filename = writeOgg("blip.ogg", sine(2205, 441, 0.5f));
        blip.load();
        looping.loop = true;
    }

    // Frames of the game loop until `watch` has seen its sound deleted.
    static void performUntilDone(SourcePool& pool, const Watch& watch) {
        for (int i = 0; i < 500 && watch.done == 0; ++i) {
            pool.perform(10.0f);
            SDL_Delay(10);
        }
    }

    CachedSample tone, blip;
    SoundProperties looping;
};

}  // namespace

TEST(SoundProperties, StereoPositionKeepsTheDistance) {
    const float cases[][3] = {{-2, -1, 0},      {-1, -1, 0},      {-0.5f, -0.5f, 0.5f}, {0, 0, 1},
                              {0.25f, 0.25f, 0.75f}, {1, 1, 0}, {3, 1, 0}};
    for (const auto& c : cases) {
        SoundProperties p;
        p.y = 7;
        p.setStereoPosition(c[0]);
        EXPECT_FLOAT_EQ(p.x, c[1]) << c[0];
        EXPECT_FLOAT_EQ(p.z, c[2]) << c[0];
        EXPECT_FLOAT_EQ(p.y, 7);
    }
}

TEST_F(Pool, FullPoolCutsOffTheOldestLeastImportantSound) {
    SourcePool pool(2);
    EXPECT_EQ(pool.getSize(), 2);
    Watch a, b, c, d, e, refused;
    Sound* first = pool.play(&tone, &looping, &a, 0);
    pool.play(&tone, &looping, &b, 0);
    Source* oldest = first->getSource();
    Sound* third = pool.play(&tone, &looping, &c, 0);
    EXPECT_EQ(third->getSource(), oldest);
    EXPECT_EQ(a.inits, 1);
    EXPECT_EQ(a.done, 1);
    EXPECT_EQ(b.done, 0);
    EXPECT_EQ(pool.getSize(), 2);

    pool.stopAll();
    EXPECT_TRUE(pool.sounds.empty());
    EXPECT_TRUE(pool.expired.empty());
    EXPECT_EQ(b.done + c.done, 2);

    Sound* high1 = pool.play(&tone, &looping, &a, 5);
    Sound* high2 = pool.play(&tone, &looping, &b, 5);
    ASSERT_TRUE(high1 && high2);
    testing::internal::CaptureStdout();
    EXPECT_EQ(pool.play(&tone, &looping, &refused, 4), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[norvane:audio] (info) No source availabie, what to do??\n");
    EXPECT_EQ(refused.inits, 0);
    Sound* equal = pool.play(&tone, &looping, &d, 5);
    ASSERT_TRUE(equal);
    EXPECT_EQ(a.done, 2);  // high1 was the older
    EXPECT_EQ(b.done, 1);

    tone.priority = 7;
    SourcePool other(1);
    EXPECT_EQ(other.play(&tone, &looping, &e)->getSource()->priority, 7);  // the sample's own priority

    SourcePool none(0);
    testing::internal::CaptureStdout();
    EXPECT_EQ(none.play(&tone), nullptr);
    testing::internal::GetCapturedStdout();
}

TEST_F(Pool, FreeSourcesComeFirstAndEndedSoundsKeepTheirKey) {
    SourcePool pool(2);
    Watch important, cheap, next;
    pool.play(&blip, nullptr, &important, 5);
    Sound* playing = pool.play(&tone, &looping, &cheap, 0);  // a free source, though 0 < 5
    EXPECT_EQ(important.done, 0);
    Source* playingSource = playing->getSource();
    performUntilDone(pool, important);
    ASSERT_EQ(important.done, 1);

    // The idle source still counts as priority 5; the playing priority-0 one is cut off instead.
    Sound* newer = pool.play(&tone, &looping, &next, 0);
    EXPECT_EQ(newer->getSource(), playingSource);
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
    after->setVolume(0.4f);
    EXPECT_FLOAT_EQ(gainOf(after), 0.1f);
}

TEST_F(Pool, BrokenSamplesNeverCostASource) {
    SourcePool pool(2);
    StreamedSample missing;
    missing.filename = std::string(TEST_TMP_DIR) + "/nothing.ogg";
    Watch watch;
    try {
        pool.play(&missing, nullptr, &watch);
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "Error loading file \"" + missing.filename + "\": Could not open file \"" + missing.filename +
                            "\".");
    }
    EXPECT_EQ(watch.done, 1);
    Sample plain;
    EXPECT_THROW(pool.play(&plain), std::string);
    EXPECT_EQ(pool.getSize(), 2);
    EXPECT_TRUE(pool.sounds.empty());

    // A damaged page in the middle: the stream ends with a logged error, the game goes on.
    std::string data = readFile(writeOgg("damaged.ogg", noise(3 * RATE, 0.3f)));
    data[data.size() / 2] ^= 1;
    StreamedSample damaged;
    damaged.filename = writeFile("damaged.ogg", data);
    damaged.bufferSize = 16384;
    Watch streamed;
    testing::internal::CaptureStdout();
    ASSERT_TRUE(pool.play(&damaged, nullptr, &streamed));
    performUntilDone(pool, streamed);
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_EQ(streamed.done, 1);
    EXPECT_NE(log.find("(error) Could not decode Ogg stream: "), std::string::npos) << log;
}

// The wave writer records what the pool plays: level and side of a cached and a streamed sound.
TEST_F(Pool, SoundsReachTheOutputAtTheirLevelAndSide) {
    CachedSample left;
    left.filename = writeOgg("left.ogg", sine(RATE * 2 / 5, 441, 0.8f));
    left.load();
    StreamedSample right;
    right.filename = writeOgg("right.ogg", sine(RATE * 6 / 5, 882, 0.8f));
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
    EXPECT_GE(second.streamed, 1);
    const Recording rec = stopAndRead();

    const size_t start = rec.firstSound();
    ASSERT_LT(start, rec.left.size());
    EXPECT_NEAR(amplitude(rec.left, start + 2000, 13000), 0.4f, 0.02f);
    EXPECT_LT(amplitude(rec.right, start, 17000), 0.01f);
    EXPECT_NEAR(frequency(rec.left, start + 2000, 13000), 441.0f, 5.0f);

    size_t begin = start + 17640;
    while (begin < rec.right.size() && std::fabs(rec.right[begin]) < 0.01f) ++begin;
    ASSERT_LT(begin + RATE * 6 / 5, rec.right.size());
    for (size_t at = begin + 1000; at + 2000 < begin + RATE * 6 / 5; at += 1000) {  // every buffer played in turn
        ASSERT_NEAR(amplitude(rec.right, at, 1000), 0.6f, 0.03f) << (at - begin);
    }
    EXPECT_LT(amplitude(rec.left, begin, RATE), 0.01f);
    EXPECT_NEAR(frequency(rec.right, begin + 1000, RATE), 882.0f, 5.0f);
    EXPECT_LT(amplitude(rec.right, begin + RATE * 6 / 5 + 500, 2000), 0.01f);  // and then it ended
}
