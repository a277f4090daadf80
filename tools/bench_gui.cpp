// One frame of a settings-dialog-sized GUI: event routing, performing and drawing.
#include <GL/gl.h>
#include <SDL/SDL.h>
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "allocations.h"
#include "controls/queue.h"
#include "gui/containers.h"
#include "gui/root.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "gui/styles.h"
#include "gui/text.h"
#include "norvane.h"
#include "rendercontext.h"
#include "screen.h"
#include "sprites/sprites.h"

using namespace norvane;
using namespace norvane::gui;

namespace {

// Three panes of eight rows each: buttons, checkboxes, sliders with step buttons, text fields.
struct Dialog {
    Dialog() {
        gui.setDimensions({0, 0, 800, 600});
        gui.setVisible(true);
        gui.setActive(true);
        auto* box = new PlainRectStyle;
        box->color = {0.3f, 0.3f, 0.3f, 1.0f};
        box->border = 2;
        gui.getStyles()->add("box", box);
        auto* label = new LabelStyle;
        label->rect = box;
        gui.getStyles()->add("label", label);
        auto* button = new ButtonStyle;
        button->up = button->down = button->upHot = button->downHot = label;
        gui.getStyles()->add("button", button);
        auto* checkbox = new CheckboxStyle;
        checkbox->checked = checkbox->unchecked = button;
        gui.getStyles()->add("checkbox", checkbox);
        for (int p = 0; p < 3; ++p) {
            auto* pane = new Pane;
            pane->setDimensions(basic_Rect<float>{20.0f + 260 * p, 20, 240, 560});
            pane->setStyle(box);
            gui += pane;
            for (int row = 0; row < 8; ++row) {
                const basic_Rect<float> cell{10, 520.0f - 65 * row, 220, 30};
                Component* c = nullptr;
                switch ((row + p) % 4) {
                case 0: {
                    auto* b = new Button;
                    b->setStyle(button);
                    c = b;
                    break;
                }
                case 1: {
                    auto* k = new Checkbox;
                    k->setStyle(checkbox);
                    c = k;
                    break;
                }
                case 2: {
                    auto* s = new Slider<int>;
                    s->setStyles(box, button, button);
                    s->setButtonsBefore(BUTTONS_DEC);
                    s->setButtonsAfter(BUTTONS_INC);
                    s->setRange(0, 100);
                    c = s;
                    break;
                }
                default: {
                    auto* t = new Textfield;
                    t->setStyle(label);
                    t->setCaption("Player One");
                    c = t;
                }
                }
                c->setDimensions(cell);
                *pane += c;
            }
            pane->recalcNeighbours();
        }
        gui.recalcNeighbours();
        q.push(&gui);
        (*gui.getChildren()[0]->getChildren().begin())->setFocused(true);
    }

    GUI gui;
    ControlQueue q;
};

class Cursor : public sprites::Sprite {
public:
    Cursor() : Sprite({0, 0}, true) {}
    void drawSelf() override {}
};

SDL_Event key(SDLKey sym) {
    SDL_Event e{};
    e.type = SDL_KEYDOWN;
    e.key.keysym.sym = sym;
    return e;
}

// Mouse motion across the dialog and arrow keys through it, then one perform, as a frame does.
void BM_RouteAndPerform(benchmark::State& state) {
    Dialog dialog;
    dialog.gui.setMouseCursor(new Cursor);
    const SDL_Event keys[] = {key(SDLK_DOWN), key(SDLK_DOWN), key(SDLK_UP), key(SDLK_RIGHT), key(SDLK_LEFT)};
    SDL_Event joy{};
    joy.type = SDL_JOYAXISMOTION;
    size_t frame = 0;
    Trigger* t = nullptr;
    auto run = [&] {
        for (const SDL_Event& e : keys) dialog.q << e;
        SDL_Event motion{};
        motion.type = SDL_MOUSEMOTION;
        motion.motion.x = Uint16(40 + (frame * 7) % 720);
        motion.motion.y = Uint16(40 + (frame * 13) % 520);
        dialog.q << motion;
        joy.jaxis.value = (frame & 1) ? 20000 : 0;
        dialog.q << joy;
        dialog.gui.perform(&dialog.q, 16.0f);
        while (dialog.q >> t, t) {
        }
        ++frame;
    };
    for (int i = 0; i < 100; ++i) run();
    const size_t before = allocations;
    for (auto _ : state) run();
    state.counters["allocs/frame"] = double(allocations - before) / double(state.iterations());
}
BENCHMARK(BM_RouteAndPerform);

// Drawing the whole dialog into a real window; skipped without a display.
void BM_Draw(benchmark::State& state) {
    if (!std::getenv("DISPLAY")) {
        state.SkipWithError("no display: run under xvfb-run");
        return;
    }
    setenv("SDL_VIDEODRIVER", "x11", 0);
    norvane::init(SUBSYSTEM_VIDEO, false);
    setResolution(800, 600, 32, false, 0, 0);
    Dialog dialog;
    RenderContext2D context({800, 600});
    context.apply();
    auto run = [&] {
        resetCursor();
        dialog.gui.draw();
        glFinish();
    };
    for (int i = 0; i < 10; ++i) run();
    const size_t before = allocations;
    for (auto _ : state) run();
    state.counters["allocs/frame"] = double(allocations - before) / double(state.iterations());
}
BENCHMARK(BM_Draw)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
