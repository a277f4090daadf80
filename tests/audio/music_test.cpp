#include "audio/music.h"

#include <AL/al.h>
#include <SDL/SDL.h>

#include <memory>
#include <vector>

#include "audio/resources.h"
#include "helpers.h"

using namespace norvane::audio;
using namespace testaudio;

namespace {

using Queue = std::vector<StreamedSample*>;

// Reads what the music thread may be changing under the manager's own mutex.
struct WatchedMusic : MusicManager {
    template <typename Read>
    auto locked(Read read) {
        SDL_mutexP(mutex);
        const auto value = read();
        SDL_mutexV(mutex);
        return value;
    }
    Queue queued() { return locked([&] { return Queue(queue.begin(), queue.end()); }); }
    StreamedSample* playing() { return locked([&] { return currentStream ? currentStream->sample : nullptr; }); }
    float gain() {
        float value = -1.0f;
        alGetSourcef(source, AL_GAIN, &value);
        return value;
    }
    bool sounds() {
        ALint state = 0;
        alGetSourcei(source, AL_SOURCE_STATE, &state);
        return state == AL_PLAYING;
    }
};

class Music : public AudioTest {
protected:
    StreamedSample* piece(const std::string& name, const std::string& synth, bool loop, long bufferSize = 16384) {
        samples.emplace_back(new StreamedSample());
        samples.back()->filename = makeOgg(name, synth);
        samples.back()->properties.loop = loop;
        samples.back()->bufferSize = bufferSize;
        return samples.back().get();
    }
    std::vector<std::unique_ptr<StreamedSample>> samples;
};

}  // namespace

// An intro, a piece of one and a half buffers (32768 frames each), then a loop: the wave writer
// shows each in turn, once, with no gap between them, and the loop repeating.
TEST_F(Music, PiecesFollowEachOtherWithoutAGap) {
    const size_t intro = 49100, middle = 49140, loop = 26450;  // whole periods of 441, 630, 882 Hz
    std::unique_ptr<WatchedMusic> music(new WatchedMusic());
    music->addAsLast(piece("intro.ogg", "49100s sine 441 vol 0.5", false, 65536));
    music->addAsLast(piece("middle.ogg", "49140s sine 630 vol 0.5", false, 65536));
    music->addAsLast(piece("loop.ogg", "26450s sine 882 vol 0.5", true, 65536));
    EXPECT_EQ(captured([&] {
                  music->play();
                  SDL_Delay(5000);  // the loop four times over
                  music.reset();
              }),
              "");
    const Recording rec = stopAndRead();
    const size_t start = rec.firstSound(), loopStart = start + intro + middle;
    const float level = amplitude(rec.left, start + 1000, 10000);
    EXPECT_GT(level, 0.1f);
    for (size_t at = start; at + 1000 < loopStart + 4 * loop; at += 1000) {  // no gap, and centred
        for (const auto* ch : {&rec.left, &rec.right}) ASSERT_NEAR(amplitude(*ch, at, 1000), level, level / 10) << at;
    }
    const std::pair<size_t, float> expected[] = {{start + 500, 441},         {start + intro - 2500, 441},
                                                 {start + intro + 500, 630}, {loopStart - 2500, 630},
                                                 {loopStart + 500, 882},     {loopStart + 3 * loop + 500, 882}};
    for (const auto& e : expected) EXPECT_NEAR(frequency(rec.left, e.first, 2000), e.second, 12.0f) << e.first - start;
}

TEST_F(Music, QueueOperationsAndFadeOutAndBrokenPiecesNeverStopTheThread) {
    WatchedMusic music;
    StreamedSample *a = piece("a.ogg", "0.5 sine 441", true), *b = piece("b.ogg", "0.1 sine 630", true),
                   *c = piece("c.ogg", "0.1 sine 882", true);
    music.play();
    EXPECT_FALSE(music.isPlaying());  // nothing queued
    for (StreamedSample* s : {b, c}) music.addAsLast(s);
    music.addAsNext(a);
    EXPECT_EQ(music.queued(), (Queue{a, b, c}));
    music.skipToLast();
    EXPECT_TRUE(music.playing() == c && music.queued().empty());
    SDL_Delay(300);
    EXPECT_TRUE(music.sounds());  // the thread keeps the loop going
    music.skipToNext();           // nothing behind it
    EXPECT_FALSE(music.isPlaying() || music.playing());
    music.setVolume(0.8f);
    for (StreamedSample* s : {b, a}) music.addAsLast(s);
    music.play();
    music.play();  // while playing: stops first, then starts the next piece
    EXPECT_EQ(music.playing(), a);
    EXPECT_FLOAT_EQ(music.gain(), 0.8f);
    music.setCurrentVolume(0.6f);  // at once, and the fade starts from it
    EXPECT_FLOAT_EQ(music.gain(), 0.6f);
    music.fadeOut(2000);
    SDL_Delay(450);
    EXPECT_TRUE(music.gain() < 0.45f && music.gain() > 0.0f && music.isPlaying());
    for (int i = 0; i < 30 && music.isPlaying(); ++i) SDL_Delay(100);
    EXPECT_FALSE(music.isPlaying() || music.sounds());
    music.addAsLast(a);
    music.play();  // the next piece starts at the volume, and the finished fade does not come back
    SDL_Delay(300);
    EXPECT_FLOAT_EQ(music.gain(), 0.8f);
    music.stop();
    EXPECT_FALSE(music.isPlaying());

    // A piece that cannot be opened throws; one that breaks while the thread streams it is logged
    // and ends, and the thread goes on with the next.
    StreamedSample missing;
    missing.filename = "nowhere/missing.ogg";
    music.addAsLast(&missing);
    EXPECT_EQ(thrownBy([&] { music.play(); }),
              "Error streaming music \"nowhere/missing.ogg\": Could not open file \"nowhere/missing.ogg\".");
    StreamedSample* damaged = piece("damaged.ogg", "3 whitenoise vol 0.3", true, 8192);
    damage(damaged->filename);
    StreamedSample* good = piece("good.ogg", "0.1 sine 441", true);
    const std::string log = captured([&] {
        for (StreamedSample* s : {damaged, good}) music.addAsLast(s);
        music.play();
        for (int i = 0; i < 40 && music.playing() != good; ++i) SDL_Delay(100);
        SDL_Delay(800);  // four times the two buffers' length
    });
    EXPECT_NE(log.find("(error) Could not decode Ogg stream: "), std::string::npos) << log;
    EXPECT_TRUE(music.playing() == good && music.sounds());
}
