#include "helpers.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

#include "audio/core.h"
#include "files/sysdirs.h"
#include "norvane.h"

namespace testaudio {

namespace {

void put32(std::string& out, uint32_t v) { out.append(reinterpret_cast<const char*>(&v), 4); }
void put16(std::string& out, uint16_t v) { out.append(reinterpret_cast<const char*>(&v), 2); }

// Each test has a folder of its own: ctest runs them side by side.
std::string testDir() {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    const std::string dir = std::string(TEST_TMP_DIR) + "/audio/" + info->test_suite_name() + "." + info->name() + "/";
    norvane::mkdirs(dir);
    return dir;
}

std::string tmpPath(const std::string& name) { return testDir() + name; }

}  // namespace

std::vector<int16_t> sine(int frames, float hz, float amplitude, int channels) {
    std::vector<int16_t> pcm;
    pcm.reserve(static_cast<size_t>(frames * channels));
    for (int i = 0; i < frames; ++i) {
        const double v = amplitude * 32767.0 * std::sin(2.0 * M_PI * hz * i / RATE);
        for (int c = 0; c < channels; ++c) pcm.push_back(static_cast<int16_t>(std::lround(v)));
    }
    return pcm;
}

std::vector<int16_t> noise(int frames, float amplitude) {
    std::vector<int16_t> pcm(static_cast<size_t>(frames));
    uint32_t state = 12345;
    for (int16_t& v : pcm) {
        state = state * 1664525u + 1013904223u;
        v = static_cast<int16_t>(amplitude * static_cast<int16_t>(state >> 16));
    }
    return pcm;
}

std::string writeFile(const std::string& name, const std::string& content) {
    const std::string path = tmpPath(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

std::string writeOgg(const std::string& name, const std::vector<int16_t>& pcm, int channels) {
    const uint32_t bytes = static_cast<uint32_t>(pcm.size() * 2);
    std::string wav = "RIFF";
    put32(wav, 36 + bytes);
    wav += "WAVEfmt ";
    put32(wav, 16);
    put16(wav, 1);
    put16(wav, static_cast<uint16_t>(channels));
    put32(wav, RATE);
    put32(wav, RATE * 2 * channels);
    put16(wav, static_cast<uint16_t>(2 * channels));
    put16(wav, 16);
    wav += "data";
    put32(wav, bytes);
    wav.append(reinterpret_cast<const char*>(pcm.data()), bytes);
    const std::string wavPath = writeFile(name + ".wav", wav);
    const std::string oggPath = tmpPath(name);
    const std::string command = "oggenc -Q -q 6 -o '" + oggPath + "' '" + wavPath + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return oggPath;
}

size_t Recording::firstSound() const {
    for (size_t i = 0; i < left.size(); ++i) {
        if (std::fabs(left[i]) + std::fabs(right[i]) > 0.01f) return i;
    }
    return left.size();
}

Recording readRecording(const std::string& path) {
    const std::string file = readFile(path);
    Recording rec;
    size_t pos = 12;
    while (pos + 8 <= file.size()) {
        uint32_t chunk = 0;
        std::memcpy(&chunk, file.data() + pos + 4, 4);
        if (file.compare(pos, 4, "data") == 0) {
            const size_t frames = std::min<size_t>(chunk, file.size() - pos - 8) / 4;
            const int16_t* samples = reinterpret_cast<const int16_t*>(file.data() + pos + 8);
            for (size_t i = 0; i < frames; ++i) {
                rec.left.push_back(samples[2 * i] / 32768.0f);
                rec.right.push_back(samples[2 * i + 1] / 32768.0f);
            }
            break;
        }
        pos += 8 + chunk;
    }
    return rec;
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
    for (size_t i = from + 1; i < from + count; ++i) {
        if ((channel[i - 1] < 0.0f) != (channel[i] < 0.0f)) ++crossings;
    }
    return crossings * static_cast<float>(RATE) / (2.0f * count);
}

void AudioTest::SetUp() {
    norvane::init(0, false);  // registers the log groups before the music thread reads them
    waveFile = tmpPath("output.wav");
    setenv("NORVANE_WAVE_FILE", waveFile.c_str(), 1);
    norvane::audio::init("", RATE);
}

void AudioTest::TearDown() { norvane::audio::cleanUp(); }

Recording AudioTest::stopAndRead() {
    norvane::audio::cleanUp();
    return readRecording(waveFile);
}

}  // namespace testaudio
