#include "vantorix.h"

#include <string>

#include "buildinfo.h"
#include "debug/log.h"
#include "math/random.h"
#include "norvane.h"
#include "resources/resources.h"
#include "specs.h"

vantorix::Vantorix* application = nullptr;

namespace vantorix {

Resources* resources = nullptr;
Menu* menu = nullptr;
Game* game = nullptr;
std::vector<VantorixSprite*> deleteQueue;

namespace {

const norvane::DebugGroupDef GAME_DEBUG_GROUPS[] = {
    {dbgVantorixCore, "vantorix:core"},
    {dbgVantorixGame, "vantorix:game"},
    {dbgVantorixResources, "vantorix:resources"},
};

}  // namespace

Vantorix::Vantorix() {
    game = nullptr;
    resources = nullptr;
    maxTicks = specs.maxFrameTime;
    minTicks = specs.minFrameTime - specs.minFrameTimeOffset;
    for (const norvane::DebugGroupDef& def : GAME_DEBUG_GROUPS) {
        norvane::debug::groups[def.id] = norvane::debug::Group(def.shortName, norvane::debug::LEVEL_DEBUG);
    }
    norvane::debug::info(dbgVantorixCore, "Vantorix version %s.", getFullVersion().c_str());
    try {
        norvane::init(norvane::SUBSYSTEM_VIDEO | norvane::SUBSYSTEM_JOYSTICK, true);
    } catch (const std::string& text) {
        norvane::debug::critical(dbgVantorixCore, "Init() failed: %s\n", text.c_str());
        shutDown();
    }
    norvane::randomize();
    // Second stage: resources, audio, screen, window, title menu; each failure ends in shutDown().
    try {
        resources = new Resources;
    } catch (const std::string& text) {
        norvane::debug::critical(dbgVantorixCore, "Could not load resources: %s\n", text.c_str());
        shutDown();
    }
}

Vantorix::~Vantorix() { shutDown(); }

void Vantorix::shutDown() {
    // The objects of the second stage are released here, newest first, before the process ends.
    if (resources) {
        resources->saveSettings();
        delete resources;
        resources = nullptr;
    }
    norvane::debug::debug(dbgVantorixCore, "Quitting Norvane.");
    norvane::quit();
}

}  // namespace vantorix
