#ifndef TESTS_AUDIO_HELPERS_H
#define TESTS_AUDIO_HELPERS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/files.h"

namespace testaudio {

const int RATE = 44100;

// An Ogg Vorbis file made by sox from a synth description such as "4410s sine 441 vol 0.5".
std::string makeOgg(const std::string& name, const std::string& synth, int channels = 1);
// The file with one bit flipped half way: a page checksum fails.
std::string damage(const std::string& path);

// What OpenAL Soft's wave writer wrote, -1..1 per channel.
struct Recording {
    std::vector<float> left, right;
    size_t firstSound() const;
};
// Peak amplitude of a sine from its RMS over [from, from + count).
float amplitude(const std::vector<float>& channel, size_t from, size_t count);
// From the zero crossings over [from, from + count).
float frequency(const std::vector<float>& channel, size_t from, size_t count);

// Audio on the wave writer, into a file of the test's own.
class AudioTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    Recording stopAndRead();  // closes the device, which completes the file
};

}  // namespace testaudio

#endif
