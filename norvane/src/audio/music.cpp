#include "audio/music.h"

#include <AL/al.h>
#include <SDL/SDL.h>

#include <exception>

#include "audio/loaders.h"
#include "audio/resources.h"
#include "debug/log.h"

namespace norvane {
namespace audio {

namespace {

const Uint32 PERIOD_MS = 100;

class Lock {
public:
    explicit Lock(SDL_mutex* mutex) : mutex(mutex) { SDL_mutexP(mutex); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock() { SDL_mutexV(mutex); }

private:
    SDL_mutex* mutex;
};

}  // namespace

MusicStream::MusicStream(MusicManager* manager, StreamedSample* sample)
    : manager(manager), sample(sample), bufferSize(static_cast<int>(sample->bufferSize)),
      loop(sample->properties.loop) {
    try {
        loader = getFileLoader(sample->filename);
    } catch (const std::string& reason) {
        throw std::string("Error streaming music \"" + sample->filename + "\": " + reason);
    }
    alGenBuffers(2, buffers);
}

MusicStream::~MusicStream() {
    if (buffers[0]) alDeleteBuffers(2, buffers);
    delete loader;
}

bool MusicStream::stream(unsigned int buffer) {
    if (finished) return false;  // also after a decode error: the loader must not be read again
    int size = bufferSize;
    const char* data;
    try {
        data = loader->read(&size, loop);
    } catch (...) {
        finished = true;
        throw;
    }
    // Less than asked is the end of the file: say so now, so that the next piece is queued while
    // this last data still plays.
    finished = size < bufferSize || size == 0;
    if (size == 0) return false;
    alBufferData(buffer, loader->getFormat(), data, size, loader->getFrequency());
    return true;
}

MusicManager::MusicManager() : mutex(SDL_CreateMutex()) {
    alGenSources(1, &source);
    thread = SDL_CreateThread(MusicManager_run, this);
    if (!thread) debug::error(dbgAudio, "Could not start the music thread: %s", SDL_GetError());
}

MusicManager::~MusicManager() {
    stop();
    terminate();
    SDL_DestroyMutex(mutex);
    if (source) alDeleteSources(1, &source);
}

void MusicManager::addAsNext(StreamedSample* sample) {
    Lock lock(mutex);
    queue.push_front(sample);
}

void MusicManager::addAsLast(StreamedSample* sample) {
    Lock lock(mutex);
    queue.push_back(sample);
}

void MusicManager::clearQueue() {
    Lock lock(mutex);
    queue.clear();
}

void MusicManager::play() {
    Lock lock(mutex);
    if (queue.empty()) return;
    stopLocked();
    startFirst();
}

void MusicManager::stop() {
    Lock lock(mutex);
    stopLocked();
}

void MusicManager::skipToNext() {
    Lock lock(mutex);
    stopLocked();
    startFirst();
}

void MusicManager::skipToLast() {
    Lock lock(mutex);
    while (queue.size() > 1) queue.pop_front();
    stopLocked();
    startFirst();
}

void MusicManager::fadeOut(unsigned int ms) {
    fadeRate = 1.0f / static_cast<float>(ms > 0 ? ms : 1);
    fading = 1;  // after the rate: the thread may start at once
}

void MusicManager::setCurrentVolume(float v) {
    currentVolume = v;
    alSourcef(source, AL_GAIN, v);
}

void MusicManager::startFirst() {
    if (queue.empty()) return;
    nextStarted = false;
    fading = 0;
    stopped = false;
    currentVolume = volume.load();
    StreamedSample* sample = queue.front();
    queue.pop_front();
    currentStream = new MusicStream(this, sample);
    queueFilled(currentStream);
    if (currentStream->finished) queueNext();  // shorter than two buffers: the next one follows at once
    alSourcef(source, AL_GAIN, volume);
    alSourcef(source, AL_PITCH, 1.0f);
    alSourcef(source, AL_ROLLOFF_FACTOR, 0.0f);  // music is not attenuated by distance
    alSource3f(source, AL_POSITION, 0.0f, 0.0f, 0.0f);
    alSourcei(source, AL_LOOPING, AL_FALSE);
    alSourcePlay(source);
}

int MusicManager::queueFilled(MusicStream* piece) {
    ALsizei filled = 0;
    if (piece->stream(piece->buffers[0])) {
        ++filled;
        if (piece->stream(piece->buffers[1])) ++filled;
    }
    if (filled > 0) alSourceQueueBuffers(source, filled, piece->buffers);
    return filled;
}

void MusicManager::stopLocked() {
    alSourceStop(source);
    alSourcei(source, AL_BUFFER, 0);
    delete currentStream;
    delete nextStream;
    currentStream = nullptr;
    nextStream = nullptr;
    nextStarted = false;
    stopped = true;
}

void MusicManager::perform(unsigned int elapsedMs) {
    {
        Lock lock(mutex);
        if (fading != 1) {
            stream();
            return;
        }
        const float faded = currentVolume - static_cast<float>(elapsedMs) * fadeRate;
        if (faded > 0.0f) {
            currentVolume = faded;
            alSourcef(source, AL_GAIN, faded);
            stream();
            return;
        }
        currentVolume = volume.load();
        fading = 0;
    }
    stop();
}

void MusicManager::stream() {
    if (!currentStream) return;
    ALint processed = 0;
    alGetSourcei(source, AL_BUFFERS_PROCESSED, &processed);
    if (processed <= 0) return;
    ALuint buffer = 0;
    alSourceUnqueueBuffers(source, 1, &buffer);
    if (!currentStream->hasBuffer(buffer)) {
        // The current piece has played out; the next one's buffers are playing.
        delete currentStream;
        currentStream = nextStream;
        nextStream = nullptr;
        nextStarted = false;
        if (!currentStream) return;
    } else if (currentStream->finished && nextStarted) {
        return;  // its last data has played
    }
    bool queued = currentStream->stream(buffer);
    if (queued) alSourceQueueBuffers(source, 1, &buffer);
    if (currentStream->finished && !nextStarted) queued = queueNext() || queued;
    if (!queued) return;
    ALint state = AL_STOPPED;
    alGetSourcei(source, AL_SOURCE_STATE, &state);
    if (state == AL_STOPPED) alSourcePlay(source);  // decoding fell behind
}

bool MusicManager::queueNext() {
    nextStarted = true;
    if (queue.empty()) return false;
    StreamedSample* sample = queue.front();
    queue.pop_front();
    nextStream = new MusicStream(this, sample);
    return queueFilled(nextStream) > 0;
}

void MusicManager::run() {
    Uint32 last = SDL_GetTicks();
    while (running) {
        const Uint32 now = SDL_GetTicks();
        // The thread has no caller to hand errors to; the piece that failed ends, the thread goes on.
        try {
            perform(now - last);
        } catch (const std::string& text) {
            debug::error(dbgAudio, "%s", text.c_str());
        } catch (const std::exception& e) {
            debug::error(dbgAudio, "Music: %s", e.what());
        }
        last = now;
        SDL_Delay(PERIOD_MS);
    }
}

void MusicManager::terminate() {
    running = false;
    if (thread) SDL_WaitThread(thread, nullptr);
    thread = nullptr;
}

int MusicManager_run(void* manager) {
    static_cast<MusicManager*>(manager)->run();
    return 0;
}

}  // namespace audio
}  // namespace norvane
