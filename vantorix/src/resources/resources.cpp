#include "resources/resources.h"

#include <sys/stat.h>

#include <memory>

#include "audio/music.h"
#include "audio/resources.h"
#include "audio/sources.h"
#include "buildinfo.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "controls/translators.h"
#include "debug/log.h"
#include "framework/application.h"
#include "gfx/animations.h"
#include "gfx/fonts.h"
#include "gfx/imagebank.h"
#include "gfx/imageloader.h"
#include "gui/root.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "gui/styles.h"
#include "menu/menu.h"
#include "norvane.h"
#include "screen.h"
#include "specs.h"
#include "vantorix.h"
#include "xml/xml.h"

namespace vantorix {

using norvane::InputEvaluator;
using norvane::basic_Vector2D;
namespace audio = norvane::audio;
namespace gfx = norvane::gfx;
namespace gui = norvane::gui;

norvane::SysDirManager dirManager(GAME_KEY, norvane::sdcGame);

namespace {

const basic_Vector2D<float> GAME_SIZE{800.0f, 600.0f};
const char* const PLAYER_DEFINITION = "evaluatorGamePlayer";
const char* const PLAYER_SINGLE = "evaluatorGamePlayerSingle[0]";
const char* const PLAYER_MULTI[2] = {"evaluatorGamePlayerMulti[0]", "evaluatorGamePlayerMulti[1]"};

template <typename T>
T* requireBank(const std::map<std::string, norvane::BasicResourceBank*>& banks, const std::string& name,
               const char* missing) {
    const auto it = banks.find(name);
    T* bank = it == banks.end() ? nullptr : dynamic_cast<T*>(it->second);
    if (!bank) throw std::string(missing);
    return bank;
}

template <typename T>
void lookUp(gui::GUI* root, T*& field, const char* name) {
    field = dynamic_cast<T*>((*root)[name]);
    // The states use every one of them; without it the game could not go on.
    if (!field) throw std::string("The GUI has no component \"") + name + "\" of its kind.";
}

// Where the highscores go when the state directory will not take them, and come from when that
// copy is newer: a player without write access there keeps the table all the same.
std::string personalHighscores() { return dirManager.getSubDir(norvane::sdUser, "", true) + FILE_HIGHSCORES; }

// The file's identity and age; absent files are all zero. A save that took replaced the file.
struct FileStamp {
    explicit FileStamp(const std::string& path) {
        struct stat info;
        if (stat(path.c_str(), &info) == 0) {
            inode = info.st_ino;
            modified = info.st_mtim.tv_sec * 1000000000LL + info.st_mtim.tv_nsec;
        }
    }
    bool exists() const { return inode != 0; }

