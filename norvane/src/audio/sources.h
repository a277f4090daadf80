#ifndef NORVANE_AUDIO_SOURCES_H
#define NORVANE_AUDIO_SOURCES_H

#include <cstddef>
#include <cstdint>
#include <vector>

namespace norvane {
namespace audio {

class Sample;
class CachedSample;
class StreamedSample;
class FileLoader;
class SourcePool;
class Source;
class Sound;

// Per-play settings. The listener stands at the origin facing -z, so x is left-right.
struct SoundProperties {
    // -1 is far left, 1 far right; z keeps the distance near 1 so the level stays the same.
    void setStereoPosition(float p);

    float x = 0.0f, y = 0.0f, z = 0.0f;
    float volume = 1.0f;
    float rolloff = 1.0f;  // kept with the rest; OpenAL never sees it
    float pitch = 1.0f;
    bool loop = false;
};

// Optional observer of one sound; not owned by it.
class SoundHandler {
public:
    virtual ~SoundHandler() = default;
    virtual void soundInit(Sound*) {}
    virtual void soundUpdate(Sound*, float) {}
    virtual void soundStreamed(Sound*) {}  // once per buffer read after the end of the file
    virtual void soundDone(Sound*) {}
};

// One playing instance of a sample; created, owned and deleted by its pool.
class Sound {
public:
    Sound(SourcePool* pool, const Sample* sample, SoundHandler* handler);
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;
    virtual ~Sound();

    virtual void perform(float dt);
    virtual void play();
    virtual void stop();  // retires the sound: the pool deletes it after its next perform

    Source* getSource() const { return source; }
    void setVolume(float v);

    SourcePool* pool;
    const Sample* sample;
    SoundHandler* handler;
    Source* source = nullptr;  // set by the pool once it lends one
    SoundProperties properties;

protected:
    void retire();  // marks the source ended and queues the sound for deletion, once
};

class CachedSound : public Sound {
public:
    CachedSound(SourcePool* pool, const CachedSample* sample, SoundHandler* handler);
    void play() override;

    // Pooled: the game plays several every second.
    static void* operator new(std::size_t size);
    static void operator delete(void* p, std::size_t size);
};

// Decodes its file while it plays, into two buffers refilled in turn.
class StreamedSound : public Sound {
public:
    // Opens the file and fills both buffers; throws "Error loading file ..." on failure.
    StreamedSound(SourcePool* pool, const StreamedSample* sample, SoundHandler* handler);
    ~StreamedSound() override;

    void perform(float dt) override;
    void play() override;

    bool isFinished() const { return finished; }

private:
    void readBuffer(unsigned int buffer);
    void stream();

    FileLoader* loader = nullptr;
    int bufferSize;
    bool finished = false;  // the file has no more data
    unsigned int buffers[2] = {0, 0};
};

// One OpenAL source of a pool.
class Source {
public:
    Source(SourcePool* pool, unsigned int name) : pool(pool), name(name) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source();

    // The greatest source is the one to give away next: a free one, else the least important, oldest.
    bool operator<(const Source& other) const;

    SourcePool* pool;
    int state = 0;  // 0 created, 1 playing, 3 ended or stopped
    int priority = 0;
    Sound* sound = nullptr;
    uint32_t stamp = 0;  // start order of its last sound; 0 while free
    unsigned int name;   // the OpenAL source
};

struct CompareSourcePointers {
    bool operator()(const Source* a, const Source* b) const { return *a < *b; }
};

// Fixed set of OpenAL sources lent to sounds by priority; never grows while playing.
class SourcePool {
public:
    explicit SourcePool(int size = 0);
    SourcePool(const SourcePool&) = delete;
    SourcePool& operator=(const SourcePool&) = delete;
    ~SourcePool();

    void resize(unsigned int size);  // drops every source and its sound
    int getSize() const { return static_cast<int>(heap.size()); }

    void setVolume(float v) { volume = v; }  // for sounds started from now on
    float getVolume() const { return volume; }
    void setPlayingVolumes(float v);  // for playing sounds too

    // A source taken out of the heap, its old sound cut off; null when every source plays
    // something more important.
    Source* requestSource(int priority);
    // The new sound, or null when no source could be had. Null properties mean the sample's;
    // a negative priority means the sample's. Throws when a streamed sample cannot be opened.
    Sound* play(const Sample* sample, const SoundProperties* properties = nullptr, SoundHandler* handler = nullptr,
                int priority = -1);

    void perform(float dt);  // once per frame; deletes the sounds that ended
    void deleteExpiredSounds();
    void stopAll();

    std::vector<Source*> heap;  // max-heap by CompareSourcePointers; owns the sources
    std::vector<Sound*> sounds;   // live sounds in creation order; reserved for the pool's size
    std::vector<Sound*> expired;  // retired, to be deleted
    uint32_t counter = 0;         // the last stamp handed out
    float volume = 1.0f;          // every gain is a sound's volume times this

private:
    void destroySources();
};

}  // namespace audio
}  // namespace norvane

#endif
