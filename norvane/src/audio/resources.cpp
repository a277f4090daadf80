#include "audio/resources.h"

#include <AL/al.h>

#include <memory>

#include "audio/core.h"
#include "audio/loaders.h"
#include "debug/log.h"
#include "xml/xml.h"

namespace norvane {
namespace audio {

namespace {
const char* const XML_SAMPLES = "samples";
const char* const XML_SAMPLE = "sample";
const char* const XML_STREAM = "stream";
const char* const XML_NAME = "name";
const char* const XML_FILENAME = "filename";
const char* const XML_VOLUME = "volume";
const char* const XML_PITCH = "pitch";
const char* const XML_ROLLOFF = "rolloff";
const char* const XML_LOOP = "loop";
const char* const XML_PRIORITY = "priority";
const char* const XML_BUFFER_SIZE = "bufferSize";
const char* const XML_DIR = "dir";

// Fills must hold whole 16-bit stereo frames; larger ones only waste memory.
const long MIN_BUFFER_SIZE = 4096;
const long MAX_BUFFER_SIZE = 1 << 24;
}  // namespace

Sample::Sample(const Node* node, const std::string& dir) { Sample::getFromNode(node, dir); }

void Sample::getFromNode(const Node* node, const std::string& dir) {
    const std::string* file = node->getAttribute(XML_FILENAME);
    std::string sampleName = node->getAttribute(XML_NAME, std::string());
    if (!node->getAttribute(XML_NAME)) {
        debug::warning(dbgAudio, "No name specified for sound. Using filename.");
        if (file) sampleName = *file;
    }
    if (!file) throw std::string("No filename specified for sound \"" + sampleName + "\".");
    name = sampleName;
    filename = dir + *file;
    properties.volume = node->getAttributeFloat(XML_VOLUME, properties.volume);
    properties.pitch = node->getAttributeFloat(XML_PITCH, properties.pitch);
    properties.rolloff = node->getAttributeFloat(XML_ROLLOFF, properties.rolloff);
    properties.loop = node->getAttributeBool(XML_LOOP, properties.loop);
    priority = node->getAttributeLong(XML_PRIORITY, priority);
}

CachedSample::CachedSample(const Node* node, const std::string& dir) { CachedSample::getFromNode(node, dir); }

CachedSample::~CachedSample() { release(); }

void CachedSample::getFromNode(const Node* node, const std::string& dir) { Sample::getFromNode(node, dir); }

void CachedSample::load() {
    if (!enabled) return;
    alGetError();
    alGenBuffers(1, &buffer);
    if (buffer == 0) {
        throw std::string("Could not create OpenAL buffer for \"" + name + "\": " + getALErrorString(alGetError()) +
                          ".");
    }
    try {
        std::unique_ptr<FileLoader> loader(getFileLoader(filename));
        // Asking for the whole file by count tells how much came out: a truncated file delivers less.
        int bytes = loader->getSize();
        const char* data = loader->read(&bytes, false);
        alBufferData(buffer, loader->getFormat(), data, bytes, loader->getFrequency());
        format = loader->getFormat();
        frequency = loader->getFrequency();
        size = bytes;
    } catch (...) {
        release();  // a buffer left behind would count as loaded, and refresh() would never retry
        throw;
    }
    debug::debug(dbgAudio, "Loaded \"%s\" as sound \"%s\" (#%d), format: %s, size: %d, frequency: %d.",
                 filename.c_str(), name.c_str(), buffer, format == AL_FORMAT_MONO16 ? "mono" : "stereo", size,
                 frequency);
}

void CachedSample::release() {
    if (buffer) alDeleteBuffers(1, &buffer);
    buffer = 0;
}

void CachedSample::reload() {
    release();
    load();
}

void CachedSample::refresh() {
    if (buffer) return;
    debug::debug(dbgAudio, "Refreshing sound \"%s\"...", name.c_str());
    reload();
}

StreamedSample::StreamedSample(const Node* node, const std::string& dir) { StreamedSample::getFromNode(node, dir); }

void StreamedSample::getFromNode(const Node* node, const std::string& dir) {
    Sample::getFromNode(node, dir);
    const long size = node->getAttributeLong(XML_BUFFER_SIZE, bufferSize);
    if (size < MIN_BUFFER_SIZE || size > MAX_BUFFER_SIZE || size % 4 != 0) {
        debug::warning(dbgAudio, "%s: buffer size %ld is not a multiple of 4 from %ld to %ld, using %ld.",
                       name.c_str(), size, MIN_BUFFER_SIZE, MAX_BUFFER_SIZE, bufferSize);
        return;
    }
    bufferSize = size;
}

SampleBank::~SampleBank() { debug::debug(dbgAudio, "Freeing sample bank %p.", static_cast<void*>(this)); }

void SampleBank::getFromNode(const Node* node, const std::string& dir) {
    for (const Node* child : node->children) {
        Sample* sample;
        if (child->name == XML_SAMPLE) {
            sample = new CachedSample();
        } else if (child->name == XML_STREAM) {
            sample = new StreamedSample();
        } else {
            continue;
        }
        try {
            sample->getFromNode(child, dir);
        } catch (...) {
            delete sample;
            throw;
        }
        add(sample->name, sample);
        debug::debug(dbgAudio, child->name == XML_SAMPLE ? "Added cached sample \"%s\" (%p)."
                                                         : "Added streamed sample \"%s\" (%p).",
                     sample->name.c_str(), static_cast<void*>(sample));
    }
}

void SampleBank::load(const std::string& filename) {
    const size_t slash = filename.rfind('/');
    std::string dir = slash == std::string::npos ? std::string() : filename.substr(0, slash + 1);
    std::unique_ptr<Node> root(xml::loadXML(filename.c_str()));
    if (!root || root->name != XML_SAMPLES) return;
    dir += root->getAttribute(XML_DIR, std::string());
    getFromNode(root.get(), dir);
}

void SampleBank::release() {
    for (auto& entry : resources) entry.second->release();
}

void SampleBank::reload() {
    for (auto& entry : resources) entry.second->reload();
}

void SampleBank::refresh() {
    for (auto& entry : resources) entry.second->refresh();
}

}  // namespace audio
}  // namespace norvane
