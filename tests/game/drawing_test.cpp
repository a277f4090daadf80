#include "world.h"

using namespace vantorix;

namespace {

// Pixels of a rectangle of the game space (y upwards) whose colour is near (r, g, b); with r < 0,
// the summed brightness of the rectangle.
long pixelsLike(SDL_Surface* picture, int left, int bottom, int width, int height, int r, int g = 0, int b = 0) {
    long sum = 0;
    for (int y = bottom; y < bottom + height; ++y) {
        for (int x = left; x < left + width; ++x) {
            const Rgba c = pixelAt(picture, x, 599 - y);
            sum += r < 0 ? c.r + c.g + c.b : near(c, r, g, b, 255, 60);
        }
    }
    return sum;
}

}  // namespace

// Pictures of each mode, the HUD, a stage's end and the game-over table, kept in the test's
// directory to be looked at; the checks find what each must show where it belongs.
TEST_F(GameWorld, DrawsEachModeTheHudAndTheTexts) {
    const char* names[] = {"mode_a", "mode_b", "two_players"};
    for (GameType type : {gtSingleA, gtSingleB, gtMulti}) {
        SCOPED_TRACE(names[type]);
        start(type);
        game->initLevel(7);  // both pirates in, and the ships take no hits, so the scene lasts
        game->spawnFoe(-1);
        game->spawnFoe(1);
        for (Player* ship : game->ships) {
            if (ship) ship->collidable = false;
        }
        const long bare = pixelsLike(shot(std::string(names[type]) + "_start").get(), 692, 492, 96, 96, -1);
        // Every upgrade collected as the ship would, then two seconds of weaving and firing.
        for (ExtraType kind : {etLaserType, etSpeed, etFireRate, etTimeWarp, etEnergy}) {
            for (int i = 0; i < 6; ++i) game->ships[0]->collectExtra(addExtra(kind, 0, 0));
        }
        const SDLKey fire = type == gtMulti ? SDLK_RCTRL : SDLK_SPACE;
        key(fire, true);
        for (SDLKey turn : {SDLK_RIGHT, SDLK_LEFT, SDLK_RIGHT, SDLK_LEFT}) {
            key(turn, true);
            frames(500);
            key(turn, false);
        }
        key(fire, false);
        EXPECT_EQ(game->shipLaserEngine.size() > 0, type != gtSingleB) << "fire reaches the ship";
        frames(3000);  // the HUD's blinking is over
        SurfacePtr play = shot(names[type]);
        EXPECT_GT(pixelsLike(play.get(), 692, 492, 96, 96, -1), bare * 3 / 2) << "the HUD lights its gauges";
        EXPECT_GT(pixelsLike(play.get(), 690, 440, 90, 30, 255), 50) << "the red score";
        if (type == gtMulti) {
            EXPECT_GT(pixelsLike(play.get(), 20, 440, 140, 30, 0, 0, 255), 20) << "the blue score";
        }
    }

    start(gtSingleA);
    game->killsLeft = 1;
    game->spawnedAsteroids = 40;
    shootAsteroid(game->ships[0]);
    run(1000 + 3000 + 500);  // the text has faded in, the bonus is being paid
    SurfacePtr bonus = shot("stage_complete");
    EXPECT_GT(pixelsLike(bonus.get(), 250, 305, 300, 35, 128, 128, 255), 100) << "Stage 1 complete.";
    EXPECT_GT(pixelsLike(bonus.get(), 280, 265, 240, 35, 128, 128, 255), 60) << "Bonus: ...";

    game->ships[0]->score = 600;
    game->ships[0]->explode();
    run(10);
    ASSERT_EQ(game->stagePhase, spNameEntry);
    for (SDLKey letter : {SDLK_a, SDLK_c, SDLK_e, SDLK_RETURN}) tap(letter);
    frames(1000);
    ASSERT_EQ(game->stagePhase, spGameOver);
    EXPECT_EQ(resources->highscores.singleA[9].name, "ace");
    SurfacePtr over = shot("game_over");
    EXPECT_GT(pixelsLike(over.get(), 200, 515, 400, 35, 255, 77, 77), 100) << "G A M E   O V E R";
    EXPECT_GT(pixelsLike(over.get(), 250, 150, 300, 320, 255, 255, 0), 500) << "the yellow table";
    EXPECT_GT(pixelsLike(over.get(), 200, 55, 400, 35, 255, 255, 255), 100) << "Press fire ...";
}
