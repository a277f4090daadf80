// Input costs: a key event must not grow with the bindings of other device classes, and a frame of
// held triggers must not allocate.
#include <benchmark/benchmark.h>

#include "allocations.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "controls/translators.h"

using namespace norvane;

namespace {

// Eight key triggers, as a player evaluator has, plus `others` joystick and mouse bindings.
void fill(InputEvaluator& evaluator, int others) {
    for (int i = 0; i < 8; ++i) {
        Trigger* t = new Trigger(&evaluator, i, "key" + std::to_string(i), "", ksDown);
        new KeyTranslator(t, static_cast<SDLKey>(SDLK_a + i), ksDefault, 1.0f);
    }
    for (int i = 0; i < others; ++i) {
        Trigger* t = new Trigger(&evaluator, 100 + i, "other" + std::to_string(i), "", 1.0f);
        if (i % 2) {
            new JoyButtonTranslator(t, 0, static_cast<short>(i % 32), ksDefault, 1.0f);
        } else {
            new MouseAxisTranslator(t, 0, 1, 0, 10);
        }
    }
}

void BM_KeyEventWithOtherDevices(benchmark::State& state) {
    InputEvaluator evaluator;
    fill(evaluator, static_cast<int>(state.range(0)));
    ControlQueue queue;
    Trigger* t = nullptr;
    SDL_Event press{};
    press.type = SDL_KEYDOWN;
    press.key.keysym.sym = SDLK_e;
    for (auto _ : state) {
        benchmark::DoNotOptimize(evaluator.evaluate(press, &queue));
        queue >> t;
    }
}
BENCHMARK(BM_KeyEventWithOtherDevices)->Arg(0)->Arg(100)->Arg(10000);

void BM_FrameWithHeldTriggers(benchmark::State& state) {
    InputEvaluator evaluator;
    ControlQueue queue;
    queue.push(&evaluator);
    for (int i = 0; i < 4; ++i) {
        Trigger* t = new Trigger(&evaluator, i, "held" + std::to_string(i), "", ksPressed);
        auto* key = new KeyTranslator(t, static_cast<SDLKey>(SDLK_a + i), ksDefault, 1.0f);
        SDL_Event press{};
        press.type = SDL_KEYDOWN;
        press.key.keysym.sym = key->key;
        queue << press;
    }
    Trigger* t = nullptr;
    queue.perform(16);  // warm-up: the FIFO takes its size
    while (queue >> t, t) {
    }
    const size_t before = allocations;
    for (auto _ : state) {
        queue.perform(16);
        while (queue >> t, t) benchmark::DoNotOptimize(t);
    }
    state.counters["allocs/frame"] =
        static_cast<double>(allocations - before) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_FrameWithHeldTriggers);

}  // namespace

BENCHMARK_MAIN();
