#ifndef NORVANE_TOOLS_HIGHSCORETABLE_H
#define NORVANE_TOOLS_HIGHSCORETABLE_H

#include <cstddef>

namespace norvane {

const char* const XML_HIGHSCORES_HIGHSCORES = "highscores";
const char* const XML_HIGHSCORES_ENTRY = "entry";

// A ranking that is always full: index 0 is the best, unreached slots hold T(). T needs operator>.
template <typename T, size_t N>
class HighscoreTable {
public:
    // The rank `e` would take, or -1 if it beats no entry. On ties the older entry keeps the better rank.
    int rankOf(const T& e) const {
        for (size_t i = 0; i < N; ++i) {
            if (e > entries[i]) return static_cast<int>(i);
        }
        return -1;
    }

    // Enters `e` at rankOf(e), pushing the last entry out, and returns that rank.
    int add(const T& e) {
        const int rank = rankOf(e);
        if (rank < 0) return rank;
        for (size_t k = N - 1; k > static_cast<size_t>(rank); --k) entries[k] = entries[k - 1];
        entries[rank] = e;
        return rank;
    }

    T& operator[](size_t i) { return entries[i]; }
    const T& operator[](size_t i) const { return entries[i]; }
    static constexpr size_t size() { return N; }

private:
    T entries[N]{};
};

}  // namespace norvane

#endif
