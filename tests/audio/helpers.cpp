#include "helpers.h"

#include <cmath>
#include <cstdlib>
#include <cstring>

#include "audio/core.h"
#include "norvane.h"

namespace testaudio {

std::string makeOgg(const std::string& name, const std::string& synth, int channels) {
    const std::string path = scratchPath(name);
    const std::string command = "sox -V1 -r 44100 -c " + std::to_string(channels) + " -n '" + path + "' synth " + synth;
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
}

std::string damage(const std::string& path) {
    std::string data = readFile(path);
    data[data.size() / 2] ^= 1;
    std::ofstream(path, std::ios::binary) << data;
    return path;
}

size_t Recording::firstSound() const {
    size_t i = 0;
    while (i < left.size() && std::fabs(left[i]) + std::fabs(right[i]) < 0.01f) ++i;
    return i;
}

float amplitude(const std::vector<float>& channel, size_t from, size_t count) {
    if (from + count > channel.size()) return -1.0f;
    double sum = 0.0;
    for (size_t i = from; i < from + count; ++i) sum += channel[i] * channel[i];
    return static_cast<float>(std::sqrt(2.0 * sum / count));
}

float frequency(const std::vector<float>& channel, size_t from, size_t count) {
    if (from + count > channel.size()) return -1.0f;
    int crossings = 0;
    for (size_t i = from + 1; i < from + count; ++i) crossings += (channel[i - 1] < 0.0f) != (channel[i] < 0.0f);
    return crossings * static_cast<float>(RATE) / (2.0f * count);
}

void AudioTest::SetUp() {
    captured([] { norvane::init(0, false); });  // registers the log groups before the music thread reads them
    setenv("NORVANE_WAVE_FILE", scratchPath("output.wav").c_str(), 1);
    norvane::audio::init("", RATE);
}

void AudioTest::TearDown() { norvane::audio::cleanUp(); }

Recording AudioTest::stopAndRead() {
    norvane::audio::cleanUp();
    const std::string file = readFile(scratchPath("output.wav"));
    Recording rec;
    for (size_t pos = 12; pos + 8 <= file.size();) {  // RIFF chunks; ours is 16-bit stereo
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

}  // namespace testaudio
