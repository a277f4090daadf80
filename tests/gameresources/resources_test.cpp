#include <SDL/SDL.h>
#include <unistd.h>

#include <memory>

#include "audio/core.h"
#include "audio/resources.h"
#include "audio/sources.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "controls/translators.h"
#include "framework/application.h"
#include "gamedata.h"
#include "gfx/animations.h"
#include "gfx/fonts.h"
#include "gfx/image.h"
#include "gui/root.h"
#include "gui/standard.h"
#include "resources/state.h"
#include "specs.h"
#include "vantorix.h"

using norvane::InputEvaluator;
using norvane::Trigger;
using norvane::xml::Node;
using vantorix::Resources;

namespace {

std::string constructionError() {
    try {
        Resources r;
    } catch (const std::string& text) {
        return text;
    }
    return "(none)";
}

std::string nameOf(const norvane::gfx::Image* image) {
    const auto* resource = dynamic_cast<const norvane::gfx::ImageResource*>(image);
    return resource ? resource->name : "(null)";
}

}  // namespace

TEST_F(GameData, AMissingOrMistypedBankEndsConstructionWithItsText) {
    const struct {
        const char* bank;
        const char* text;
    } cases[] = {
        {"fonts", "fonts not found"},
        {"imagesGame", "imagesGame not found"},
        {"animationsGame", "animationsGame not found"},
        {"imagesHud", "imagesHud not found"},
        {"imagesGui", "imagesGui not found"},
        {"gui", "gui not found"},
        {"sounds", "samples not found"},
        {"music", "music not found"},
        {"evaluatorCore", "evaluatorCore not found"},
        {"evaluatorMenu", "evaluatorMenu not found"},
        {"evaluatorGameCore", "evaluatorGameCore not found"},
        {"evaluatorGamePlayer", "Resource \"evaluatorGamePlayer\" not found."},
    };
    for (const auto& c : cases) {
        installData([&](Node* root) { delete bankElement(root, c.bank); });
        EXPECT_EQ(constructionError(), c.text);
    }
    installData([](Node* root) { bankElement(root, "music")->name = "images"; });
    EXPECT_EQ(constructionError(), "music not found");
}

TEST_F(GameData, AMissingBankEndsTheGameQuietly) {
    installData([](Node* root) { delete bankElement(root, "music"); });
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO);  // the log, where the death test reads
            setenv("SDL_VIDEODRIVER", "dummy", 1);
            new vantorix::Vantorix;
        },
        testing::ExitedWithCode(0), "\\[vantorix:core\\] \\(critical\\) Could not load resources: music not found\n");
    EXPECT_NE(access(settingsPath().c_str(), F_OK), 0) << "saved without resources";
}

TEST_F(GameData, TwoPlayersShareTheKeyboardOnFirstStart) {
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    installData();
    Resources r;
    const InputEvaluator* single = r.evaluatorGamePlayerSingle;
    InputEvaluator* const players[] = {r.evaluatorGamePlayerMulti[0], r.evaluatorGamePlayerMulti[1]};
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(players[i]->size(), single->size());
        for (const auto& entry : single->resources) {
            const Trigger* trigger = players[i]->find(entry.first);
            ASSERT_TRUE(trigger) << entry.first;
            EXPECT_EQ(trigger->code, entry.second->code);
            EXPECT_EQ(trigger->data, i);
        }
        // Bindings taken from their own definition must still react as the trigger's own would.
        for (const norvane::KeyTranslator* key : players[i]->keyTranslators) {
            EXPECT_EQ(key->state, key->trigger->defaultKeyState) << key->trigger->name;
        }
    }

    EXPECT_FALSE(r.evaluatorGameCore->enabled || single->enabled || players[0]->enabled || players[1]->enabled);
    EXPECT_TRUE(r.evaluatorCore->enabled && r.evaluatorMenu->enabled);

    // A two-player game: each player presses a key, then the window loses the focus.
    players[0]->enabled = players[1]->enabled = true;
    for (SDLKey key : {SDLK_LEFT, SDLK_d, SDLK_RCTRL, SDLK_LSHIFT, SDLK_F11}) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = key;
        SDL_PushEvent(&event);
    }
    SDL_Event focusLost{};
    focusLost.type = SDL_ACTIVEEVENT;
    focusLost.active.state = SDL_APPINPUTFOCUS;
    SDL_PushEvent(&focusLost);
    ASSERT_TRUE(r.queue->readEvents());
    EXPECT_EQ(players[0]->find("x")->value, -1.0f);
    EXPECT_EQ(players[1]->find("x")->value, 1.0f);
    EXPECT_TRUE(players[0]->find("fire")->isActive());
    EXPECT_FALSE(players[1]->find("fire")->isActive());
    EXPECT_TRUE(players[1]->find("shield")->isActive());
    EXPECT_FALSE(single->find("fire")->isActive());
    Trigger* fired[2] = {};
    *r.queue >> fired[0];
    *r.queue >> fired[1];
    ASSERT_TRUE(fired[0] && fired[1]);
    EXPECT_EQ(fired[0]->code, 3);  // full screen
    EXPECT_EQ(fired[1], r.evaluatorCore->find("pause"));
}

