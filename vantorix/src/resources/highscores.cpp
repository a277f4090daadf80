#include "resources/highscores.h"

#include "debug/log.h"
#include "files/groupprivilege.h"
#include "vantorix.h"
#include "xml/xml.h"

namespace vantorix {

const char* const HIGHSCORES_DEFAULT_NAME = "-----------------";
const char* const XML_HIGHSCORES = "highscores";
const char* const XML_HIGHSCORES_SINGLE_A = "singleA";
const char* const XML_HIGHSCORES_SINGLE_B = "singleB";
const char* const XML_HIGHSCORES_MULTI = "multi";

namespace {

const char* const XML_NAME = "name";
const char* const XML_SCORE = "score";

const unsigned int DEFAULT_SCORES_A[] = {100000, 50000, 25000, 10000, 8000, 6000, 4000, 2000, 1000, 500};
const unsigned int DEFAULT_SCORES_B[] = {20000, 17500, 15000, 12500, 10000, 7500, 5000, 2500, 1000, 500};

using Table = norvane::HighscoreTable<HighscoreEntry, 10>;

void fill(Table& table, const unsigned int (&scores)[10]) {
    for (unsigned int score : scores) table.add(HighscoreEntry(HIGHSCORES_DEFAULT_NAME, score));
}

void readTable(Table& table, const norvane::xml::Node* node) {
    size_t slot = 0;
    for (const norvane::xml::Node* child : node->children) {
        if (slot == table.size()) break;
        if (child->name != norvane::XML_HIGHSCORES_ENTRY) continue;
        table[slot++].getFromNode(child);
    }
}

norvane::xml::Node* tableNode(const char* name, const Table& table) {
    auto* node = new norvane::xml::Node(name, nullptr);
    for (size_t i = 0; i < table.size(); ++i) {
        auto* entry = new norvane::xml::Node(norvane::XML_HIGHSCORES_ENTRY, nullptr);
        table[i].putInNode(entry);
        *node += entry;
    }
    return node;
}

}  // namespace

void HighscoreEntry::getFromNode(const norvane::xml::Node* node) {
    name = node->getAttribute(XML_NAME, std::string());
    // Read wide, so a hostile value cannot wrap into a top score.
    const long value = node->getAttributeLong(XML_SCORE, 0);
    score = value < 0 ? 0 : value > 0xFFFFFFFFL ? 0xFFFFFFFFu : static_cast<unsigned int>(value);
}

void HighscoreEntry::putInNode(norvane::xml::Node* node) const {
    (*node)[XML_NAME] = name;
    node->setAttributeLong(XML_SCORE, static_cast<long>(score));
}

void Highscores::setDefaults() {
    clear();
    fill(singleA, DEFAULT_SCORES_A);
    fill(singleB, DEFAULT_SCORES_B);
    fill(multi, DEFAULT_SCORES_A);
}

void Highscores::clear() {
    for (Table* table : {&singleA, &singleB, &multi}) {
        for (size_t i = 0; i < table->size(); ++i) (*table)[i] = HighscoreEntry();
    }
}

void Highscores::load(const std::string& path) {
    norvane::xml::Node* root = nullptr;
    try {
        root = norvane::xml::loadXML(path.c_str());
    } catch (const std::string& text) {
        norvane::debug::info(dbgVantorixResources, "Could not load highscores: %s", text.c_str());
        return;
    }
    if (!root) return;
    getFromNode(root);
    delete root;
}

void Highscores::getFromNode(const norvane::xml::Node* root) {
    if (root->name != XML_HIGHSCORES) return;
    for (const norvane::xml::Node* child : root->children) {
        if (child->name == XML_HIGHSCORES_SINGLE_A) {
            readTable(singleA, child);
        } else if (child->name == XML_HIGHSCORES_SINGLE_B) {
            readTable(singleB, child);
        } else if (child->name == XML_HIGHSCORES_MULTI) {
            readTable(multi, child);
        }
    }
}

norvane::xml::Node* Highscores::buildDomTree() const {
    auto* root = new norvane::xml::Node(XML_HIGHSCORES, nullptr);
    *root += tableNode(XML_HIGHSCORES_SINGLE_A, singleA);
    *root += tableNode(XML_HIGHSCORES_SINGLE_B, singleB);
    *root += tableNode(XML_HIGHSCORES_MULTI, multi);
    return root;
}

void Highscores::save(const std::string& path) const {
    norvane::xml::Node* root = buildDomTree();
    const norvane::GroupPrivilege privilege;  // the table is shared by every player of the group
    root->saveXML(path.c_str());
    delete root;
}

}  // namespace vantorix
