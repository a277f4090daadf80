#ifndef TESTS_SUPPORT_FILES_H
#define TESTS_SUPPORT_FILES_H

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "files/sysdirs.h"
#include "support/captured.h"

// A path in a scratch folder of the running test's own (ctest runs tests side by side), with its
// directories made.
inline std::string scratchPath(const std::string& name) {
    const testing::TestInfo* info = testing::UnitTest::GetInstance()->current_test_info();
    const std::string path =
        std::string(TEST_TMP_DIR) + "/" + info->test_suite_name() + "." + info->name() + "/" + name;
    norvane::mkdirs(path);
    return path;
}

inline std::string writeFile(const std::string& name, const std::string& content) {
    const std::string path = scratchPath(name);
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The text `body` threw, or "(nothing thrown)".
template <typename Body>
std::string thrownBy(Body body) {
    try {
        body();
    } catch (const std::string& text) {
        return text;
    }
    return "(nothing thrown)";
}

#endif
