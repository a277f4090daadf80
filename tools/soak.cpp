// Random input for a long time through the title menu, its dialogs and all three modes, games
// started, paused, lost, restarted and left, printing the memory every minute. Memory must end
// flat, and a sanitizer build must end without a report.
//
//   xvfb-run -a -s "-screen 0 1024x768x24" nice build/tools/soak [minutes]
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "audio/core.h"
#include "game/game.h"
#include "gui/standard.h"
#include "menu/menu.h"
#include "resources/resources.h"
#include "session.h"
#include "vantorix.h"

using vantorix::resources;

namespace {

// The keys a player would reach for; F11 and F12 stay out (full screen and screenshot files).
const SDLKey KEYS[] = {SDLK_LEFT,  SDLK_RIGHT,  SDLK_UP,    SDLK_DOWN,  SDLK_RETURN, SDLK_SPACE, SDLK_ESCAPE,
                       SDLK_TAB,   SDLK_RCTRL,  SDLK_LCTRL, SDLK_RSHIFT, SDLK_LSHIFT, SDLK_RALT, SDLK_LALT,
                       SDLK_p,     SDLK_w,      SDLK_a,     SDLK_s,     SDLK_d,      SDLK_x,     SDLK_BACKSPACE};
// Weights: steering and firing most, leaving and confirming least.
const int WEIGHTS[] = {6, 6, 4, 4, 2, 4, 1, 1, 8, 8, 3, 3, 1, 1, 1, 3, 4, 3, 4, 2, 1};
const double IDLE_MENU_S = 4.0;  // then the soak starts the next mode itself
const double LONGEST_GAME_S = 60.0;  // then it quits the game through the pause menu

double now() {
    timespec t{};
    clock_gettime(CLOCK_MONOTONIC, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

}  // namespace

int main(int argc, char** argv) {
    const double minutes = argc > 1 ? std::atof(argv[1]) : 10.0;
    if (minutes <= 0.0) {
        std::fprintf(stderr, "usage: soak [minutes]\n");
        return EXIT_FAILURE;
    }
    std::mt19937 rng(16);
    std::discrete_distribution<int> pick(std::begin(WEIGHTS), std::end(WEIGHTS));
    std::uniform_int_distribution<int> holdFrames(1, 60);
    bool held[std::size(KEYS)] = {};
    int release[std::size(KEYS)] = {};

    session::start();
    norvane::gui::Button* const modes[] = {resources->btnSinglePlayerA, resources->btnSinglePlayerB,
                                       resources->btnMultiplayer};
    int games[3] = {}, restarts = 0, nextMode = 0;
    bool wasOver = false;
    const double begin = now();
    double menuSince = begin, gameSince = begin, nextReport = begin;
    int minute = 0;
    unsigned long frames = 0;
    std::printf("soak: %.1f minutes of random input\n", minutes);
    while (true) {
        const double t = now();
        if (t >= nextReport) {
            std::printf("  %4.1f min  RSS %6.1f MiB  peak %6.1f MiB  games A %d, B %d, two ships %d, restarts %d  frames %lu\n",
                        (t - begin) / 60.0, static_cast<double>(session::rssKiB()) / 1024.0,
                        static_cast<double>(session::peakRssKiB()) / 1024.0, games[0], games[1], games[2], restarts, frames);
            std::fflush(stdout);
            if (t - begin >= minutes * 60.0) break;
            ++minute;
            nextReport = begin + std::min(60.0 * minute, minutes * 60.0);
        }
        for (size_t k = 0; k < std::size(KEYS); ++k) {
            if (held[k] && --release[k] <= 0) {
                session::key(KEYS[k], false);
                held[k] = false;
            }
        }
        const bool inGame = vantorix::game != nullptr;
        if (inGame) menuSince = t;
        if (!inGame) gameSince = t;
        if (resources->pQuit->getVisible()) {
            session::key(SDLK_ESCAPE, true);  // never answer the quit question: the soak would end
            session::key(SDLK_ESCAPE, false);
        } else if (!inGame && t - menuSince > IDLE_MENU_S) {
            // Random keys rarely find the mode buttons: go there now and then, in turn.
            const SDLKey go = resources->pMainMenu->getVisible() ? SDLK_RETURN : SDLK_ESCAPE;
            if (go == SDLK_RETURN) {
                modes[nextMode]->setFocused(true);
                menuSince = t;
            }
            session::key(go, true);
            session::key(go, false);
        } else if (inGame && t - gameSince > LONGEST_GAME_S) {
            // Out of a dialog first; a name is entered, a lost game left, a running one quit.
            const bool paused = resources->pInGame->getVisible();
            const bool dialog = resources->pControls->getVisible() || resources->pSoundSettings->getVisible() ||
                                resources->pGetKey->getVisible();
            const bool naming = vantorix::game->stagePhase == vantorix::spNameEntry;
            if (paused) (*resources->gui)["btnInGameQuit"]->setFocused(true);
            SDLKey go = SDLK_p;
            if (dialog) {
                go = SDLK_ESCAPE;
            } else if (paused) {
                go = SDLK_RETURN;
            } else if (naming) {
                session::key(SDLK_x, true);
                session::key(SDLK_x, false);
                go = SDLK_RETURN;
            } else if (vantorix::game->gameOverShown) {
                go = SDLK_ESCAPE;
            }
            session::key(go, true);
            session::key(go, false);
        } else if (rng() % 4 == 0) {
            const int k = pick(rng);
            if (!held[k]) {
                session::key(KEYS[k], true);
                held[k] = true;
                release[k] = holdFrames(rng);
            }
        }
        vantorix::Game* before = vantorix::game;
        session::frame();
        ++frames;
        if (vantorix::game && vantorix::game != before) {
            ++games[vantorix::game->type];
            if (vantorix::game->type == nextMode) nextMode = (nextMode + 1) % 3;
        } else if (vantorix::game && wasOver && !vantorix::game->gameOverShown) {
            ++restarts;
        }
        wasOver = vantorix::game && vantorix::game->gameOverShown;
        if (!norvane::application->state) {
            std::fprintf(stderr, "The program left its loop.\n");
            return EXIT_FAILURE;
        }
    }

    // Teardown as the program does it, so that the leak checker sees only what remains.
    delete vantorix::game;
    delete vantorix::menu;
    delete resources;
    resources = nullptr;
    norvane::audio::cleanUp();
    std::printf("soak: done, %lu frames, %d games\n", frames, games[0] + games[1] + games[2]);
    return EXIT_SUCCESS;
}
