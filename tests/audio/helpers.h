#ifndef TESTS_AUDIO_HELPERS_H
#define TESTS_AUDIO_HELPERS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace testaudio {

const int RATE = 44100;

// A sine of whole periods where possible, as 16-bit samples; stereo duplicates the channel.
std::vector<int16_t> sine(int frames, float hz, float amplitude, int channels = 1);
// Deterministic white noise: compresses badly, so the file has many pages after its headers.
std::vector<int16_t> noise(int frames, float amplitude);
// Encodes with oggenc into TEST_TMP_DIR; returns the path.
std::string writeOgg(const std::string& name, const std::vector<int16_t>& pcm, int channels = 1);
std::string writeFile(const std::string& name, const std::string& content);
std::string readFile(const std::string& path);

// What OpenAL Soft's wave writer produced, as floats -1..1.
struct Recording {
    std::vector<float> left, right;
    size_t firstSound() const;  // first frame above the noise floor
};
Recording readRecording(const std::string& path);
// Peak amplitude of a sine from its RMS over [from, from + count).
float amplitude(const std::vector<float>& channel, size_t from, size_t count);
// Zero crossings per second over [from, from + count), twice the frequency.
float frequency(const std::vector<float>& channel, size_t from, size_t count);

// Starts audio on the wave writer with a file of the test's own name.
class AudioTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    Recording stopAndRead();  // closes the device, so the file is complete

    std::string waveFile;
};

}  // namespace testaudio

#endif