    ino_t inode = 0;
    long long modified = 0;
};

// The definitions may give a multiplayer evaluator bindings of its own (two players share one
// keyboard); its triggers still come from the single-player definition.
void takeBindings(InputEvaluator* target, const InputEvaluator* shipped) {
    for (const auto& entry : shipped->resources) {
        norvane::Trigger* trigger = target->find(entry.first);
        if (!trigger) continue;
        trigger->clearTranslators();
        for (const norvane::Translator* translator : entry.second->translators) translator->clone(trigger);
    }
}

void setMinTicks(unsigned int ms) {
    if (auto* app = dynamic_cast<norvane::FrameRateLimitedApplication*>(norvane::application)) app->minTicks = ms;
}

}  // namespace

Resources::Resources() {
    rcGame.size = GAME_SIZE;
    rcGame.blending = true;
    rcHud.size = GAME_SIZE;
    rcHud.blending = true;
    rcHud.blendMode = norvane::BLEND_ADDITIVE;
    rcGui.blending = true;

    load(dirManager.getSubDir(norvane::sdData, "", false) + "resources.xml", "");

    fonts = requireBank<norvane::fonts::FontBank>(banks, "fonts", "fonts not found");
    imagesGame = requireBank<gfx::ImageBank>(banks, "imagesGame", "imagesGame not found");
    animationsGame = requireBank<gfx::AnimationBank>(banks, "animationsGame", "animationsGame not found");
    imagesHud = requireBank<gfx::ImageBank>(banks, "imagesHud", "imagesHud not found");
    imagesGui = requireBank<gfx::ImageBank>(banks, "imagesGui", "imagesGui not found");
    gui = requireBank<gui::GUI>(banks, "gui", "gui not found");
    sounds = requireBank<audio::SampleBank>(banks, "sounds", "samples not found");
    music = requireBank<audio::SampleBank>(banks, "music", "music not found");
    for (int i = 0; i < 2; ++i) joysticks[i] = norvane::initJoystick(i);
    evaluatorCore = requireBank<InputEvaluator>(banks, "evaluatorCore", "evaluatorCore not found");
    evaluatorMenu = requireBank<InputEvaluator>(banks, "evaluatorMenu", "evaluatorMenu not found");
    evaluatorGameCore = requireBank<InputEvaluator>(banks, "evaluatorGameCore", "evaluatorGameCore not found");

    rename(PLAYER_DEFINITION, PLAYER_SINGLE);
    evaluatorGamePlayerSingle =
        requireBank<InputEvaluator>(banks, PLAYER_SINGLE, "evaluatorGamePlayerSingle[0] not found");
    evaluatorGamePlayerSingle->setDataOnAllTriggers(0);
    for (int i = 0; i < 2; ++i) {
        InputEvaluator* clone = evaluatorGamePlayerSingle->clone();
        clone->setDataOnAllTriggers(i);
        clone->manager = this;
        norvane::BasicResourceBank*& entry = banks[PLAYER_MULTI[i]];
        if (entry) {
            if (const auto* shipped = dynamic_cast<const InputEvaluator*>(entry)) takeBindings(clone, shipped);
            delete entry;
        }
        entry = clone;
        evaluatorGamePlayerMulti[i] = clone;
    }

    queue = &norvane::queue;
    queue->focusLostTrigger = evaluatorCore->find("pause");
    evaluatorGameCore->enabled = false;
    evaluatorGamePlayerSingle->enabled = false;
    evaluatorGamePlayerMulti[0]->enabled = false;
    evaluatorGamePlayerMulti[1]->enabled = false;
    queue->push(evaluatorCore);
    queue->push(evaluatorMenu);
    queue->push(evaluatorGameCore);
    queue->push(evaluatorGamePlayerSingle);
    queue->push(evaluatorGamePlayerMulti[0]);
    queue->push(evaluatorGamePlayerMulti[1]);
    queue->push(gui);

    loadSettings();

    for (int i = 1; i <= 5; ++i) {
        const float s = 0.2f * static_cast<float>(i);
        starfieldProperties.classes.push_back({specs.starCount / 5, s, norvane::Color(s, s, s, 1.0f)});
    }

    imageFull = imagesHud->find("full");
    imageShield = imagesHud->find("shield");
    for (int n = 1; n <= 5; ++n) {
        imageSpeed[n - 1] = imagesHud->find("speed_" + std::to_string(n));
        for (int m = 0; m <= 5; ++m) {
            imageFire[n - 1][m] = imagesHud->find("fire_" + std::to_string(n) + "_" + std::to_string(m));
        }
    }
    for (int i = 1; i <= specs.maxTimeWarps; ++i) imageTimeWarp.push_back(imagesHud->find("timewarp_" + std::to_string(i)));
    imageLogo = imagesGui->find("logo");

    const std::pair<gfx::Animation**, const char*> animations[] = {
        {&animPlayer1, "player1"},
        {&animPlayer2, "player2"},
        {&animEngine, "engine"},
        {&animEngineStutter, "engineStutter"},
        {&animShield, "shield"},
        {&animAsteroidSmall, "asteroidSmall"},
        {&animAsteroidLarge, "asteroidLarge"},
        {&animCrystal, "crystal"},
        {&animContainer[0], "container_0"},
        {&animContainer[1], "container_1"},
        {&animContainer[2], "container_2"},
        {&animExtraFireRate, "extraFireRate"},
        {&animExtraLaserType, "extraLaserType"},
        {&animExtraSpeedup, "extraSpeedup"},
        {&animExtraShield, "extraShield"},
        {&animExtraScore, "extraScore"},
        {&animExtraTimeWarp, "extraTimeWarp"},
        {&animFoeLeft, "foeLeft"},
        {&animFoeRight, "foeRight"},
        {&animExplosionFast, "explosionFast"},
        {&animExplosionSlow, "explosionSlow"},
    };
    for (const auto& animation : animations) *animation.first = animationsGame->find(animation.second);

    imageLaserRayGreen = imagesGame->find("laserRayGreen");
    imageLaserRoundGreen = imagesGame->find("laserRoundGreen");
    imageLaserRoundRed = imagesGame->find("laserRoundRed");
}

Resources::~Resources() {
    delete menuSounds;
    menuSounds = nullptr;
    delete gameSounds;
    gameSounds = nullptr;
    delete musicManager;
    musicManager = nullptr;
    delete starfield;
    starfield = nullptr;
    for (SDL_Joystick*& joystick : joysticks) {
        if (joystick) norvane::cleanUpJoystick(joystick);
        joystick = nullptr;
    }
}

void Resources::init() {
    initHighscores();
    loadHighscores();

    imagesHud->refresh(nullptr);
    imagesGui->refresh(nullptr);
    const float logoWidth = imageLogo ? static_cast<float>(imageLogo->getWidth()) : 0.0f;
    const float logoHeight = imageLogo ? static_cast<float>(imageLogo->getHeight()) : 0.0f;
    logoPosition.x = (rcGui.size.x - logoWidth) * 0.5f;
    logoPosition.y = (rcGui.size.y - logoHeight) - 10.0f;

    fonts->refresh();
    fontStandard = fonts->find(norvane::fonts::FontDescriptor("Standard", 33, 0));
    if (!fontStandard) norvane::debug::error(dbgVantorixResources, "Standard font not found.");

    music->refresh();
    const std::pair<audio::StreamedSample**, const char*> pieces[] = {
        {&musicTitleIntro, "music_title_intro"},
        {&musicTitleLoop, "music_title_loop"},
        {&musicGameAIntro, "music_game_a_intro"},
        {&musicGameALoop, "music_game_a_loop"},
        {&musicGameBIntro, "music_game_b_intro"},
        {&musicGameBLoop, "music_game_b_loop"},
        {&musicDeath, "music_death"},
        {&musicHighscoresIntro, "music_highscores_intro"},
        {&musicHighscoresLoop, "music_highscores_loop"},
        {&musicGameOverIntro, "music_gameover_intro"},
        {&musicGameOverLoop, "music_gameover_loop"},
    };
    // The music manager streams: a cached sample under a music name is as good as missing.
    for (const auto& piece : pieces) *piece.first = dynamic_cast<audio::StreamedSample*>(music->find(piece.second));
    sounds->refresh();
    const std::pair<audio::Sample**, const char*> effects[] = {
        {&sampleExplosion, "explosion"}, {&sampleLaser, "laser"},        {&samplePing, "ping"},
        {&sampleExtra, "extra"},         {&sampleTimeWarp, "timewarp"},  {&sampleMenuMove, "menu_move"},
        {&sampleMenuClick, "menu_click"},
    };
    for (const auto& effect : effects) *effect.first = sounds->find(effect.second);

    if (settings.volumeMusic > 0) musicManager = new audio::MusicManager();
    menuSounds = new audio::SourcePool(2);
    gameSounds = new audio::SourcePool(10);
    setVolumeSfx(settings.volumeSfx);
    setVolumeMusic(settings.volumeMusic);

    starfieldProperties.width = GAME_SIZE.x;
    starfieldProperties.height = GAME_SIZE.y;
    starfield = starfieldProperties.create();
    starfield->speed = specs.idleStarfieldSpeed;

    lookUp(gui, pMainMenu, "pMainMenu");
    lookUp(gui, pSettings, "pSettings");
    lookUp(gui, pCredits, "pCredits");
    lookUp(gui, pControls, "pControls");
    lookUp(gui, pGetKey, "pGetKey");
    lookUp(gui, pSoundSettings, "pSoundSettings");
    lookUp(gui, pEnterName, "pEnterName");
    lookUp(gui, pInGame, "pInGame");
    lookUp(gui, pQuit, "pQuit");
    lookUp(gui, btnQuitNo, "btnQuitNo");
    lookUp(gui, btnQuit, "btnQuit");
    lookUp(gui, btnSinglePlayerA, "btnSinglePlayerA");
    lookUp(gui, btnSinglePlayerB, "btnSinglePlayerB");
    lookUp(gui, btnMultiplayer, "btnMultiplayer");
    lookUp(gui, btnSettings, "btnSettings");
    lookUp(gui, btnCredits, "btnCredits");
    lookUp(gui, btnSettingsDone, "btnSettingsDone");
    lookUp(gui, btnSoundSettings, "btnSoundSettings");
    lookUp(gui, btnSoundSettingsOk, "btnSoundSettingsOk");
    lookUp(gui, btnControlsSinglePlayer, "btnControlsSinglePlayer");
    lookUp(gui, btnControlsMultiplayer1, "btnControlsMultiplayer1");
    lookUp(gui, btnControlsMultiplayer2, "btnControlsMultiplayer2");
    lookUp(gui, btnControlsPlayer1, "btnControlsPlayer1");
    lookUp(gui, btnControlsPlayer2, "btnControlsPlayer2");
    lookUp(gui, btnControlsLeft, "btnControlsLeft");
    lookUp(gui, btnControlsRight, "btnControlsRight");
    lookUp(gui, btnControlsFire, "btnControlsFire");
    lookUp(gui, btnContinue, "btnContinue");
    lookUp(gui, btnInGameSoundSettings, "btnInGameSoundSettings");
    lookUp(gui, btnInGameControlsSinglePlayer, "btnInGameControlsSinglePlayer");
    lookUp(gui, btnInGameControlsMultiplayer1, "btnInGameControlsMultiplayer1");
    lookUp(gui, btnInGameControlsMultiplayer2, "btnInGameControlsMultiplayer2");
    lookUp(gui, cbFullscreen, "cbFullscreen");
    lookUp(gui, cbInGameFullscreen, "cbInGameFullscreen");
    lookUp(gui, lHeaderVersion, "lHeaderVersion");
    lookUp(gui, labelControlsHeader, "labelControlsHeader");
    lookUp(gui, labelControlsLeft, "labelControlsLeft");
    lookUp(gui, labelControlsLeftJoy, "labelControlsLeftJoy");
    lookUp(gui, labelControlsRight, "labelControlsRight");
    lookUp(gui, labelControlsRightJoy, "labelControlsRightJoy");
    lookUp(gui, labelControlsUp, "labelControlsUp");
    lookUp(gui, labelControlsUpJoy, "labelControlsUpJoy");
    lookUp(gui, labelControlsDown, "labelControlsDown");
    lookUp(gui, labelControlsDownJoy, "labelControlsDownJoy");
    lookUp(gui, labelControlsFire, "labelControlsFire");
    lookUp(gui, labelControlsFireJoy, "labelControlsFireJoy");
    lookUp(gui, labelControlsShield, "labelControlsShield");
    lookUp(gui, labelControlsShieldJoy, "labelControlsShieldJoy");
    lookUp(gui, labelControlsTimeWarp, "labelControlsTimeWarp");
    lookUp(gui, labelControlsTimeWarpJoy, "labelControlsTimeWarpJoy");
    lookUp(gui, labelControlsPauseJoy, "labelControlsPauseJoy");
    lookUp(gui, lGetKeyTriggerName, "lGetKeyTriggerName");
    lookUp(gui, lGetKeyHeader, "lGetKeyHeader");
    lookUp(gui, lGetKeyHeaderAlternate, "lGetKeyHeaderAlternate");
    lookUp(gui, lVolumeSoundsValue, "lVolumeSoundsValue");
    lookUp(gui, lVolumeMusicValue, "lVolumeMusicValue");
    lookUp(gui, icGetKey, "icGetKey");
    lookUp(gui, sVolumeSounds, "sVolumeSounds");
    lookUp(gui, sVolumeMusic, "sVolumeMusic");
    lsTextfieldRed = dynamic_cast<gui::LabelStyle*>(gui->getStyles()->find("lsTextfieldRed"));
    lsTextfieldBlue = dynamic_cast<gui::LabelStyle*>(gui->getStyles()->find("lsTextfieldBlue"));

    gui->setCallback(&callback);
    if (lHeaderVersion) lHeaderVersion->setCaption(getFullVersion());
    updateFullscreenButtons();

    // The menu panels stay clear of the logo above them.
    const basic_Vector2D<float> belowLogo{norvane::vpScreen.width, logoPosition.y};
    const basic_Vector2D<float> window{norvane::vpScreen.width, norvane::vpScreen.height};
    for (gui::Component* panel : {pMainMenu, pSettings, pCredits, pSoundSettings, pQuit}) {
        if (panel) panel->center(belowLogo);
    }
    for (gui::Component* panel : {pControls, pGetKey, pEnterName, pInGame}) {
        if (panel) panel->center(window);
    }

    imageLoader = new gfx::ImageLoader(imagesGame, this);
    norvane::backgroundTasks.push_back(imageLoader);
    setMinTicks(0);  // no padding: the loader gets the time
}

void Resources::setResolution(int width, int height, int bpp, bool fullscreen) {
    norvane::setResolution(width, height, bpp, fullscreen, 0, 0);
    rcGame.size = GAME_SIZE;
    rcHud.size = GAME_SIZE;
    rcGui.size = basic_Vector2D<float>{static_cast<float>(width), static_cast<float>(height)};
    starfieldProperties.width = GAME_SIZE.x;
    starfieldProperties.height = GAME_SIZE.y;
}

void Resources::updateFullscreenButtons() {
    if (cbFullscreen) cbFullscreen->setChecked(settings.fullscreen);
    if (cbInGameFullscreen) cbInGameFullscreen->setChecked(settings.fullscreen);
}

void Resources::setVolumeSfx(int v) {
    currentVolumeSfx = v;
    const float volume = static_cast<float>(v) / 100.0f;
    if (menuSounds) menuSounds->setVolume(volume);
    if (gameSounds) gameSounds->setVolume(volume);
}

void Resources::setVolumeMusic(int v) {
    currentVolumeMusic = v;
    if (!musicManager) return;
    const float volume = static_cast<float>(v) / 100.0f;
    musicManager->setVolume(volume);
    musicManager->setCurrentVolume(volume);
}

void Resources::initGame() { imagesGame->refresh(nullptr); }

void Resources::initHighscores() { highscores.setDefaults(); }

void Resources::loadHighscores() {
    const std::string shared = dirManager.getSubDir(norvane::sdState, "", false) + FILE_HIGHSCORES;
    const std::string personal = personalHighscores();
    const FileStamp sharedStamp(shared), personalStamp(personal);
    if (personalStamp.exists() && personalStamp.modified > sharedStamp.modified) {
        norvane::debug::info(dbgVantorixResources, "Reading the highscores saved in \"%s\".", personal.c_str());
        highscores.load(personal);
    } else {
        highscores.load(shared);
    }
}

void Resources::saveHighscores() {
    std::string shared;
    try {
        shared = dirManager.getSubDir(norvane::sdState, "", true) + FILE_HIGHSCORES;
        const FileStamp before(shared);
        highscores.save(shared);
        const FileStamp after(shared);
        if (after.exists() && after.inode != before.inode) return;
    } catch (const std::string& text) {
        norvane::debug::info(dbgVantorixResources, "Could not save highscores: %s", text.c_str());
    }
    // Not written, and the file writer says nothing of it: keep them with the player instead.
    const std::string personal = personalHighscores();
    try {
        const FileStamp before(personal);
        // With the player's own rights: Highscores::save would take the group of the shared table.
        std::unique_ptr<norvane::xml::Node> tree(highscores.buildDomTree());
        tree->saveXML(personal.c_str());
        const FileStamp after(personal);
        if (after.exists() && after.inode != before.inode) {
            norvane::debug::warning(dbgVantorixResources, "Could not save highscores to \"%s\"; saved them to \"%s\".",
                                    shared.c_str(), personal.c_str());
            return;
        }
    } catch (const std::string&) {
    }
    norvane::debug::error(dbgVantorixResources, "Could not save highscores to \"%s\" nor to \"%s\".", shared.c_str(),
                          personal.c_str());
}

void Resources::onFinish(norvane::BackgroundTask*) {
    if (pCredits) pCredits->setVisible(false);
    if (pMainMenu) pMainMenu->setVisible(true);
    if (btnSinglePlayerA) btnSinglePlayerA->setFocused(true);
    loaded = true;
    imageLoader = nullptr;  // the framework deletes it
    logoColor.alpha = 1.0f;  // the menu followed the progress only while the loader lived
    evaluatorMenu->enabled = true;
    if (menu) menu->initSpritesHelp();
    setMinTicks(specs.minFrameTime - specs.minFrameTimeOffset);
}

}  // namespace vantorix
