// What a frame of the busiest game costs: a late stage with two ships at full weapons behind their
// shields, both pirates firing and the sky full of asteroids and explosions, played in the real
// window at the game's own frame pacing.
//
//   xvfb-run -a -s "-screen 0 1024x768x24" build/tools/bench_game [seconds [screenshot.png]]
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "allocations.h"
#include "game/foe.h"
#include "game/game.h"
#include "game/player.h"
#include "math/random.h"
#include "screenshot.h"
#include "session.h"
#include "specs.h"
#include "vantorix.h"

using vantorix::game;
using vantorix::specs;

namespace {

const unsigned int SEED = 16;
const unsigned int STAGE = 15;  // large asteroids nearly always, armoured ones, pirate volleys
const double WARM_UP_S = 5.0;

double now(clockid_t clock) {
    timespec t{};
    clock_gettime(clock, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

// Keeps the scene at its peak: both pirates present, upgrades full, shields fed, no end of stage.
void holdScene() {
    for (vantorix::Player* ship : game->ships) {
        ship->setSpeedupCount(specs.maxSpeedUpgrades);
        ship->setFireRateCount(specs.maxFireRate);
        ship->laserType = static_cast<short>(specs.maxLaserType);
        ship->energy = specs.maxEnergy;
    }
    game->killsLeft = 1000000;
    game->spawnFoe(-1);
    game->spawnFoe(1);
}

// Both players hold fire and shield and sweep across the screen, out of phase.
void steer(double elapsed) {
    static int phase = -1;
    const int next = static_cast<int>(elapsed / 0.8) % 2;
    if (next == phase) return;
    phase = next;
    session::key(next ? SDLK_LEFT : SDLK_RIGHT, false);
    session::key(next ? SDLK_RIGHT : SDLK_LEFT, true);
    session::key(next ? SDLK_d : SDLK_a, false);
    session::key(next ? SDLK_a : SDLK_d, true);
}

double percentile(std::vector<double>& values, double p) {
    if (values.empty()) return 0.0;
    const size_t i = std::min(values.size() - 1, static_cast<size_t>(p * static_cast<double>(values.size())));
    std::nth_element(values.begin(), values.begin() + static_cast<long>(i), values.end());
    return values[i];
}

}  // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::atof(argv[1]) : 20.0;
    if (seconds <= 0.0) {
        std::fprintf(stderr, "usage: bench_game [seconds]\n");
        return EXIT_FAILURE;
    }
    session::start();
    norvane::randomize(SEED);
    auto* const played = new vantorix::Game(vantorix::gtMulti);
    played->activate();
    game->initLevel(STAGE);
    for (SDLKey held : {SDLK_RCTRL, SDLK_LCTRL, SDLK_RSHIFT, SDLK_LSHIFT}) session::key(held, true);

    std::vector<double> cpuMs, wallMs;
    cpuMs.reserve(static_cast<size_t>(seconds * 1000.0));
    wallMs.reserve(cpuMs.capacity());
    const double begin = now(CLOCK_MONOTONIC);
    double measuredFrom = 0.0, cpuFrom = 0.0, elapsed = 0.0;
    size_t allocationsFrom = 0, gameAllocationsFrom = 0;
    std::map<std::string, double> threadsFrom;
    long sprites[6] = {};
    bool measuring = false;
    while (elapsed < WARM_UP_S + seconds) {
        if (!measuring && elapsed >= WARM_UP_S) {
            measuring = true;
            threadsFrom = session::threadCpuSeconds();
            measuredFrom = now(CLOCK_MONOTONIC);
            cpuFrom = session::cpuSeconds();
            allocationsFrom = allocations;
            gameAllocationsFrom = threadAllocations;
        }
        holdScene();
        steer(elapsed);
        const double cpu = now(CLOCK_PROCESS_CPUTIME_ID), wall = now(CLOCK_MONOTONIC);
        session::frame();
        if (game != played) {
            std::fprintf(stderr, "The game ended during the benchmark.\n");
            return EXIT_FAILURE;
        }
        if (measuring) {
            cpuMs.push_back((now(CLOCK_PROCESS_CPUTIME_ID) - cpu) * 1000.0);
            wallMs.push_back((now(CLOCK_MONOTONIC) - wall) * 1000.0);
            int i = 0;
            for (const auto* engine : {&game->shipEngine, &game->shipLaserEngine, &game->asteroidEngine,
                                       &game->extraEngine, &game->foeEngine, &game->foeLaserEngine}) {
                sprites[i++] += engine->size();
            }
        }
        elapsed = now(CLOCK_MONOTONIC) - begin;
    }

    const double wall = now(CLOCK_MONOTONIC) - measuredFrom;
    const double cpu = session::cpuSeconds() - cpuFrom;
    const size_t gameAllocated = threadAllocations - gameAllocationsFrom;
    const size_t otherAllocated = allocations - allocationsFrom - gameAllocated;
    const double frames = static_cast<double>(cpuMs.size());
    std::printf("bench_game: stage %u, two ships, %.0f s at the game's pacing after %.0f s of warm-up, load %.1f\n",
                STAGE, seconds, WARM_UP_S, session::loadAverage());
    std::printf("  frames          %.0f (%.1f fps)\n", frames, frames / wall);
    std::printf("  sprites         on average %.0f ships with flames and shields, %.0f of their lasers, %.0f asteroids\n"
                "                  and containers, %.0f extras, %.0f pirates, %.0f pirate lasers (explosions with their source)\n",
                sprites[0] / frames, sprites[1] / frames, sprites[2] / frames, sprites[3] / frames, sprites[4] / frames,
                sprites[5] / frames);
    std::printf("  CPU per frame   %.3f ms (%.1f %% of one core), whole process from /proc\n",
                cpu * 1000.0 / frames, 100.0 * cpu / wall);
    std::printf("  CPU per pass    median %.3f ms, worst %.3f ms (process clock around the pass)\n",
                percentile(cpuMs, 0.5), percentile(cpuMs, 1.0));
    std::printf("  wall per pass   median %.3f ms, worst %.3f ms (pacing sleep included)\n",
                percentile(wallMs, 0.5), percentile(wallMs, 1.0));
    std::printf("  peak RSS        %.1f MiB\n", static_cast<double>(session::peakRssKiB()) / 1024.0);
    // The music thread opens a piece when the one before it ends: no frame waits for that.
    std::printf("  allocations     %.3f per frame (%zu in all) by the game; %zu by other threads\n",
                static_cast<double>(gameAllocated) / frames, gameAllocated, otherAllocated);
    std::printf("  by thread       ");
    for (const auto& [name, total] : session::threadCpuSeconds()) {
        std::printf("%s %.3f ms  ", name.c_str(), (total - threadsFrom[name]) * 1000.0 / frames);
    }
    std::printf("(per frame)\n");
    if (argc > 2) norvane::saveScreenshot(argv[2]);  // the last frame, to look at
    std::fflush(stdout);
    std::_Exit(EXIT_SUCCESS);  // the process ends with the figures; no teardown to measure
}
