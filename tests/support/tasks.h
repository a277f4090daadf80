#ifndef TESTS_SUPPORT_TASKS_H
#define TESTS_SUPPORT_TASKS_H

#include <string>

#include "background.h"

// Notes a background task's start and finish as "start " and "finish ".
struct TaskEvents : norvane::BackgroundTaskCallback {
    void onStart(norvane::BackgroundTask*) override { events += "start "; }
    void onFinish(norvane::BackgroundTask*) override { events += "finish "; }
    std::string events;
};

#endif
