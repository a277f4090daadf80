#include "vantorix.h"

#include <string>

#include "audio/core.h"
#include "buildinfo.h"
#include "debug/log.h"
#include "files/sysdirs.h"
#include "game/game.h"
#include "math/random.h"
#include "menu/menu.h"
#include "norvane.h"
#include "resources/resources.h"
#include "screen.h"
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
    try {
        norvane::audio::init("", 44100);
    } catch (const std::string& text) {
        norvane::debug::critical(dbgVantorixCore, "Could not intialize norvane:audio: %s\n", text.c_str());
        shutDown();
    }
    const Settings& settings = resources->settings;
    try {
        resources->setResolution(settings.xRes, settings.yRes, 32, settings.fullscreen);
    } catch (const std::string& text) {
        norvane::debug::critical(dbgVantorixCore, "InitScreen() failed: %s\n", text.c_str());
        shutDown();
    }
    norvane::setWindowCaption("Vantorix");
    norvane::setWindowIcon((dirManager.getSubDir(norvane::sdData, "", false) + "images_gui/icon.png").c_str());
    norvane::showCursor(false);
    try {
        resources->init();
    } catch (const std::string& text) {
        // Leaving the constructor by the exception ends the process without saving the settings.
        norvane::debug::error(dbgVantorixCore, "Could not initialize resources: %s", text.c_str());
        throw;
    }
    menu = new Menu;
    menu->activate();
    queue = resources->queue;
}

Vantorix::~Vantorix() { shutDown(); }

void Vantorix::shutDown() {
    // The objects of the second stage are released here, newest first, before the process ends.
    delete game;  // brings the menu back, which goes next
    game = nullptr;
    delete menu;
    menu = nullptr;
    if (resources) {
        resources->saveSettings();
        delete resources;
        resources = nullptr;
    }
    norvane::debug::debug(dbgVantorixCore, "Quitting Norvane.");
    norvane::quit();
}

}  // namespace vantorix
