#include "resources/state.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

#include "audio/sources.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "debug/log.h"
#include "game/vantorixsprite.h"
#include "gfx/fonts.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "menu/menu.h"
#include "norvane.h"
#include "particles/starfield.h"
#include "resources/resources.h"
#include "screen.h"
#include "screenshot.h"
#include "sprites/sprites.h"
#include "specs.h"
#include "tools/clock.h"
#include "vantorix.h"

namespace vantorix {

using namespace norvane;

GUICallback callback;

namespace {

const float PI = 3.1415927f;
const unsigned int LOADING_TIME_MS = 20;  // background work per frame while the game images load

bool shownOnScreen(const gui::Component* c) {
    for (; c; c = c->getParent()) {
        if (!c->getVisible()) return false;
    }
    return true;
}

// Sees every event before the GUI. The GUI gives the focus to whatever the mouse passes over,
// panels and labels too, where keys and gamepads can move it no further: before such input reaches
// the GUI, this gives the focus back to the last widget that held it. It also shows the mouse
// cursor only while the mouse is in use, so a keyboard or gamepad player sees no stray arrow.
class FocusKeeper : public Evaluator {
public:
    void perform(float, ControlQueue*) override { remember(); }

    bool evaluate(const SDL_Event& event, ControlQueue*) override {
        remember();  // before the GUI sees the event: a mouse motion may take the focus
        gui::GUI* root = resources->gui;
        if (event.type == SDL_MOUSEMOTION) {
            showCursor(true);
            return false;
        }
        const bool navigation = event.type == SDL_KEYDOWN || event.type == SDL_JOYAXISMOTION ||
                                event.type == SDL_JOYBUTTONDOWN;
        if (!navigation) return false;
        showCursor(false);
        if (root->getActive() && !root->getFocused()->focusable && lastWidget && lastWidget->getEnabled() &&
            shownOnScreen(lastWidget) && !resources->icGetKey->getEnabled()) {
            lastWidget->setFocused(true);
        }
        return false;
    }

    // A new set of resources may have come with a new GUI.
    void reset() {
        lastWidget = nullptr;
        showCursor(false);
    }

private:
    void remember() {
        gui::Component* focused = resources->gui->getFocused();
        if (focused->focusable) lastWidget = focused;
    }

    static void showCursor(bool shown) {
        if (sprites::Sprite* cursor = resources->gui->getMouseCursor()) cursor->visible = shown;
    }

