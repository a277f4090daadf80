#ifndef VANTORIX_RESOURCES_HIGHSCORES_H
#define VANTORIX_RESOURCES_HIGHSCORES_H

#include <string>

#include "tools/highscoretable.h"

namespace norvane {
namespace xml {
class Node;
}
}  // namespace norvane

namespace vantorix {

extern const char* const HIGHSCORES_DEFAULT_NAME;  // 17 hyphens
extern const char* const XML_HIGHSCORES;
extern const char* const XML_HIGHSCORES_SINGLE_A;
extern const char* const XML_HIGHSCORES_SINGLE_B;
extern const char* const XML_HIGHSCORES_MULTI;

struct HighscoreEntry {
    HighscoreEntry() = default;
    HighscoreEntry(std::string name, unsigned int score) : name(std::move(name)), score(score) {}

    bool operator>(const HighscoreEntry& other) const { return score > other.score; }  // names play no part

    void getFromNode(const norvane::xml::Node* node);
    void putInNode(norvane::xml::Node* node) const;

    std::string name;  // ISO-8859-1, as the fonts index it
    unsigned int score = 0;
};

// The tables of the three game modes and their file.
class Highscores {
public:
    void setDefaults();  // the tables a fresh installation shows
    void clear();        // every entry empty with score 0

    // A missing, unreadable or malformed file is logged and changes nothing; entries are taken in
    // file order, unsorted, and slots the file does not reach keep what they held.
    void load(const std::string& path);
    void getFromNode(const norvane::xml::Node* root);

    norvane::xml::Node* buildDomTree() const;  // the caller owns the tree
    // Replaces the file only once the new one is completely written; the previous file survives a
    // crash or a full disk.
    void save(const std::string& path) const;

    norvane::HighscoreTable<HighscoreEntry, 10> singleA;
    norvane::HighscoreTable<HighscoreEntry, 10> singleB;
    norvane::HighscoreTable<HighscoreEntry, 10> multi;
};

}  // namespace vantorix

#endif
