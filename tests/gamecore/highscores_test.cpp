#include "resources/highscores.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>

#include "files/sysdirs.h"

using vantorix::HighscoreEntry;
using vantorix::Highscores;

namespace {

std::string tmpPath(const std::string& name, const char* content = nullptr) {
    norvane::mkdirs(TEST_TMP_DIR "/");
    const std::string path = TEST_TMP_DIR "/" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) + name;
    if (content) std::ofstream(path, std::ios::binary) << content;
    return path;
}

std::string text(const Highscores& h) {
    std::string out;
    for (auto* table : {&h.singleA, &h.singleB, &h.multi}) {
        for (size_t i = 0; i < table->size(); ++i) out += (*table)[i].name + ":" + std::to_string((*table)[i].score) + " ";
        out += "| ";
    }
    return out;
}

std::string unnamed(std::initializer_list<unsigned int> scores) {
    std::string out;
    for (unsigned int score : scores) out += "-----------------:" + std::to_string(score) + " ";
    return out;
}

const std::string DEFAULT_A = unnamed({100000, 50000, 25000, 10000, 8000, 6000, 4000, 2000, 1000, 500}) + "| ";
const std::string DEFAULTS = DEFAULT_A + unnamed({20000, 17500, 15000, 12500, 10000, 7500, 5000, 2500, 1000, 500}) + "| " + DEFAULT_A;

Highscores withDefaults() {
    Highscores h;
    h.setDefaults();
    return h;
}

Highscores loaded(const std::string& path, Highscores h = withDefaults()) {
    h.load(path);
    return h;
}

// Thirty distinct entries; the names are ISO-8859-1 with the characters XML must escape.
Highscores numbered() {
    Highscores h;
    unsigned int n = 0;
    for (auto* table : {&h.singleA, &h.singleB, &h.multi}) {
        for (size_t i = 0; i < 10; ++i, ++n) (*table)[i] = HighscoreEntry("J\xFCrgen \xC6r\xF8 <&\">" + std::to_string(n), 900 - n * 7);
    }
    return h;
}

}  // namespace

TEST(Highscores, TiesKeepTheOlderEntryAheadAndTheLastPlaceFallsOut) {
    Highscores h = withDefaults();
    EXPECT_EQ(text(h), DEFAULTS);
    EXPECT_EQ(h.singleA.add(HighscoreEntry("tie", 8000)), 5);
    EXPECT_EQ(h.singleA.add(HighscoreEntry("low", 1000)), -1);  // the tenth place
    EXPECT_EQ(h.singleA.add(HighscoreEntry("best", 4000000000u)), 0);  // compared unsigned
    EXPECT_EQ(text(h), "best:4000000000 " + unnamed({100000, 50000, 25000, 10000, 8000}) + "tie:8000 " +
                           unnamed({6000, 4000, 2000}) + DEFAULTS.substr(DEFAULT_A.size() - 2));
    h.clear();
    EXPECT_EQ(text(h), text(Highscores()));
}

TEST(Highscores, FileEntriesAreTakenAsTheyStand) {
    std::string file = "<highscores><unknown/><singleB><entry name=\"c\" score=\"10\"/><junk name=\"x\"/>"
                       "<entry name=\"a\" score=\"300000\"/><entry score=\"-5\"/><entry name=\"big\" score=\"99999999999\"/>"
                       "</singleB><multi>";
    for (int i = 1; i <= 12; ++i) file += "<entry name=\"m" + std::to_string(i) + "\" score=\"" + std::to_string(i) + "\"/>";
    // Out of order and kept so; a foreign element takes no slot; a hostile score neither wraps nor overflows.
    EXPECT_EQ(text(loaded(tmpPath("partial.xml", (file + "</multi></highscores>").c_str()))),
              DEFAULT_A + "c:10 a:300000 :0 big:4294967295 " + unnamed({10000, 7500, 5000, 2500, 1000, 500}) +
                  "| m1:1 m2:2 m3:3 m4:4 m5:5 m6:6 m7:7 m8:8 m9:9 m10:10 | ");

    // Missing, empty, truncated, binary, another document: only the unreadable ones are worth a line.
    const std::pair<const char*, bool> bad[] = {{nullptr, true}, {"", false}, {"<highscores><singleA><entry/>", true},
                                                {"\x89PNG\r\n\x1a\n\x01", true}, {"<settings><singleA><entry/></singleA></settings>", false}};
    for (int i = 0; i < 5; ++i) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(text(loaded(tmpPath("bad" + std::to_string(i), bad[i].first))), DEFAULTS) << i;
        const std::string log = testing::internal::GetCapturedStdout();
        EXPECT_EQ(log.find("(info) Could not load highscores: ") != std::string::npos, bad[i].second) << i;
    }
}

TEST(Highscores, ASaveThatDiesHalfWayKeepsThePreviousFile) {
    const std::string path = tmpPath("highscores.xml");
    numbered().save(path);
    EXPECT_EQ(text(loaded(path, Highscores())), text(numbered()));
    withDefaults().save(path);
    for (bool killed : {true, false}) {
        const pid_t pid = fork();
        if (pid == 0) {
            // The size limit stops the write at 300 bytes: SIGXFSZ kills the writer, or, ignored, the write fails.
            if (!killed) std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit = {300, 300};
            setrlimit(RLIMIT_FSIZE, &limit);
            numbered().save(path);
            _exit(0);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        EXPECT_EQ(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ, killed);
        EXPECT_EQ(text(loaded(path, Highscores())), DEFAULTS) << killed;
    }
    EXPECT_NE(access((path + ".tmp").c_str(), F_OK), 0);  // a failed write cleans up after itself
}