    gui::Component* lastWidget = nullptr;
};

FocusKeeper focusKeeper;

}  // namespace

GameState::GameState() {
    performLayers = 3;
    drawLayers = 3;
    std::list<Evaluator*>& stack = resources->queue->evaluators;
    if (std::find(stack.begin(), stack.end(), &focusKeeper) == stack.end()) {
        focusKeeper.reset();
        resources->queue->push(&focusKeeper);
    }
}

GameState::~GameState() { delete editCopy; }

void GameState::handleEvent(const Trigger* trigger) {
    Resources* r = resources;
    switch (trigger->code) {
        case 3:
            toggleFullscreen();
            break;
        case 4:
            try {
                saveScreenshot(FILE_SCREENSHOT);
            } catch (const std::string& text) {
                debug::warning(dbgVantorixCore, "Could not save screenshot: %s", text.c_str());
            }
            break;
        case 120: {
            InputEvaluator* players[3] = {r->evaluatorGamePlayerSingle, r->evaluatorGamePlayerMulti[0],
                                          r->evaluatorGamePlayerMulti[1]};
            if (trigger->data < 0 || trigger->data > 2) break;
            showWindowControls("Single Player Controls", players[trigger->data]);
            break;
        }
        case 121:
            if (trigger->data < 0 || trigger->data > 1) break;
            showWindowControls("Multiplayer Controls - Player " + std::to_string(trigger->data + 1),
                               r->evaluatorGamePlayerMulti[trigger->data]);
            break;
        case 122:
            requestKey(trigger);
            break;
        case 123:
            captureKey();
            break;
        case 124:
            captureJoyButton();
            break;
        case 125:
            captureJoyAxis();
            break;
        case 126:
            showWindowSoundSettings();
            break;
        case 127:
            soundSliderMoved();
            musicSliderMoved();
            break;
        case 128:
            musicSliderMoved();
            break;
        default:
            break;
    }
}

void GameState::doPerform(int layer, unsigned int ticks) {
    Resources* r = resources;
    if (layer == 0) {
        fps = calcFPS(static_cast<int>(ticks));
        phase += static_cast<float>(ticks) * 0.001f;
        while (phase > PI) phase -= PI;
        r->gameSounds->perform(static_cast<float>(ticks));
        // Not in the game's pool: ended menu sounds would otherwise wait for the next click.
        r->menuSounds->perform(static_cast<float>(ticks));
        r->queue->perform(static_cast<float>(ticks));
        r->gui->perform(r->queue, static_cast<float>(ticks));
        // A mouse that hovers over the dialog would take the focus, and the key, from the captor.
        if (r->pGetKey->getVisible() && r->icGetKey->getEnabled()) r->icGetKey->setFocused(true);
        // Dragging a slider with the mouse fires no trigger; catch those changes here.
        if (r->pSoundSettings->getVisible()) {
            soundSliderMoved();
            musicSliderMoved();
        }
    }
    if (layer == 0 || layer == 2) {
        destroyQueuedSprites();
        if (!paused) r->starfield->perform(static_cast<float>(ticks));
    }
}

void GameState::doDraw(int layer) {
    Resources* r = resources;
    if (layer == 0) {
        r->rcGame.apply();
        clearScreen();
        resetCursor();
        r->starfield->draw();
    } else if (layer == 2) {
        r->rcGui.apply();
        resetCursor();
        if (r->gui->getVisible()) r->gui->draw();
        r->rcGame.apply();
        norvane::perform(getCurrentTicks() + (r->loaded ? 0 : LOADING_TIME_MS));
        flipScreen();
    }
}

bool GameState::closeWindows(bool apply) {
    if (resources->pSoundSettings->getVisible()) {
        closeWindowSoundSettings(apply);
        return true;
    }
    if (resources->pControls->getVisible()) {
        closeWindowControls(apply);
        return true;
    }
    return false;
}

void GameState::toggleFullscreen() {
    Settings& s = resources->settings;
    try {
        resources->setResolution(s.xRes, s.yRes, 32, !s.fullscreen);
        s.fullscreen = !s.fullscreen;
    } catch (const std::string& text) {
        // The old mode worked a moment ago; without it there is no window to go on with.
        debug::error(dbgVantorixCore, "Could not switch the screen mode: %s", text.c_str());
        resources->setResolution(s.xRes, s.yRes, 32, s.fullscreen);
    }
    resources->updateFullscreenButtons();
}

void GameState::print(float x, float y, JustificationHorizontal justification, const Color& color,
                      const char* format, ...) {
    fonts::Font* font = resources->fontStandard;
    if (!font) return;
    char text[256];  // on the stack: drawn every frame
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    color.apply();
    resetCursor();
    moveCursor(basic_Vector2D<float>{x, y});
    font->print(justification, text);
}

void GameState::displayHighscores(float x, float y, HighscoreTable<HighscoreEntry, 10>* table, int mark1,
                                  int mark2) {
    const float s = std::sin(phase);
    const Color yellow(1.0f, 1.0f, 0.0f, 1.0f);
    for (int i = 0; i < 10; ++i) {
        const Color color = i == mark1 ? Color(1.0f, s, s, 1.0f) : i == mark2 ? Color(s, s, 1.0f, 1.0f) : yellow;
        const float rowY = y + 150.0f - 30.0f * static_cast<float>(i);
        const HighscoreEntry& entry = (*table)[static_cast<size_t>(i)];
        print(x - 105.0f, rowY, JH_RIGHT, color, "%d.", i + 1);
        print(x - 100.0f, rowY, JH_LEFT, color, "%s", entry.name.c_str());
        print(x + 130.0f, rowY, JH_RIGHT, color, "%u", entry.score);
    }
}

void GUICallback::onMove() {
    if (menu) menu->pageTimer = specs.menuIdleTime;
    if (resources->sampleMenuMove) resources->menuSounds->play(resources->sampleMenuMove);
}

void GUICallback::onConfirm() {
    if (menu) menu->pageTimer = specs.menuIdleTime;
    if (resources->sampleMenuClick) resources->menuSounds->play(resources->sampleMenuClick);
}

}  // namespace vantorix
