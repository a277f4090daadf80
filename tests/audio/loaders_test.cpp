#include "audio/loaders.h"

#include <AL/al.h>

#include <memory>

#include "helpers.h"

using norvane::audio::FileLoader;
using norvane::audio::getFileLoader;
using namespace testaudio;

namespace {

std::string thrownBy(const std::string& path) {
    try {
        std::unique_ptr<FileLoader> loader(getFileLoader(path));
        int size = loader->getSize();
        loader->read(&size, false);
    } catch (const std::string& text) {
        return text;
    }
    return "nothing thrown";
}

}  // namespace

TEST(Loaders, ReportTheFormatAndDeliverTheFileInPieces) {
    const int frames = 40000;
    std::unique_ptr<FileLoader> mono(getFileLoader(writeOgg("mono.ogg", sine(frames, 441, 0.5f))));
    EXPECT_EQ(mono->getFormat(), AL_FORMAT_MONO16);
    EXPECT_EQ(mono->getSize(), 2 * frames);
    EXPECT_EQ(mono->getFrequency(), RATE);

    std::unique_ptr<FileLoader> stereo(getFileLoader(writeOgg("stereo.ogg", sine(frames, 441, 0.5f, 2), 2)));
    EXPECT_EQ(stereo->getFormat(), AL_FORMAT_STEREO16);
    EXPECT_EQ(stereo->getSize(), 4 * frames);
    int size = 65536;
    stereo->read(&size, false);
    EXPECT_EQ(size, 65536);
    stereo->read(&size, false);
    stereo->read(&size, false);
    EXPECT_EQ(size, 4 * frames - 2 * 65536);  // the end of the file
    stereo->read(&size, false);
    EXPECT_EQ(size, 0);
}

TEST(Loaders, LoopingReadContinuesFromTheStart) {
    const std::string path = writeOgg("loop.ogg", sine(30000, 300, 0.5f));
    std::unique_ptr<FileLoader> whole(getFileLoader(path));
    const std::string all(whole->read(nullptr, false), whole->getSize());

    std::unique_ptr<FileLoader> loader(getFileLoader(path));
    int size = 50000;
    loader->read(&size, true);
    size = 50000;
    const char* data = loader->read(&size, true);
    ASSERT_EQ(size, 50000);
    EXPECT_EQ(std::string(data, 10000), all.substr(50000));  // the tail,
    EXPECT_EQ(std::string(data + 10000, 40000), all.substr(0, 40000));  // then the beginning again
}

TEST(Loaders, BrokenFilesGiveTheirMessage) {
    const std::string good = readFile(writeOgg("good.ogg", noise(88200, 0.5f)));
    std::string corrupt = good;
    corrupt[corrupt.size() / 2] ^= 1;  // the page checksum no longer fits
    const std::string notVorbis = writeFile("text.ogg", "This is no Ogg Vorbis file, just some text.");
    const std::string missing = std::string(TEST_TMP_DIR) + "/missing.ogg";
    const struct {
        std::string path;
        std::string message;
    } cases[] = {
        {missing, "Could not open file \"" + missing + "\"."},
        {"music.OGG", "Unknown file type - \"music.OGG\""},
        {"track.wav", "Unknown file type - \"track.wav\""},
        {"ab", "Unknown file type - \"ab\""},
        {notVorbis, "Could not read Ogg stream:The given file/data was not recognized as Ogg Vorbis data."},
        {writeFile("header.ogg", good.substr(0, 100)),
         "Could not read Ogg stream:The given file/data was not recognized as Ogg Vorbis data."},
        {writeFile("corrupt.ogg", corrupt),
         "Could not decode Ogg stream: Vorbisfile encoutered missing or corrupt data in the bitstream."},
    };
    for (const auto& c : cases) EXPECT_EQ(thrownBy(c.path), c.message);
}

TEST(Loaders, TruncatedFileDeliversWhatItHas) {
    const std::string good = readFile(writeOgg("full.ogg", noise(88200, 0.5f)));
    std::unique_ptr<FileLoader> loader(getFileLoader(writeFile("cut.ogg", good.substr(0, good.size() / 2))));
    EXPECT_GT(loader->getSize(), 0);
    EXPECT_LT(loader->getSize(), 2 * 88200);
    int size = 2 * 88200;
    loader->read(&size, false);
    EXPECT_EQ(size, loader->getSize());
}
