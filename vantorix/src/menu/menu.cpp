#include "menu/menu.h"

#include <string>

#include "audio/core.h"
#include "audio/music.h"
#include "controls/inputevaluator.h"
#include "debug/log.h"
#include "game/game.h"
#include "gfx/animations.h"
#include "gfx/image.h"
#include "gui/standard.h"
#include "norvane.h"
#include "particles/starfield.h"
#include "resources/resources.h"
#include "screen.h"
#include "specs.h"
#include "sprites/sprites.h"
#include "tools/clock.h"
#include "vantorix.h"

namespace vantorix {

using namespace norvane;
using norvane::gui::Component;

namespace {

const Color WHITE(1.0f, 1.0f, 1.0f, 1.0f);
const Color YELLOW(1.0f, 1.0f, 0.0f, 1.0f);
const char* const HEADER = "----- H I G H S C O R E S -----";

struct HelpLabel {
    const char* text;
    float x, y;
    bool yellow;
};

const HelpLabel HELP_LABELS[] = {
    {"Upgrade", 100, 530, false},   {"Upgrade", 300, 530, false},   {"Upgrade", 500, 530, false},
    {"Energy", 150, 430, false},    {"Weapon", 350, 430, false},    {"Container", 200, 330, false},
    {"Container", 400, 330, false}, {"Container", 600, 330, false}, {"Small Asteroid", 250, 180, false},
    {"Large Asteroid", 600, 180, false}, {"Pirate", 250, 80, false}, {"Crystal", 600, 80, false},
    {"Speed", 100, 500, true},      {"Fire Rate", 300, 500, true},  {"Laser Type", 500, 500, true},
    {"Shield", 150, 400, true},     {"Time Warp", 350, 400, true},  {"Upgrade", 200, 300, true},
    {"Energy", 400, 300, true},     {"Weapon", 600, 300, true},
};

struct HelpSprite {
    const char* animation;
    float x, y;
};

const HelpSprite HELP_SPRITES[] = {
    {"extraSpeedup", 50, 530},  {"extraFireRate", 250, 530}, {"extraLaserType", 450, 530},
    {"extraShield", 100, 430},  {"extraTimeWarp", 300, 430}, {"container_0", 150, 330},
    {"container_1", 350, 330},  {"container_2", 550, 330},   {"asteroidSmall", 190, 190},
    {"asteroidLarge", 520, 180}, {"foeLeft", 190, 80},       {"extraScore", 540, 80},
};

void show(Component* shown, Component* hidden) {
    shown->setVisible(true);
    hidden->setVisible(false);
}

bool sameSettings(const Settings& a, const Settings& b) {
    return a.xRes == b.xRes && a.yRes == b.yRes && a.fullscreen == b.fullscreen && a.volumeSfx == b.volumeSfx &&
           a.volumeMusic == b.volumeMusic;
}

}  // namespace

Menu::Menu()
    : pageTimer(specs.menuIdleTime),
      lastButton(resources->btnSinglePlayerA),
      creditsBack((*resources->gui)["btnCreditsBack"]) {
    resources->initMenu();
}

Menu::~Menu() {
    if (helpSprites) {
        for (sprites::Sprite* sprite : std::vector<sprites::Sprite*>(helpSprites->sprites)) delete sprite;
        delete helpSprites;
    }
    if (resources->musicManager) resources->musicManager->stop();
    resources->uninitMenu();
    menu = nullptr;
}

void Menu::activate() {
    Resources* r = resources;
    ApplicationState::activate();
    r->evaluatorMenu->enabled = r->loaded;
    r->gui->setActive(true);
    setClearColor(Color(0.0f, 0.0f, 0.0f, 0.0f));
    getElapsedTicks();
    if (r->loaded) {
        r->pMainMenu->setVisible(true);
        lastButton->setFocused(true);
    } else {
        r->pCredits->setVisible(true);
        if (creditsBack) creditsBack->setFocused(true);  // until the menu keys work, its button quits
    }
    r->gui->setVisible(true);
    startMusic();
}

void Menu::deactivate() {
    resources->pMainMenu->setVisible(false);
    resources->gui->setActive(false);
    resources->gui->setVisible(false);
    ApplicationState::deactivate();
}

void Menu::startMusic() {
    audio::MusicManager* music = resources->musicManager;
    if (!music || !audio::enabled) return;
    music->clearQueue();
    for (audio::StreamedSample* piece : {resources->musicTitleIntro, resources->musicTitleLoop}) {
        if (piece) music->addAsLast(piece);
    }
    try {
        if (music->isPlaying()) {
            music->skipToNext();
        } else {
            music->play();
        }
    } catch (const std::string& text) {
        debug::warning(dbgVantorixCore, "Could not play the title music: %s", text.c_str());
    }
}

void Menu::handleEvent(const Trigger* trigger) {
    Resources* r = resources;
    // Someone is here, unless it was the screenshot key or the window losing the focus.
    if (trigger->code != 4 && trigger->code != 5) pageTimer = specs.menuIdleTime;
    switch (trigger->code) {
        case 100:
            startGame(0, r->btnSinglePlayerA);
            break;
        case 101:
            startGame(1, r->btnSinglePlayerB);
            break;
        case 102:
            startGame(2, r->btnMultiplayer);
            break;
        case 103:
            settingsShown = r->settings;
            show(r->pSettings, r->pMainMenu);
            r->cbFullscreen->setFocused(true);
            break;
        case 104:
            show(r->pCredits, r->pMainMenu);
            if (creditsBack) creditsBack->setFocused(true);
            break;
        case 2:
            if (r->pQuit->getVisible()) {
                destroyPending = true;
            } else {
                back(true);
            }
            break;
        case 1:
            back(false);
            break;
        default:
            GameState::handleEvent(trigger);
            break;
    }
}

void Menu::back(bool confirmed) {
    Resources* r = resources;
    if (page > 0) {
        showPage(0);
        return;
    }
    if (closeWindows(confirmed) || r->pGetKey->getVisible()) return;
    if (r->pSettings->getVisible()) {
        if (controlsChanged || !sameSettings(settingsShown, r->settings)) r->saveSettings();
        controlsChanged = false;
        show(r->pMainMenu, r->pSettings);
        r->btnSettings->setFocused(true);
    } else if (r->pCredits->getVisible() && r->loaded) {
        show(r->pMainMenu, r->pCredits);
        r->btnCredits->setFocused(true);
    } else if (r->pQuit->getVisible()) {
        show(r->pMainMenu, r->pQuit);
        if (quitAsker) quitAsker->setFocused(true);
    } else if (!r->loaded) {
        destroyPending = true;
    } else {
        quitAsker = r->gui->getFocused();
        show(r->pQuit, r->pMainMenu);
        r->btnQuit->setFocused(true);  // confirm quits, back returns
    }
}

void Menu::closeWindowSoundSettings(bool apply) {
    GameState::closeWindowSoundSettings(apply);
    resources->pSettings->setVisible(true);
    resources->btnSoundSettings->setFocused(true);
}

void Menu::closeWindowControls(bool apply) {
    Resources* r = resources;
    InputEvaluator* edited = editedEvaluator;
    GameState::closeWindowControls(apply);
    r->pSettings->setVisible(true);
    if (edited == r->evaluatorGamePlayerMulti[0]) {
        r->btnControlsMultiplayer1->setFocused(true);
    } else if (edited == r->evaluatorGamePlayerMulti[1]) {
        r->btnControlsMultiplayer2->setFocused(true);
    } else {
        r->btnControlsSinglePlayer->setFocused(true);
    }
}

void Menu::startGame(int type, Component* button) {
    lastButton = button;
    game = new Game(static_cast<GameType>(type));
    game->activate();
}

void Menu::showPage(int newPage) {
    static const unsigned int* const TIMES[] = {&specs.menuIdleTime, &specs.highscorePageTime,
                                                &specs.highscorePageTime, &specs.helpPageTime};
    page = newPage;
    pageTimer = *TIMES[page];
    resources->gui->setActive(page == 0);
    resources->gui->setVisible(page == 0);
}

void Menu::doPerform(int layer, unsigned int ticks) {
    Resources* r = resources;
    if (layer == 0 && r->loaded) {
        if (page == 3 && helpSprites) helpSprites->perform(static_cast<float>(ticks));
        if (ticks < pageTimer) {
            pageTimer -= ticks;
        } else {
            showPage((page + 1) % 4);
        }
    }
    if (layer == 0 || layer == 1) {
        r->gui->perform(r->queue, static_cast<float>(ticks));
        particles::Starfield* stars = r->starfield;
        const float step = specs.starfieldSpeedRate * static_cast<float>(ticks);
        if (stars->speed < specs.idleStarfieldSpeed) {
            stars->speed = std::min(stars->speed + step, specs.idleStarfieldSpeed);
        } else {
            stars->speed = std::max(stars->speed - step, specs.idleStarfieldSpeed);
        }
        if (r->imageLoader) r->logoColor.alpha = static_cast<float>(r->imageLoader->getProgressRelative());
    }
    GameState::doPerform(layer, ticks);
}

void Menu::doDraw(int layer) {
    Resources* r = resources;
    if (layer == 1 && r->gui->getVisible() && !r->pControls->getVisible() && r->imageLogo) {
        r->rcGui.apply();
        resetCursor();
        r->logoColor.apply();
        r->imageLogo->draw(r->logoPosition, BLEND_ALPHA);
    } else if (layer == 2 && page > 0) {
        r->rcGame.apply();
        if (page == 1) {
            print(400, 530, JH_CENTER, WHITE, "%s", HEADER);
            print(200, 430, JH_CENTER, WHITE, "Single Player Mode A");
            print(600, 430, JH_CENTER, WHITE, "Single Player Mode B");
            displayHighscores(200, 230, &r->highscores.singleA, -1, -1);
            displayHighscores(600, 230, &r->highscores.singleB, -1, -1);
        } else if (page == 2) {
            print(400, 530, JH_CENTER, WHITE, "%s", HEADER);
            print(400, 430, JH_CENTER, WHITE, "Multiplayer");
            displayHighscores(400, 230, &r->highscores.multi, -1, -1);
        } else {
            drawHelp();
        }
    }
    GameState::doDraw(layer);
}

void Menu::drawHelp() {
    Resources* r = resources;
    if (r->imageFull) {
        r->rcHud.apply();
        resetCursor();
        WHITE.apply();
        r->imageFull->draw(specs.hudPosition1, BLEND_DEFAULT);
        r->rcGame.apply();
    }
    for (const HelpLabel& label : HELP_LABELS) {
        print(label.x, label.y, JH_LEFT, label.yellow ? YELLOW : WHITE, "%s", label.text);
    }
    print(250, 150, JH_LEFT, YELLOW, "%u pts", specs.smallAsteroidScore);
    print(600, 150, JH_LEFT, YELLOW, "%u pts", specs.largeAsteroidScore);
    print(250, 50, JH_LEFT, YELLOW, "%u pts", specs.foeScore);
    print(600, 50, JH_LEFT, YELLOW, "%u pts", specs.crystalScore);
    if (helpSprites) {
        resetCursor();
        helpSprites->draw();
    }
}

void Menu::initSpritesHelp() {
    helpSprites = new sprites::SpriteEngine;
    for (const HelpSprite& entry : HELP_SPRITES) {
        gfx::Animation* animation = resources->animationsGame->find(entry.animation);
        if (!animation) continue;
        auto* sprite = new sprites::ImageSprite(basic_Vector2D<float>{entry.x, entry.y}, true, nullptr);
        sprite->setAnimation(animation, 1.0f);
        helpSprites->addBack(sprite);
    }
}

}  // namespace vantorix
