#ifndef TESTS_SUPPORT_CAPTURED_H
#define TESTS_SUPPORT_CAPTURED_H

#include <gtest/gtest.h>

#include <functional>
#include <string>

// What `body` wrote to standard output (the log), also when it throws.
inline std::string captured(const std::function<void()>& body) {
    testing::internal::CaptureStdout();
    try {
        body();
    } catch (...) {
        testing::internal::GetCapturedStdout();
        throw;
    }
    return testing::internal::GetCapturedStdout();
}

#endif
