#include "audio/resources.h"

#include <AL/al.h>

#include <memory>

#include "audio/core.h"
#include "helpers.h"
#include "xml/xml.h"

using namespace norvane::audio;
using namespace testaudio;

namespace {

std::unique_ptr<norvane::xml::Node> parse(const std::string& name, const std::string& text) {
    return std::unique_ptr<norvane::xml::Node>(norvane::xml::loadXML(writeFile(name, text).c_str()));
}

class SampleBankTest : public AudioTest {};

}  // namespace

TEST(SampleBank, ReadsSamplesAndStreamsWithTheirSettings) {
    auto root = parse("bank.xml",
                      "<samples>"
                      "<sample filename='boom.ogg'/>"
                      "<sample name='laser' filename='a.ogg' volume='0.5' pitch='2' loop='true' priority='3'/>"
                      "<sample name='laser' filename='b.ogg'/>"
                      "<stream name='wind' filename='wind.ogg'/>"
                      "<stream name='rain' filename='rain.ogg' bufferSize='16384'/>"
                      "<stream name='odd' filename='odd.ogg' bufferSize='1001'/>"
                      "<music name='theme' filename='theme.ogg'/>"
                      "</samples>");
    std::unique_ptr<norvane::BasicResourceBank> made(resourceBankGenerator.generateBank("samples"));
    auto* bank = dynamic_cast<SampleBank*>(made.get());
    ASSERT_TRUE(bank);
    EXPECT_EQ(resourceBankGenerator.generateBank("Samples"), nullptr);
    testing::internal::CaptureStdout();
    bank->getFromNode(root.get(), "sounds/");
    const std::string log = testing::internal::GetCapturedStdout();
    EXPECT_NE(log.find("No name specified for sound. Using filename."), std::string::npos);
    EXPECT_NE(log.find("buffer size 1001"), std::string::npos);  // kept the default

    ASSERT_EQ(bank->size(), 5);  // the music element is skipped, the second laser replaced the first
    const Sample* boom = bank->find("boom.ogg");
    ASSERT_TRUE(dynamic_cast<const CachedSample*>(boom));
    EXPECT_EQ(boom->filename, "sounds/boom.ogg");
    EXPECT_EQ(boom->priority, 0);
    EXPECT_FLOAT_EQ(boom->properties.volume, 1.0f);
    EXPECT_FALSE(boom->properties.loop);
    EXPECT_EQ(bank->find("laser")->filename, "sounds/b.ogg");
    EXPECT_FALSE(bank->find("laser")->properties.loop);
    EXPECT_EQ(dynamic_cast<StreamedSample*>(bank->find("wind"))->bufferSize, 65536);
    EXPECT_EQ(dynamic_cast<StreamedSample*>(bank->find("rain"))->bufferSize, 16384);
    EXPECT_EQ(dynamic_cast<StreamedSample*>(bank->find("odd"))->bufferSize, 65536);

    auto settings = parse("one.xml", "<sample name='s' filename='s.ogg' volume='0.5' pitch='2' loop='1' priority='3'/>");
    CachedSample sample(settings.get(), "");
    EXPECT_FLOAT_EQ(sample.properties.volume, 0.5f);
    EXPECT_FLOAT_EQ(sample.properties.pitch, 2.0f);
    EXPECT_TRUE(sample.properties.loop);
    EXPECT_EQ(sample.priority, 3);
}

TEST(SampleBank, MissingFilenameStopsReadingAndKeepsWhatCameBefore) {
    auto root = parse("nofile.xml", "<samples><sample name='a' filename='a.ogg'/><sample name='b'/>"
                                    "<sample name='c' filename='c.ogg'/></samples>");
    SampleBank bank;
    try {
        bank.getFromNode(root.get(), "");
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "No filename specified for sound \"b\".");
    }
    EXPECT_EQ(bank.size(), 1);
}

TEST_F(SampleBankTest, RefreshLoadsEachCachedSampleOnce) {
    writeOgg("tone.ogg", sine(22050, 441, 0.5f, 2), 2);
    const std::string brokenFile = writeFile("broken.ogg", "no sound here");
    const std::string bankFile = writeFile("bank.xml", "<samples><sample name='tone' filename='tone.ogg'/>"
                          "<stream name='broken' filename='broken.ogg'/></samples>");
    SampleBank bank;
    bank.load(bankFile);
    auto* tone = dynamic_cast<CachedSample*>(bank.find("tone"));
    ASSERT_TRUE(tone);
    EXPECT_EQ(tone->buffer, 0u);

    bank.refresh();  // streamed samples need no loading: the broken one is not touched yet
    const unsigned int first = tone->buffer;
    ASSERT_NE(first, 0u);
    EXPECT_EQ(tone->format, AL_FORMAT_STEREO16);
    EXPECT_EQ(tone->size, 4 * 22050);
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
    broken.name = "broken";
    broken.filename = brokenFile;
    try {
        broken.refresh();
        FAIL() << "nothing thrown";
    } catch (const std::string& text) {
        EXPECT_EQ(text, "Could not read Ogg stream:The given file/data was not recognized as Ogg Vorbis data.");
    }
}

TEST(SampleBank, DisabledAudioLoadsNothing) {
    enabled = false;
    init("", RATE);
    CachedSample sample;
    sample.filename = writeOgg("quiet.ogg", sine(1000, 441, 0.5f));
    sample.refresh();
    EXPECT_EQ(sample.buffer, 0u);
    EXPECT_TRUE(context);
    cleanUp();
    enabled = true;
}
