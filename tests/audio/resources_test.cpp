#include "audio/resources.h"

#include <AL/al.h>

#include <memory>

#include "audio/core.h"
#include "helpers.h"
#include "xml/xml.h"

using namespace norvane::audio;
using namespace testaudio;

TEST(SampleBank, ReadsSamplesAndStreamsWithTheirSettings) {
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML(
        writeFile("bank.xml",
                  "<samples><sample filename='boom.ogg'/>"
                  "<sample name='laser' filename='a.ogg' volume='0.5' pitch='2' loop='true' priority='3'/>"
                  "<stream name='wind' filename='wind.ogg'/><stream name='rain' filename='r.ogg' bufferSize='16384'/>"
                  "<stream name='odd' filename='odd.ogg' bufferSize='1001'/><music name='x' filename='x.ogg'/>"
                  "<sample name='laser2' filename='c.ogg'/><sample name='laser2' filename='b.ogg'/>"
                  "<sample name='nofile'/><sample name='late' filename='late.ogg'/></samples>")
            .c_str()));
    std::unique_ptr<norvane::BasicResourceBank> made(resourceBankGenerator.generateBank("samples"));
    auto* bank = dynamic_cast<SampleBank*>(made.get());
    ASSERT_TRUE(bank);
    const std::string log = captured([&] {  // throws at "nofile", keeping the rest
        EXPECT_NE(thrownBy([&] { bank->getFromNode(root.get(), "sounds/"); }), "(nothing thrown)");
    });
    EXPECT_NE(log.find("No name specified for sound. Using filename."), std::string::npos);
    EXPECT_NE(log.find("buffer size 1001"), std::string::npos);
    ASSERT_EQ(bank->size(), 6);
    const Sample* boom = bank->find("boom.ogg");
    ASSERT_TRUE(dynamic_cast<const CachedSample*>(boom));
    EXPECT_EQ(boom->filename, "sounds/boom.ogg");
    EXPECT_FLOAT_EQ(boom->properties.volume, 1.0f);
    const Sample* laser = bank->find("laser");
    EXPECT_FLOAT_EQ(laser->properties.volume, 0.5f);
    EXPECT_FLOAT_EQ(laser->properties.pitch, 2.0f);
    EXPECT_TRUE(laser->properties.loop);
    EXPECT_EQ(laser->priority, 3);
    EXPECT_EQ(bank->find("laser2")->filename, "sounds/b.ogg");  // the later one replaced the first
    for (auto [name, size] : {std::pair{"wind", 65536}, {"rain", 16384}, {"odd", 65536}}) {
        EXPECT_EQ(dynamic_cast<StreamedSample*>(bank->find(name))->bufferSize, size) << name;
    }
}

TEST_F(AudioTest, SampleBankRefreshLoadsEachCachedSampleOnce) {
    makeOgg("tone.ogg", "22050s sine 441", 2);
    writeFile("broken.ogg", "no sound here");
    SampleBank bank;
    bank.load(writeFile("bank.xml", "<samples><sample name='tone' filename='tone.ogg'/>"
                                    "<stream name='later' filename='broken.ogg'/></samples>"));
    auto* tone = dynamic_cast<CachedSample*>(bank.find("tone"));
    ASSERT_TRUE(tone);
    EXPECT_EQ(tone->buffer, 0u);
    bank.refresh();  // streams are opened only when they play
    const unsigned int first = tone->buffer;
    ASSERT_NE(first, 0u);
    EXPECT_EQ(tone->format, AL_FORMAT_STEREO16);
    EXPECT_EQ(tone->frequency, RATE);
    ALint bytes = 0;
    alGetBufferi(first, AL_SIZE, &bytes);
    EXPECT_EQ(bytes, 4 * 22050);
    bank.refresh();
    EXPECT_EQ(tone->buffer, first);
    bank.release();
    EXPECT_EQ(tone->buffer, 0u);
    bank.refresh();
    EXPECT_NE(tone->buffer, 0u);
    CachedSample broken;
    broken.filename = bank.find("later")->filename;
    EXPECT_THROW(broken.refresh(), std::string);
}
