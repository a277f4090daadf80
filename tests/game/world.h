#ifndef TESTS_GAME_WORLD_H
#define TESTS_GAME_WORLD_H

#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <string>

#include "controls/trigger.h"
#include "game/asteroid.h"
#include "game/extra.h"
#include "game/foe.h"
#include "game/game.h"
#include "game/laser.h"
#include "game/player.h"
#include "resources/resources.h"
#include "specs.h"
#include "support/surfaces.h"
#include "support/window.h"
#include "vantorix.h"

// The game on the shipped data in a window, sound to the wave writer; resources made once, as the
// program does. Games start with a fixed seed; their clock runs by hand, with keys in SDL's queue.
class GameWorld : public WindowTest {
protected:
    void SetUp() override;
    void TearDown() override;

    void start(vantorix::GameType type, unsigned int seed = 1);  // replaces a running game
    void run(unsigned int ms, unsigned int step = 10);           // the game's passes of `step` ms
    void frames(unsigned int ms);                                // the loop's: events, perform, draw
    void key(SDLKey key, bool down);                             // into SDL's event queue
    void tap(SDLKey key);                                        // down and up, a frame each
    SurfacePtr shot(const std::string& name);  // a drawn frame, kept as <name>.png to be looked at

    // Game objects placed by hand, in the engines where the game keeps them.
    vantorix::Asteroid* addAsteroid(vantorix::AsteroidType type, int energy, float x, float y);
    vantorix::Laser* addLaser(vantorix::VantorixSprite* owner, float x, float y);
    vantorix::Extra* addExtra(vantorix::ExtraType type, float x, float y);
    void shootAsteroid(vantorix::Player* ship);  // a counted one, destroyed by `ship`'s laser
    // Tests `a` against `b` as a pass does, then deletes what the collisions queued.
    void collide(norvane::sprites::SpriteEngine& a, norvane::sprites::SpriteEngine& b);
    int count(const norvane::sprites::SpriteEngine& engine, bool (*is)(const norvane::sprites::Sprite*)) const;
};

#endif
