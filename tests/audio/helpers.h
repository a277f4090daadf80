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

// Peak amplitude of a sine from its RMS over [from, from + count).
inline float amplitude(const std::vector<float>& channel, size_t from, size_t count) {
    if (from + count > channel.size()) return -1.0f;
    double sum = 0.0;
    for (size_t i = from; i < from + count; ++i) sum += channel[i] * channel[i];
    return static_cast<float>(std::sqrt(2.0 * sum / count));
}

// From the zero crossings over [from, from + count).
inline float frequency(const std::vector<float>& channel, size_t from, size_t count) {
    if (from + count > channel.size()) return -1.0f;
    int crossings = 0;
    for (size_t i = from + 1; i < from + count; ++i) crossings += (channel[i - 1] < 0.0f) != (channel[i] < 0.0f);
    return crossings * static_cast<float>(RATE) / (2.0f * count);
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

    // Closes the device, which completes the file, and reads its 16-bit stereo data chunk.
    Recording stopAndRead() {
        norvane::audio::cleanUp();
        const std::string file = readFile(scratchPath("output.wav"));
        Recording rec;
        for (size_t pos = 12; pos + 8 <= file.size();) {
            uint32_t size = 0;
            std::memcpy(&size, file.data() + pos + 4, 4);
            if (file.compare(pos, 4, "data") == 0) {
                const size_t frames = std::min<size_t>(size, file.size() - pos - 8) / 4;
                const int16_t* samples = reinterpret_cast<const int16_t*>(file.data() + pos + 8);
                for (size_t i = 0; i < frames; ++i) {
                    rec.left.push_back(samples[2 * i] / 32768.0f);
                    rec.right.push_back(samples[2 * i + 1] / 32768.0f);
                }
                break;
            }
            pos += 8 + size;
        }
        return rec;
    }
};

}  // namespace testaudio

#endif
