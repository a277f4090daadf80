#include "audio/sources.h"

#include <AL/al.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <memory>

#include "audio/loaders.h"
#include "audio/resources.h"
#include "debug/log.h"
#include "tools/blockpool.h"

namespace norvane {
namespace audio {

namespace {

void halt(ALuint source) {
    alSourceStop(source);
    alSourcei(source, AL_BUFFER, 0);
}

void eraseFrom(std::vector<Sound*>& list, Sound* sound) {
    auto it = std::find(list.begin(), list.end(), sound);
    if (it != list.end()) list.erase(it);  // keeps the order: sounds are performed in creation order
}

}  // namespace

void SoundProperties::setStereoPosition(float p) {
    if (p <= -1.0f) {
        x = -1.0f;
        z = 0.0f;
    } else if (p >= 1.0f) {
        x = 1.0f;
        z = 0.0f;
    } else {
        x = p;
        z = 1.0f - std::fabs(p);
    }
}

Sound::Sound(SourcePool* pool, const Sample* sample, SoundHandler* handler)
    : pool(pool), sample(sample), handler(handler) {
    pool->sounds.push_back(this);
    if (handler) handler->soundInit(this);
}

Sound::~Sound() {
    if (handler) handler->soundDone(this);
    if (source && source->sound == this) {
        halt(source->name);
        source->state = 3;
        source->sound = nullptr;
    }
    eraseFrom(pool->sounds, this);
    eraseFrom(pool->expired, this);  // however it dies, it is deleted only once
}

void Sound::perform(float dt) {
    if (handler) handler->soundUpdate(this, dt);
    if (!source) return;
    ALint state = AL_STOPPED;  // a source OpenAL does not know has ended too
    alGetSourcei(source->name, AL_SOURCE_STATE, &state);
    if (state == AL_STOPPED) retire();
}

void Sound::play() {
    assert(source);
    alSourcePlay(source->name);
    source->state = 1;
}

void Sound::stop() {
    if (source) halt(source->name);
    retire();
}

void Sound::retire() {
    if (source) {
        alSourcei(source->name, AL_BUFFER, 0);
        source->state = 3;
    }
    if (std::find(pool->expired.begin(), pool->expired.end(), this) == pool->expired.end()) {
        pool->expired.push_back(this);
    }
}

void Sound::setVolume(float v) {
    properties.volume = v;
    if (source) alSourcef(source->name, AL_GAIN, v * pool->volume);
}

CachedSound::CachedSound(SourcePool* pool, const CachedSample* sample, SoundHandler* handler)
    : Sound(pool, sample, handler) {}

namespace {
BlockPool& cachedSoundBlocks() {
    static BlockPool blocks(sizeof(CachedSound));
    return blocks;
}

// Every sound holds a source: with a block kept for each source of every pool, playing allocates nothing.
unsigned int pooledSources = 0;
}  // namespace

void* CachedSound::operator new(std::size_t size) {
    return size == sizeof(CachedSound) ? cachedSoundBlocks().take() : ::operator new(size);
}

void CachedSound::operator delete(void* p, std::size_t size) {
    if (size == sizeof(CachedSound)) {
        cachedSoundBlocks().give(p);
    } else {
        ::operator delete(p);
    }
}

void CachedSound::play() {
    const ALuint name = source->name;
    const ALuint buffer = static_cast<const CachedSample*>(sample)->buffer;
    alSourcef(name, AL_GAIN, properties.volume * pool->volume);
    alSourcef(name, AL_PITCH, properties.pitch);
    alSourcei(name, AL_LOOPING, properties.loop ? AL_TRUE : AL_FALSE);
    alSourceQueueBuffers(name, 1, &buffer);
    alSource3f(name, AL_POSITION, properties.x, properties.y, properties.z);
    Sound::play();
}

StreamedSound::StreamedSound(SourcePool* pool, const StreamedSample* sample, SoundHandler* handler)
    : Sound(pool, sample, handler), bufferSize(static_cast<int>(sample->bufferSize)) {
    try {
        loader = getFileLoader(sample->filename);
        alGenBuffers(2, buffers);
        readBuffer(buffers[0]);
        readBuffer(buffers[1]);
    } catch (const std::string& reason) {
        alDeleteBuffers(2, buffers);
        delete loader;
        throw std::string("Error loading file \"" + sample->filename + "\": " + reason);
    }
}

StreamedSound::~StreamedSound() {
    // The source must let go of the buffers before they can be deleted.
    if (source && source->sound == this) halt(source->name);
    if (buffers[0]) alDeleteBuffers(2, buffers);
    delete loader;
}

void StreamedSound::readBuffer(unsigned int buffer) {
    int size = finished ? 0 : bufferSize;
    const char* data = loader->read(&size, properties.loop);
    // An empty fill still gets the stream's format: OpenAL refuses to queue buffers of mixed formats.
    alBufferData(buffer, loader->getFormat(), data, size, loader->getFrequency());
    if (size == 0) {
        finished = true;
        if (handler) handler->soundStreamed(this);
    }
}

void StreamedSound::play() {
    const ALuint name = source->name;
    alSourceQueueBuffers(name, 2, buffers);
    alSourcef(name, AL_GAIN, properties.volume * pool->volume);
    alSourcef(name, AL_PITCH, properties.pitch);
    alSourcef(name, AL_ROLLOFF_FACTOR, 1.0f);
    alSource3f(name, AL_POSITION, properties.x, properties.y, properties.z);
    alSourcei(name, AL_LOOPING, AL_FALSE);  // looping happens in the reader
    Sound::play();
}

void StreamedSound::perform(float dt) {
    if (source && source->state != 3) stream();
    Sound::perform(dt);
}

void StreamedSound::stream() {
    const ALuint name = source->name;
    ALint processed = 0;
    alGetSourcei(name, AL_BUFFERS_PROCESSED, &processed);
    for (; processed > 0; --processed) {
        ALuint buffer = 0;
        alSourceUnqueueBuffers(name, 1, &buffer);
        readBuffer(buffer);
        if (!finished) alSourceQueueBuffers(name, 1, &buffer);
    }
    ALint state = AL_STOPPED;
    alGetSourcei(name, AL_SOURCE_STATE, &state);
    if (state != AL_STOPPED) return;
    if (finished) {
        source->state = 3;
    } else {
        debug::warning(dbgAudio, "Stream %p was interrupted.", static_cast<void*>(this));
        alSourcePlay(name);
    }
}

Source::~Source() {
    delete sound;  // detaches itself from this source
    if (name) alDeleteSources(1, &name);
}

bool Source::operator<(const Source& other) const {
    if (stamp == 0) return false;
    if (other.stamp == 0) return true;
    if (priority != other.priority) return priority > other.priority;
    return stamp > other.stamp;
}

SourcePool::SourcePool(int size) {
    if (size != 0) resize(static_cast<unsigned int>(size));
}

SourcePool::~SourcePool() {
    deleteExpiredSounds();
    destroySources();
}

void SourcePool::destroySources() {
    for (Source* source : heap) delete source;
    pooledSources -= static_cast<unsigned int>(heap.size());
    heap.clear();
}

void SourcePool::resize(unsigned int size) {
    destroySources();
    std::unique_ptr<ALuint[]> names(new (std::nothrow) ALuint[size]());
    if (!names) throw std::string("Could not create source name array.");
    alGenSources(static_cast<ALsizei>(size), names.get());
    heap.reserve(size);
    for (unsigned int i = 0; i < size; ++i) {
        heap.push_back(new Source(this, names[i]));
        std::push_heap(heap.begin(), heap.end(), CompareSourcePointers());
    }
    sounds.reserve(size);
    expired.reserve(size);
    pooledSources += size;
    cachedSoundBlocks().reserve(pooledSources);
}

void SourcePool::setPlayingVolumes(float v) {
    volume = v;
    for (Sound* sound : sounds) {
        if (sound->source) alSourcef(sound->source->name, AL_GAIN, sound->properties.volume * v);
    }
}

Source* SourcePool::requestSource(int priority) {
    if (heap.empty()) return nullptr;
    Source* top = heap.front();
    if (top->sound) {
        if (priority < top->priority) return nullptr;
        halt(top->name);
        delete top->sound;
        top->stamp = 0;  // still the greatest, so the heap stays valid for the pop
    }
    std::pop_heap(heap.begin(), heap.end(), CompareSourcePointers());
    heap.pop_back();
    return top;
}

Sound* SourcePool::play(const Sample* sample, const SoundProperties* properties, SoundHandler* handler,
                        int priority) {
    if (priority < 0) priority = static_cast<int>(sample->priority);
    Source* source = requestSource(priority);
    if (!source) {
        debug::info(dbgAudio, "No source availabie, what to do??");
        return nullptr;
    }
    Sound* sound = nullptr;
    try {
        if (auto cached = dynamic_cast<const CachedSample*>(sample)) {
            sound = new CachedSound(this, cached, handler);
        } else if (auto streamed = dynamic_cast<const StreamedSample*>(sample)) {
            sound = new StreamedSound(this, streamed, handler);
        } else {
            throw std::string("Unknown sample class.");
        }
    } catch (...) {
        source->stamp = 0;  // back as a free source, or the pool would shrink by one
        heap.push_back(source);
        std::push_heap(heap.begin(), heap.end(), CompareSourcePointers());
        throw;
    }
    source->sound = sound;
    source->priority = priority;
    source->stamp = ++counter;
    sound->source = source;
    sound->properties = properties ? *properties : sample->properties;
    heap.push_back(source);
    std::push_heap(heap.begin(), heap.end(), CompareSourcePointers());
    sound->play();
    return sound;
}

void SourcePool::perform(float dt) {
    // By index: a handler may start or end sounds while we walk the list.
    for (size_t i = 0; i < sounds.size(); ++i) {
        Sound* sound = sounds[i];
        try {
            sound->perform(dt);
        } catch (const std::string& text) {
            debug::error(dbgAudio, "%s", text.c_str());
            sound->stop();
        }
    }
    deleteExpiredSounds();
}

void SourcePool::deleteExpiredSounds() {
    while (!expired.empty()) delete expired.back();  // each sound takes itself off the list
}

void SourcePool::stopAll() {
    for (Sound* sound : sounds) sound->stop();
    deleteExpiredSounds();
}

}  // namespace audio
}  // namespace norvane
