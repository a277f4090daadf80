#include "debug/log.h"

#include <cstdio>
#include <cstring>
#include <memory>

#include "xml/xml.h"

namespace norvane {

const DebugGroupDef defDebugGroups[] = {
    {dbgCore, "core"},     {dbgControls, "controls"},   {dbgGui, "gui"},
    {dbgDdd, "ddd"},       {dbgMath, "math"},           {dbgSprites, "sprites"},
    {dbgImages, "images"}, {dbgFonts, "fonts"},         {dbgXml, "xml"},
    {dbgAudio, "audio"},   {dbgCollision, "collision"}, {dbgAnimations, "animations"},
    {dbgResources, "resources"}, {0, ""},
};

namespace debug {

const char* const LEVEL_NAME[] = {"none", "critical", "error", "warning", "info", "debug"};

namespace {
const char* const XML_ROOT = "debug";
const char* const XML_GROUP = "group";
const char* const XML_NAME = "name";
const char* const XML_LEVEL = "level";
}  // namespace

Groups groups;

void init() {}

DebugLevel debugLevel(const char* name) {
    for (int i = LEVEL_CRITICAL; i <= LEVEL_DEBUG; ++i) {
        if (std::strcmp(name, LEVEL_NAME[i]) == 0) return static_cast<DebugLevel>(i);
    }
    return LEVEL_NONE;
}

void vmessagef(DebugLevel level, int group, const char* format, va_list args) {
    if (!format) return;
    const Group& g = groups.try_emplace(group).first->second;
    if (level > g.level) return;
    std::printf("[%s] (%s) ", g.name.c_str(), LEVEL_NAME[level]);
    std::vprintf(format, args);
    std::putchar('\n');
    std::fflush(stdout);
}

#define NORVANE_MESSAGE(fn, level)                         \
    void fn(int group, const char* format, ...) {          \
        va_list args;                                      \
        va_start(args, format);                            \
        vmessagef(level, group, format, args);             \
        va_end(args);                                      \
    }
NORVANE_MESSAGE(critical, LEVEL_CRITICAL)
NORVANE_MESSAGE(error, LEVEL_ERROR)
NORVANE_MESSAGE(warning, LEVEL_WARNING)
NORVANE_MESSAGE(info, LEVEL_INFO)
#undef NORVANE_MESSAGE

void Groups::loadSettings(const char* filename) {
    std::unique_ptr<xml::Node> root(xml::loadXML(filename));
    if (root && root->name == XML_ROOT) getSettingsFromNode(root.get());
}

void Groups::getSettingsFromNode(const xml::Node* node) {
    for (const xml::Node* child : node->children) {
        if (child->name != XML_GROUP) continue;
        const std::string* name = child->getAttribute(XML_NAME);
        const std::string* level = child->getAttribute(XML_LEVEL);
        if (!name || !level) continue;
        const DebugLevel threshold = debugLevel(level->c_str());
        for (auto& entry : *this) {
            if (entry.second.name == *name) entry.second.level = threshold;
        }
    }
}

}  // namespace debug
}  // namespace norvane
