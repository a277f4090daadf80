#ifndef TESTS_AUDIO_HELPERS_H
#define TESTS_AUDIO_HELPERS_H

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "audio/core.h"
#include "norvane.h"
#include "support/files.h"

namespace testaudio {

const int RATE = 44100;

// An Ogg Vorbis file made by sox from a synth description such as "4410s sine 441 vol 0.5".
inline std::string makeOgg(const std::string& name, const std::string& synth, int channels = 1) {
    const std::string path = scratchPath(name);
    const std::string command = "sox -V1 -r 44100 -c " + std::to_string(channels) + " -n '" + path + "' synth " + synth;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
}

// The file with one bit flipped half way: a page checksum fails.
inline std::string damage(const std::string& path) {
    std::string data = readFile(path);
    data[data.size() / 2] ^= 1;
    std::ofstream(path, std::ios::binary) << data;
    return path;
}

// Peak amplitude of a sine from its RMS over [from, from + count), or its frequency from the zero
// crossings; -1 past the end.
inline float amplitude(const std::vector<float>& ch, size_t from, size_t count) {
    double sum = 0.0;
    for (size_t i = from; i < from + count && from + count <= ch.size(); ++i) sum += ch[i] * ch[i];
    return from + count > ch.size() ? -1.0f : static_cast<float>(std::sqrt(2.0 * sum / count));
}
inline float frequency(const std::vector<float>& ch, size_t from, size_t count) {
    int crossings = 0;
    for (size_t i = from + 1; i < from + count && from + count <= ch.size(); ++i) crossings += (ch[i - 1] < 0) != (ch[i] < 0);
    return from + count > ch.size() ? -1.0f : crossings * static_cast<float>(RATE) / (2.0f * count);
}

// What OpenAL Soft's wave writer wrote, -1..1 per channel.
struct Recording {
    std::vector<float> left, right;
    size_t firstSound() const {
        size_t i = 0;
        while (i < left.size() && std::fabs(left[i]) + std::fabs(right[i]) < 0.01f) ++i;
        return i;
    }
};

// Audio on the wave writer, into a file of the test's own.
class AudioTest : public ::testing::Test {
protected:
    void SetUp() override {
        captured([] { norvane::init(0, false); });  // registers the log groups before the music thread reads them
        setenv("NORVANE_WAVE_FILE", scratchPath("output.wav").c_str(), 1);
        norvane::audio::init("", RATE);
    }
    void TearDown() override { norvane::audio::cleanUp(); }

    // Closing the device completes the file; its data chunk is 16-bit stereo.
    Recording stopAndRead() {
        norvane::audio::cleanUp();
        const std::string file = readFile(scratchPath("output.wav"));
        const size_t at = file.find("data", 12);
        Recording rec;
        for (size_t i = at + 8; at != std::string::npos && i + 4 <= file.size(); i += 4) {
            int16_t frame[2];
            std::memcpy(frame, file.data() + i, 4);
            rec.left.push_back(frame[0] / 32768.0f);
            rec.right.push_back(frame[1] / 32768.0f);
        }
        return rec;
    }
};

}  // namespace testaudio

#endif
