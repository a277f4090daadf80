#include <filesystem>
#include <memory>

#include "audio/core.h"
#include "audio/sources.h"
#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "framework/application.h"
#include "gamedata.h"
#include "gfx/image.h"
#include "gui/root.h"
#include "gui/standard.h"
#include "specs.h"
#include "support/events.h"
#include "vantorix.h"

using norvane::InputEvaluator;
using norvane::Trigger;
using norvane::xml::Node;
using namespace vantorix;

TEST_F(GameData, AMissingOrMistypedBankEndsConstructionWithItsText) {
    for (std::string bank : {"fonts", "imagesGame", "animationsGame", "imagesHud", "imagesGui", "gui", "sounds", "music",
                             "evaluatorCore", "evaluatorMenu", "evaluatorGameCore", "evaluatorGamePlayer"}) {
        installData([&](Node* root) { delete bankElement(root, bank); });
        EXPECT_EQ(thrownBy([] { Resources r; }), bank == "sounds"                ? "samples not found"
                                                 : bank == "evaluatorGamePlayer" ? "Resource \"" + bank + "\" not found."
                                                                                 : bank + " not found");
    }
    installData([](Node* root) { bankElement(root, "music")->name = "images"; });
    EXPECT_EQ(thrownBy([] { Resources r; }), "music not found");
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
        EXPECT_EQ(players[i]->find("fire")->data, i);
    }
    EXPECT_FALSE(r.evaluatorGameCore->enabled || single->enabled || players[0]->enabled || players[1]->enabled);
    EXPECT_TRUE(r.evaluatorCore->enabled && r.evaluatorMenu->enabled);

    // A two-player game: each player presses a key, then the window loses the focus.
    players[0]->enabled = players[1]->enabled = true;
    for (SDLKey key : {SDLK_LEFT, SDLK_d, SDLK_RCTRL, SDLK_LSHIFT, SDLK_F11}) {
        SDL_Event event = keyEvent(key, true);
        SDL_PushEvent(&event);
    }
    SDL_Event focusLost{};
    focusLost.type = SDL_ACTIVEEVENT;
    focusLost.active.state = SDL_APPINPUTFOCUS;
    SDL_PushEvent(&focusLost);
    ASSERT_TRUE(r.queue->readEvents());
    EXPECT_EQ(std::make_pair(players[0]->find("x")->value, players[1]->find("x")->value), std::make_pair(-1.0f, 1.0f));
    EXPECT_TRUE(players[0]->find("fire")->isActive() && players[1]->find("shield")->isActive());
    EXPECT_FALSE(players[1]->find("fire")->isActive() || single->find("fire")->isActive());
    EXPECT_EQ(drain(*r.queue), (std::vector<Trigger*>{r.evaluatorCore->find("fullscreen"), r.evaluatorCore->find("pause")}));
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

    // What the GUI lacks throws; these would stay null.
    std::vector<const void*> resolved = {
        r->fontStandard, r->imageFull, r->imageShield, r->imageLogo, r->imageLaserRayGreen, r->imageLaserRoundGreen,
        r->imageLaserRoundRed, r->animPlayer1, r->animPlayer2, r->animEngine, r->animEngineStutter, r->animShield,
        r->animAsteroidSmall, r->animAsteroidLarge, r->animCrystal, r->animExtraFireRate, r->animExtraLaserType,
        r->animExtraSpeedup, r->animExtraShield, r->animExtraScore, r->animExtraTimeWarp, r->animFoeLeft,
        r->animFoeRight, r->animExplosionFast, r->animExplosionSlow, r->musicTitleIntro, r->musicTitleLoop,
        r->musicGameAIntro, r->musicGameALoop, r->musicGameBIntro, r->musicGameBLoop, r->musicDeath,
        r->musicHighscoresIntro, r->musicHighscoresLoop, r->musicGameOverIntro, r->musicGameOverLoop,
        r->sampleExplosion, r->sampleLaser, r->samplePing, r->sampleExtra, r->sampleTimeWarp, r->sampleMenuMove,
        r->sampleMenuClick, r->lsTextfieldRed, r->lsTextfieldBlue, r->musicManager};
    resolved.insert(resolved.end(), std::begin(r->imageSpeed), std::end(r->imageSpeed));
    for (const auto& row : r->imageFire) resolved.insert(resolved.end(), std::begin(row), std::end(row));
    resolved.insert(resolved.end(), std::begin(r->animContainer), std::end(r->animContainer));
    resolved.insert(resolved.end(), r->imageTimeWarp.begin(), r->imageTimeWarp.end());
    for (size_t i = 0; i < resolved.size(); ++i) EXPECT_TRUE(resolved[i]) << "entry " << i;
    EXPECT_EQ(r->imageTimeWarp.size(), 2u);
    EXPECT_TRUE(r->rcGame.blending && r->rcHud.blending && r->rcGui.blending);
    EXPECT_EQ(r->menuSounds->getSize() + r->gameSounds->getSize(), 12);
    EXPECT_FLOAT_EQ(r->gameSounds->getVolume(), 0.4f);
    EXPECT_EQ(r->starfield->starCount, static_cast<int>(specs.starCount));

    // The game images load in the background, with unpadded frames meanwhile.
    EXPECT_TRUE(r->imageLoader && application->minTicks == 0u);
    for (int pass = 0; pass < 10000 && !r->loaded; ++pass) norvane::perform(SDL_GetTicks() + 20);
    EXPECT_TRUE(r->loaded && !r->imageLoader && r->evaluatorMenu->enabled);
    EXPECT_EQ(application->minTicks, specs.minFrameTime - specs.minFrameTimeOffset);
    EXPECT_GT(r->imageLaserRoundRed->getWidth(), 0);
    EXPECT_TRUE(r->pMainMenu->getVisible() && !r->pCredits->getVisible() && r->btnSinglePlayerA->isFocused());
}

