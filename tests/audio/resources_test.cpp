#include "audio/resources.h"

#include <AL/al.h>

#include <memory>

#include "helpers.h"
#include "xml/xml.h"

using namespace norvane::audio;
using namespace testaudio;

TEST(SampleBank, ReadsSamplesAndStreamsWithTheirSettings) {
    std::unique_ptr<norvane::xml::Node> root(norvane::xml::loadXML(
        writeFile("bank.xml", "<samples><sample filename='boom.ogg'/><music name='x' filename='x.ogg'/>"
                              "<sample name='laser' filename='a.ogg' volume='0.5' loop='true' priority='3'/>"
                              "<stream name='wind' filename='w.ogg'/><stream name='rain' filename='r.ogg' bufferSize='16384'/>"
                              "<stream name='odd' filename='o.ogg' bufferSize='16386'/>"
                              "<stream name='big' filename='b.ogg' bufferSize='16777220'/><stream name='tiny' filename='t.ogg' bufferSize='4092'/>"
                              "<sample name='nofile'/><sample name='late' filename='late.ogg'/></samples>")
            .c_str()));
    std::unique_ptr<norvane::BasicResourceBank> made(resourceBankGenerator.generateBank("samples"));
    auto* bank = dynamic_cast<SampleBank*>(made.get());
    ASSERT_TRUE(bank);
    const std::string log = captured([&] {  // throws at "nofile", keeping the rest
        EXPECT_NE(thrownBy([&] { bank->getFromNode(root.get(), "sounds/"); }), "(nothing thrown)");
    });
    EXPECT_NE(log.find("No name specified for sound. Using filename."), std::string::npos);
    ASSERT_EQ(bank->size(), 7);
    EXPECT_EQ(bank->find("boom.ogg")->filename, "sounds/boom.ogg");
    const Sample* laser = bank->find("laser");
    EXPECT_TRUE(dynamic_cast<const CachedSample*>(laser) && laser->properties.volume == 0.5f && laser->properties.loop &&
                laser->priority == 3);
    for (auto [name, size] : {std::pair{"wind", 65536}, {"rain", 16384}, {"odd", 65536}, {"big", 65536}, {"tiny", 65536}}) {
        EXPECT_EQ(dynamic_cast<StreamedSample*>(bank->find(name))->bufferSize, size) << name;
    }
}

// A failed load used to keep its OpenAL buffer: the sample counted as loaded, silent for good.
TEST_F(AudioTest, CachedSamplesLoadOnceAndRetryAfterAFailedLoad) {
    SampleBank bank;
    bank.load(writeFile("bank.xml", "<samples><sample name='tone' filename='tone.ogg'/></samples>"));
    auto* tone = dynamic_cast<CachedSample*>(bank.find("tone"));
    ASSERT_TRUE(tone);
    for (const char* broken : {"no sound here", ""}) {
        writeFile("tone.ogg", broken);
        EXPECT_THROW(bank.refresh(), std::string) << broken;
        EXPECT_EQ(tone->buffer, 0u);
    }
    makeOgg("tone.ogg", "22050s sine 441", 2);
    bank.refresh();
    const unsigned int first = tone->buffer;
    EXPECT_TRUE(first != 0u && tone->size == 4 * 22050 && tone->format == AL_FORMAT_STEREO16);
    bank.refresh();
    EXPECT_EQ(tone->buffer, first);
}

TEST(AudioCore, NoSoundCardGivesTheAlcErrorName) {
    setenv("ALSOFT_DRIVERS", "nosuchdriver", 1);
    EXPECT_EQ(thrownBy([] { init("", RATE); }), "ALC_INVALID_VALUE");
    EXPECT_EQ(context, nullptr);
    cleanUp();
    unsetenv("ALSOFT_DRIVERS");
}
