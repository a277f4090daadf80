#ifndef NORVANE_AUDIO_MUSIC_H
#define NORVANE_AUDIO_MUSIC_H

#include <atomic>
#include <list>
#include <string>

struct SDL_Thread;
struct SDL_mutex;

namespace norvane {
namespace audio {

class FileLoader;
class MusicManager;
class StreamedSample;

// One piece being decoded for a music manager.
class MusicStream {
public:
    MusicStream(MusicManager* manager, StreamedSample* sample);  // throws "Error streaming music ..."
    MusicStream(const MusicStream&) = delete;
    MusicStream& operator=(const MusicStream&) = delete;
    ~MusicStream();  // the buffers must not be queued any more

    // Refills `buffer`; false when the piece had no more data. Sets `finished` with its last data.
    bool stream(unsigned int buffer);
    bool hasBuffer(unsigned int buffer) const { return buffer == buffers[0] || buffer == buffers[1]; }

    MusicManager* manager;
    StreamedSample* sample;
    FileLoader* loader = nullptr;
    int bufferSize;
    bool finished = false;  // all data has been handed out
    bool loop;
    unsigned int buffers[2] = {0, 0};
};

// Plays a queue of streamed samples without gaps on its own source, decoding on its own thread.
// Every operation belongs to the main thread; the thread only calls perform.
class MusicManager {
public:
    MusicManager();  // starts the thread
    MusicManager(const MusicManager&) = delete;
    MusicManager& operator=(const MusicManager&) = delete;
    virtual ~MusicManager();

    // The samples stay their bank's.
    void addAsNext(StreamedSample* sample);
    void addAsLast(StreamedSample* sample);
    void clearQueue();

    void play();  // starts the first queued piece, stopping what plays; nothing when the queue is empty
    void stop();  // the queue stays
    void skipToNext();
    void skipToLast();  // drops all queued pieces but the last and starts it
    void fadeOut(unsigned int ms);  // from full gain to silence in `ms`, then stops
    void setVolume(float v) { volume = v; }  // from the next piece on
    void setCurrentVolume(float v);           // at once
    bool isPlaying() const { return !stopped; }  // stays true after a playlist has played out

    void perform(unsigned int elapsedMs);  // the thread's step: fade, then refill one buffer
    void run();
    void terminate();  // ends the thread and waits for it

protected:
    std::atomic<bool> stopped{true};
    unsigned int source = 0;
    std::list<StreamedSample*> queue;
    std::atomic<bool> running{true};
    SDL_Thread* thread = nullptr;
    SDL_mutex* mutex;
    // The fade and volume fields are single words the main thread writes without the mutex.
    std::atomic<float> volume{1.0f};
    std::atomic<float> currentVolume{1.0f};
    std::atomic<int> fading{0};
    std::atomic<float> fadeRate{0.0f};  // gain lost per millisecond
    bool nextStarted = false;           // the next piece is queued behind the current one
    MusicStream* currentStream = nullptr;
    MusicStream* nextStream = nullptr;

private:
    // Callers hold the mutex.
    void startFirst();
    void stopLocked();
    void stream();
    int queueFilled(MusicStream* piece);  // fills and queues its buffers; how many got data
    // Called as soon as the current piece has no more data, so that the next one follows without
    // a gap; false when nothing was queued.
    bool queueNext();
};

int MusicManager_run(void* manager);

}  // namespace audio
}  // namespace norvane

#endif