TEST_F(GameWindow, MusicStaysOffUntilItsVolumeIsRaisedAndAnImageThatWillNotLoadEndsTheSecondStage) {
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

    installData([](Node* root) { (*bankElement(root, "imagesHud")->children.front())["filename"] = "gone.png"; });
    const std::string error = thrownBy([] { Resources().init(); });
    EXPECT_EQ(error.rfind("Could not load \"", 0), 0u) << error;
    EXPECT_NE(error.find("gone.png"), std::string::npos) << error;
}

// A highscore the state directory refuses (a plain file stands in its place, for root too) stays
// with the player; once the shared table can be written again, it is the newer one and wins.
TEST_F(GameData, AHighscoreTheStateDirectoryRefusesStaysWithThePlayer) {
    installData();
    const std::string personal = dirManager.getSubDir(norvane::sdUser, "", true) + FILE_HIGHSCORES;
    const std::string state = dirManager.getDir(norvane::sdState);
    const std::string blocked = state.substr(0, state.size() - 1);
    std::remove(personal.c_str());
    // Adds and saves an entry and returns the log; without one, the names of the best two.
    auto save = [](const char* name = nullptr, unsigned int score = 0) {
        Resources r;
        r.initHighscores();
        captured([&] { r.loadHighscores(); });
        if (!name) return r.highscores.singleA[0].name + " " + r.highscores.singleA[1].name;
        r.highscores.singleA.add(HighscoreEntry(name, score));
        return captured([&] { r.saveHighscores(); });
    };
    std::filesystem::remove_all(blocked);
    std::ofstream(blocked) << "not a directory";
    EXPECT_NE(save("Ada", 123456).find("(warning) Could not save highscores to \"" + state + "highscores.xml\"; saved them to \"" +
                                       personal + "\"."),
              std::string::npos);
    EXPECT_EQ(save(), "Ada -----------------");
    std::remove(blocked.c_str());
    EXPECT_EQ(save("Bea", 999999), "");
    EXPECT_EQ(save(), "Bea Ada");
    std::remove(personal.c_str());
    std::remove((state + FILE_HIGHSCORES).c_str());
}
