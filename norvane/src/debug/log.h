#ifndef NORVANE_DEBUG_LOG_H
#define NORVANE_DEBUG_LOG_H

#include <cstdarg>
#include <map>
#include <string>

namespace norvane {

namespace xml {
class Node;
}

// The framework's log groups; applications use positive ids.
const int dbgCore = -1;
const int dbgControls = -2;
const int dbgGui = -3;
const int dbgDdd = -4;
const int dbgMath = -5;
const int dbgSprites = -6;
const int dbgImages = -7;
const int dbgFonts = -8;
const int dbgXml = -9;
const int dbgAudio = -10;
const int dbgCollision = -11;
const int dbgAnimations = -12;
const int dbgResources = -13;

struct DebugGroupDef {
    int id;
    const char* shortName;
};

// Ended by the entry with id 0.
extern const DebugGroupDef defDebugGroups[];

namespace debug {

enum DebugLevel { LEVEL_NONE = 0, LEVEL_CRITICAL, LEVEL_ERROR, LEVEL_WARNING, LEVEL_INFO, LEVEL_DEBUG };

extern const char* const LEVEL_NAME[];

struct Group {
    Group() = default;
    Group(std::string name, DebugLevel level) : name(std::move(name)), level(level) {}

    std::string name = "undefined";
    DebugLevel level = LEVEL_INFO;  // messages up to this severity are printed
};

// Id to group; filled at start-up before any other thread runs, read without locks afterwards.
class Groups : public std::map<int, Group> {
public:
    void loadSettings(const char* filename);
    void getSettingsFromNode(const xml::Node* node);
};

extern Groups groups;

void init();
DebugLevel debugLevel(const char* name);

void vmessagef(DebugLevel level, int group, const char* format, va_list args);
void critical(int group, const char* format, ...) __attribute__((format(printf, 2, 3)));
void error(int group, const char* format, ...) __attribute__((format(printf, 2, 3)));
void warning(int group, const char* format, ...) __attribute__((format(printf, 2, 3)));
void info(int group, const char* format, ...) __attribute__((format(printf, 2, 3)));
// Debug-level output is never produced; the calls stay as documentation of what happens.
inline void debug(int, const char*, ...) {}

}  // namespace debug
}  // namespace norvane

#endif