TEST_F(GameWindow, TheShippedDataLoadsCleanlyAndEveryNameResolves) {
    installData();
    writeSettings(R"(<settings><sound volumeSfx="40" volumeMusic="60"/></settings>)");
    auto* application = new norvane::FrameRateLimitedApplication;  // stays, as the game's does
    std::unique_ptr<Resources> r;
    const std::string log = captured([&] {
        norvane::audio::init("", 44100);
        r.reset(new Resources);
        r->setResolution(800, 600, 32, false);
        r->init();
    });
    EXPECT_EQ(log.find("(warning)"), std::string::npos) << log;
    EXPECT_EQ(log.find("(error)"), std::string::npos) << log;

    const void* resolved[] = {
        r->fontStandard, r->imageFull, r->imageShield, r->imageLogo, r->imageLaserRayGreen, r->imageLaserRoundGreen,
        r->imageLaserRoundRed, r->animPlayer1, r->animPlayer2, r->animEngine, r->animEngineStutter, r->animShield,
        r->animAsteroidSmall, r->animAsteroidLarge, r->animCrystal, r->animExtraFireRate, r->animExtraLaserType,
        r->animExtraSpeedup, r->animExtraShield, r->animExtraScore, r->animExtraTimeWarp, r->animFoeLeft,
        r->animFoeRight, r->animExplosionFast, r->animExplosionSlow, r->musicTitleIntro, r->musicTitleLoop,
        r->musicGameAIntro, r->musicGameALoop, r->musicGameBIntro, r->musicGameBLoop, r->musicDeath,
        r->musicHighscoresIntro, r->musicHighscoresLoop, r->musicGameOverIntro, r->musicGameOverLoop,
        r->sampleExplosion, r->sampleLaser, r->samplePing, r->sampleExtra, r->sampleTimeWarp, r->sampleMenuMove,
        r->sampleMenuClick, r->pMainMenu, r->pSettings, r->pCredits, r->pControls, r->pGetKey, r->pSoundSettings,
        r->pEnterName, r->pInGame, r->pQuit, r->btnQuitNo, r->btnQuit, r->btnSinglePlayerA, r->btnSinglePlayerB,
        r->btnMultiplayer, r->btnSettings, r->btnCredits, r->btnSettingsDone, r->btnSoundSettings,
        r->btnSoundSettingsOk, r->btnControlsSinglePlayer, r->btnControlsMultiplayer1, r->btnControlsMultiplayer2,
        r->btnControlsPlayer1, r->btnControlsPlayer2, r->btnControlsLeft, r->btnControlsRight, r->btnControlsFire,
        r->btnContinue, r->btnInGameSoundSettings, r->btnInGameControlsSinglePlayer,
        r->btnInGameControlsMultiplayer1, r->btnInGameControlsMultiplayer2, r->cbFullscreen, r->cbInGameFullscreen,
        r->lHeaderVersion, r->labelControlsHeader, r->labelControlsLeft, r->labelControlsLeftJoy,
        r->labelControlsRight, r->labelControlsRightJoy, r->labelControlsUp, r->labelControlsUpJoy,
        r->labelControlsDown, r->labelControlsDownJoy, r->labelControlsFire, r->labelControlsFireJoy,
        r->labelControlsShield, r->labelControlsShieldJoy, r->labelControlsTimeWarp, r->labelControlsTimeWarpJoy,
        r->labelControlsPauseJoy, r->lGetKeyTriggerName, r->lGetKeyHeader, r->lGetKeyHeaderAlternate,
        r->lVolumeSoundsValue, r->lVolumeMusicValue, r->icGetKey, r->sVolumeSounds, r->sVolumeMusic,
        r->lsTextfieldRed, r->lsTextfieldBlue,
    };
    for (size_t i = 0; i < sizeof(resolved) / sizeof(resolved[0]); ++i) EXPECT_TRUE(resolved[i]) << "entry " << i;
    for (int n = 1; n <= 5; ++n) {
        EXPECT_EQ(nameOf(r->imageSpeed[n - 1]), "speed_" + std::to_string(n));
        for (int m = 0; m <= 5; ++m) {
            EXPECT_EQ(nameOf(r->imageFire[n - 1][m]), "fire_" + std::to_string(n) + "_" + std::to_string(m));
        }
    }
    ASSERT_EQ(r->imageTimeWarp.size(), 2u);
    EXPECT_EQ(nameOf(r->imageTimeWarp[1]), "timewarp_2");
    EXPECT_EQ(r->animContainer[2]->name, "container_2");
    EXPECT_EQ(r->fontStandard->name.size, 33u);
    EXPECT_EQ(r->gui->getCallback(), &vantorix::callback);

    EXPECT_TRUE(r->rcGame.blending && r->rcHud.blending && r->rcGui.blending);
    EXPECT_EQ(r->logoPosition.x, (800 - r->imageLogo->getWidth()) * 0.5f);
    EXPECT_EQ(r->logoPosition.y, 600 - r->imageLogo->getHeight() - 10.0f);
    EXPECT_TRUE(r->musicManager);
    EXPECT_EQ(r->menuSounds->getSize() + r->gameSounds->getSize(), 12);
    EXPECT_FLOAT_EQ(r->gameSounds->getVolume(), 0.4f);
    ASSERT_EQ(r->starfield->classes.size(), 5u);
    EXPECT_EQ(r->starfield->starCount, static_cast<int>(vantorix::specs.starCount));
    EXPECT_FLOAT_EQ(r->starfield->classes[1].color.green, 0.4f);
    EXPECT_FLOAT_EQ(r->starfield->speed, vantorix::specs.idleStarfieldSpeed);

    // The game images load in the background, with unpadded frames meanwhile.
    EXPECT_TRUE(r->imageLoader);
    EXPECT_EQ(application->minTicks, 0u);
    for (int pass = 0; pass < 10000 && !r->loaded; ++pass) norvane::perform(SDL_GetTicks() + 20);
    EXPECT_TRUE(r->loaded);
    EXPECT_FALSE(r->imageLoader);
    EXPECT_TRUE(r->evaluatorMenu->enabled);
    EXPECT_EQ(application->minTicks, vantorix::specs.minFrameTime - vantorix::specs.minFrameTimeOffset);
    EXPECT_GT(r->imageLaserRoundRed->getWidth(), 0);
    EXPECT_TRUE(r->pMainMenu->getVisible());
    EXPECT_FALSE(r->pCredits->getVisible());
    EXPECT_TRUE(r->btnSinglePlayerA->isFocused());
}

TEST_F(GameWindow, AnImageThatWillNotLoadEndsTheSecondStage) {
    installData([](Node* root) { (*bankElement(root, "imagesHud")->children.front())["filename"] = "gone.png"; });
    Resources r;
    std::string error;
    try {
        r.init();
    } catch (const std::string& text) {
        error = text;
    }
    EXPECT_EQ(error.rfind("Could not load \"", 0), 0u) << error;
    EXPECT_NE(error.find("gone.png"), std::string::npos) << error;
}

TEST_F(GameWindow, MusicStaysOffUntilItsVolumeIsRaised) {
    installData();
    writeSettings(R"(<settings><sound volumeMusic="0"/></settings>)");
    Resources r;
    captured([&] {
        norvane::audio::init("", 44100);
        r.setResolution(800, 600, 32, false);
        r.init();
    });
    EXPECT_FALSE(r.musicManager);
    r.setVolumeMusic(50);
    EXPECT_EQ(r.currentVolumeMusic, 50);
}
