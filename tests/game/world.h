#ifndef TESTS_GAME_WORLD_H
#define TESTS_GAME_WORLD_H

#include <gtest/gtest.h>

#include "game/asteroid.h"
#include "game/game.h"
#include "game/laser.h"
#include "game/player.h"
#include "support/window.h"

// A running game on the shipped data in a window under Xvfb, with sound going to the wave writer.
// The resources are made once, as the program makes them once; each test starts its games with a
// fixed seed and drives their clock by hand through the state's own perform.
class GameWorld : public WindowTest {
protected:
    void SetUp() override;
    void TearDown() override;

    void start(vantorix::GameType type, unsigned int seed = 1);  // replaces a running game
    void run(unsigned int ms, unsigned int step = 10);           // whole passes of `step` ms

    // Game objects placed by hand, in the engines where the game keeps them.
    vantorix::Asteroid* addAsteroid(vantorix::AsteroidType type, int energy, float x, float y, bool counted = true);
    vantorix::Laser* addLaser(vantorix::VantorixSprite* owner, float x, float y);
    void shootAsteroid(vantorix::Player* ship);  // a counted one, destroyed by `ship`'s laser
    // Tests `a` against `b` as a pass does, then deletes what the collisions queued.
    void collide(norvane::sprites::SpriteEngine& a, norvane::sprites::SpriteEngine& b);
    int count(const norvane::sprites::SpriteEngine& engine, bool (*is)(const norvane::sprites::Sprite*)) const;
};

#endif
