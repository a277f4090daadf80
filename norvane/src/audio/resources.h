#ifndef NORVANE_AUDIO_RESOURCES_H
#define NORVANE_AUDIO_RESOURCES_H

#include <string>

#include "audio/sources.h"
#include "resources/manager.h"

namespace norvane {
namespace audio {

class SampleBank;

const long DEF_BUFFER_SIZE = 65536;

// A named sound from a "samples" bank: a file plus default play settings.
class Sample : public NamedResource<SampleBank, std::string> {
public:
    Sample() = default;
    Sample(const Node* node, const std::string& dir);  // reads, does not load
    virtual void getFromNode(const Node* node, const std::string& dir);  // throws without "filename"
    virtual void reload() {}
    virtual void refresh() {}
    virtual void release() {}

    std::string filename;  // the bank's directory prefix included
    long priority = 0;     // higher is more important
    SoundProperties properties;
};

// Decoded whole into one OpenAL buffer when loaded.
class CachedSample : public Sample {
public:
    CachedSample() = default;
    CachedSample(const Node* node, const std::string& dir);
    ~CachedSample() override;

    void getFromNode(const Node* node, const std::string& dir) override;
    void reload() override;
    void refresh() override;  // loads only when not loaded
    void release() override;
    void load();  // throws on buffer or file errors; does nothing while audio is disabled

    unsigned int buffer = 0;  // 0 while not loaded
    int format = 0;
    int size = 0;  // bytes of decoded data
    int frequency = 0;
};

// Decoded piecewise each time it plays.
class StreamedSample : public Sample {
public:
    StreamedSample() = default;
    StreamedSample(const Node* node, const std::string& dir);

    void getFromNode(const Node* node, const std::string& dir) override;

    long bufferSize = DEF_BUFFER_SIZE;  // bytes per buffer fill
};

// The "samples" bank; owns its samples.
class SampleBank : public NamedResourceBank<Sample> {
public:
    ~SampleBank() override;

    void getFromNode(const Node* node, const std::string& dir) override;
    using BasicResourceBank::load;
    void load(const std::string& filename);

    // Each in name order.
    void release();
    void reload();
    void refresh();
};

}  // namespace audio
}  // namespace norvane

#endif
