#ifndef VANTORIX_VANTORIX_H
#define VANTORIX_VANTORIX_H

#include <vector>

#include "framework/application.h"

namespace vantorix {

class Resources;
class Menu;
class Game;
class VantorixSprite;

// The game's log groups; the framework's have negative ids.
const int dbgVantorixCore = 1;
const int dbgVantorixGame = 2;
const int dbgVantorixResources = 3;

extern Resources* resources;
extern Menu* menu;
extern Game* game;  // null while no game runs; ~Game clears it
// Sprites are never deleted while the engines run; they wait here for a safe point. Drain it by
// index: a deleted sprite may queue others.
extern std::vector<VantorixSprite*> deleteQueue;

// The game's application object: starting it up and shutting it down is all it adds to the loop.
class Vantorix : public norvane::FrameRateLimitedApplication {
public:
    Vantorix();            // a failed start-up ends the process with status 0
    ~Vantorix() override;  // ends the process

private:
    // The destructor's work, also the end of a failed start-up: releases what the start-up made,
    // newest first, and quits.
    [[noreturn]] static void shutDown();
};

}  // namespace vantorix

extern vantorix::Vantorix* application;  // set by main

#endif
