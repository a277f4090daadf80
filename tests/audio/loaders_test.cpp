#include "audio/loaders.h"

#include <AL/al.h>

#include <memory>

#include "helpers.h"

using norvane::audio::FileLoader;
using norvane::audio::getFileLoader;
using namespace testaudio;

// Format, size and pieces show in the audio tests' recordings; the loop's seam is checked here.
TEST(Loaders, LoopBackToTheirStart) {
    const std::string monoFile = makeOgg("mono.ogg", "30000s sine 300 vol 0.5");
    std::unique_ptr<FileLoader> mono(getFileLoader(monoFile));
    ASSERT_EQ(mono->getSize(), 60000);
    const std::string all(mono->read(nullptr, false), mono->getSize());
    std::unique_ptr<FileLoader> looping(getFileLoader(monoFile));
    int size = 50000;
    looping->read(&size, true);
    const char* data = looping->read(&size, true);
    ASSERT_EQ(size, 50000);
    EXPECT_TRUE(std::string(data, 10000) == all.substr(50000));             // the tail,
    EXPECT_TRUE(std::string(data + 10000, 40000) == all.substr(0, 40000));  // then the beginning again
}

TEST(Loaders, BrokenFilesGiveTheirMessage) {
    const std::string good = readFile(makeOgg("good.ogg", "2 whitenoise vol 0.5"));  // many pages
    const std::string missing = scratchPath("missing.ogg");
    const std::string notVorbis = "Could not read Ogg stream:The given file/data was not recognized as Ogg Vorbis data.";
    const std::pair<std::string, std::string> cases[] = {
        {missing, "Could not open file \"" + missing + "\"."},
        {"music.OGG", "Unknown file type - \"music.OGG\""},
        {"ab", "Unknown file type - \"ab\""},
        {writeFile("text.ogg", "This is no Ogg Vorbis file."), notVorbis},
        {writeFile("header.ogg", good.substr(0, 100)), notVorbis},
        {damage(writeFile("damaged.ogg", good)),
         "Could not decode Ogg stream: Vorbisfile encoutered missing or corrupt data in the bitstream."},
    };
    for (const auto& [path, message] : cases) {
        EXPECT_EQ(thrownBy([&] { std::unique_ptr<FileLoader>(getFileLoader(path))->read(nullptr, false); }), message);
    }
    // A file cut short says so by its size and delivers what it has.
    std::unique_ptr<FileLoader> cut(getFileLoader(writeFile("cut.ogg", good.substr(0, good.size() / 2))));
    EXPECT_GT(cut->getSize(), 0);
    EXPECT_LT(cut->getSize(), 2 * 2 * RATE);
    int size = 4 * RATE;
    cut->read(&size, false);
    EXPECT_EQ(size, cut->getSize());
}
