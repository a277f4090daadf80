#ifndef NORVANE_BACKGROUND_H
#define NORVANE_BACKGROUND_H

namespace norvane {

class BackgroundTask;

class BackgroundTaskCallback {
public:
    virtual ~BackgroundTaskCallback() = default;
    virtual void onStart(BackgroundTask* task) = 0;
    virtual void onFinish(BackgroundTask* task) = 0;
};

// Work done piecewise on the main thread between frames; the framework owns it once listed in backgroundTasks.
class BackgroundTask {
public:
    explicit BackgroundTask(BackgroundTaskCallback* callback);
    virtual void finish();
    virtual ~BackgroundTask() = default;
    // Does a piece of work and returns when SDL_GetTicks() reaches `deadline` (ms), or earlier.
    virtual void perform(unsigned int deadline) = 0;

    bool isFinished() const { return finished; }
    void getProgress(unsigned int* done, unsigned int* total) const;
    double getProgressRelative() const;

protected:
    BackgroundTaskCallback* callback;
    bool finished = false;
    unsigned int progressDone = 0;
    unsigned int progressTotal = 0;
};

}  // namespace norvane

#endif
