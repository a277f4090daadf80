#include "background.h"

namespace norvane {

BackgroundTask::BackgroundTask(BackgroundTaskCallback* callback) : callback(callback) {
    if (callback) callback->onStart(this);
}

void BackgroundTask::finish() {
    finished = true;
    if (callback) callback->onFinish(this);
}

void BackgroundTask::getProgress(unsigned int* done, unsigned int* total) const {
    *done = progressDone;
    *total = progressTotal;
}

double BackgroundTask::getProgressRelative() const {
    return static_cast<double>(progressDone) / static_cast<double>(progressTotal);
}

}  // namespace norvane
