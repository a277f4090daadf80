#include "resources/highscores.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "support/files.h"

using vantorix::HighscoreEntry;
using vantorix::Highscores;

namespace {

// The three tables as "name:score " entries, each closed by "| ".
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

Highscores loaded(const std::string& path = "", bool defaults = true) {
    Highscores h;
    if (defaults) h.setDefaults();
    if (!path.empty()) h.load(path);
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
    Highscores h;
    h.setDefaults();
    EXPECT_EQ(text(h), DEFAULTS);
    EXPECT_EQ(h.singleA.add(HighscoreEntry("tie", 8000)), 5);
    EXPECT_EQ(h.singleA.add(HighscoreEntry("low", 1000)), -1);  // the eleventh
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
    EXPECT_EQ(text(loaded(writeFile("partial.xml", file + "</multi></highscores>"))),
              DEFAULT_A + "c:10 a:300000 :0 big:4294967295 " + unnamed({10000, 7500, 5000, 2500, 1000, 500}) +
                  "| m1:1 m2:2 m3:3 m4:4 m5:5 m6:6 m7:7 m8:8 m9:9 m10:10 | ");

    // Missing, empty, truncated, binary, another document: only the unreadable ones are worth a line.
    const std::pair<const char*, bool> bad[] = {{nullptr, true}, {"", false}, {"<highscores><singleA><entry/>", true},
                                                {"\x89PNG\r\n\x1a\n\x01", true}, {"<settings><singleA><entry/></singleA></settings>", false}};
    for (const auto& [content, logged] : bad) {
        const std::string path = content ? writeFile("bad.xml", content) : scratchPath("missing.xml");
        SCOPED_TRACE(content ? content : "(missing)");
        const std::string log = captured([&] { EXPECT_EQ(text(loaded(path)), DEFAULTS); });
        EXPECT_EQ(log.find("(info) Could not load highscores: ") != std::string::npos, logged);
    }
}

TEST(Highscores, ASaveThatDiesHalfWayKeepsThePreviousFile) {
    const std::string path = scratchPath("highscores.xml");
    numbered().save(path);
    EXPECT_EQ(text(loaded(path, false)), text(numbered()));
    loaded().save(path);
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
        EXPECT_EQ(text(loaded(path, false)), DEFAULTS) << killed;
    }
    EXPECT_NE(access((path + ".tmp").c_str(), F_OK), 0);  // a failed write cleans up after itself
}
