#ifndef VANTORIX_RESOURCES_RESOURCES_H
#define VANTORIX_RESOURCES_RESOURCES_H

#include <SDL/SDL.h>

#include <string>
#include <vector>

#include "background.h"
#include "files/sysdirs.h"
#include "gfx/color.h"
#include "math/geometry.h"
#include "particles/starfield.h"
#include "rendercontext.h"
#include "resources/highscores.h"
#include "resources/manager.h"
#include "resources/settings.h"

namespace norvane {
class ControlQueue;
class InputEvaluator;
namespace audio {
class MusicManager;
class Sample;
class SampleBank;
class SourcePool;
class StreamedSample;
}  // namespace audio
namespace fonts {
class Font;
class FontBank;
}  // namespace fonts
namespace gfx {
class Animation;
class AnimationBank;
class Image;
class ImageBank;
}  // namespace gfx
namespace gui {
class Button;
class Checkbox;
class Component;
class GUI;
class InputCaptor;
class Label;
class LabelStyle;
template <typename T>
class Slider;
}  // namespace gui
}  // namespace norvane

namespace vantorix {

const char* const FILE_SETTINGS = "settings.xml";
const char* const FILE_HIGHSCORES = "highscores.xml";
const char* const FILE_SCREENSHOT = "screenshot.png";
const char* const GAME_KEY = "vantorix";

extern norvane::SysDirManager dirManager;  // built from GAME_KEY as a game

// The game's banks, settings and everything its states share; one instance, `resources`.
// Pointers into banks are borrowed and stay null when the definitions lack the name.
class Resources : public norvane::ResourceManager, public norvane::BackgroundTaskCallback {
public:
    // Reads "resources.xml" and the settings; throws "<bank> not found" for a missing bank.
    Resources();
    ~Resources() override;

    // Highscores, sounds, music, GUI look-ups, then the background loading of the game images.
    void init();
    void setResolution(int width, int height, int bpp, bool fullscreen);
    void updateFullscreenButtons();
    void setVolumeSfx(int v);
    void setVolumeMusic(int v);  // applied at once to the playing music
    void initGame();
    void initMenu() {}
    void uninitMenu() {}
    void uninitGame() {}
    void loadSettings();  // a missing or broken file is logged and changes nothing
    void saveSettings();  // replaces the file only once the new one is complete
    void initHighscores();
    // The state directory's table, or the player's own copy when that is newer: saveHighscores puts
    // the table in the user directory when the state directory will not take it.
    void loadHighscores();
    void saveHighscores();

    void onStart(norvane::BackgroundTask*) override {}
    void onFinish(norvane::BackgroundTask* task) override;  // the game images are loaded

    Settings settings;
    bool loaded = false;  // the game images are loaded

    norvane::RenderContext2D rcGame;  // 800 x 600 game space, alpha blending
    norvane::RenderContext2D rcHud;   // 800 x 600, additive
    norvane::RenderContext2D rcGui;   // the window's pixels

    norvane::fonts::FontBank* fonts = nullptr;
    norvane::gfx::ImageBank* imagesGame = nullptr;
    norvane::gfx::ImageBank* imagesHud = nullptr;
    norvane::gfx::ImageBank* imagesGui = nullptr;
    norvane::gfx::AnimationBank* animationsGame = nullptr;
    norvane::gui::GUI* gui = nullptr;
    norvane::audio::SampleBank* sounds = nullptr;
    norvane::audio::SampleBank* music = nullptr;
    norvane::InputEvaluator* evaluatorCore = nullptr;
    norvane::InputEvaluator* evaluatorMenu = nullptr;
    norvane::InputEvaluator* evaluatorGameCore = nullptr;
    norvane::InputEvaluator* evaluatorGamePlayerSingle = nullptr;    // triggers carry data 0
    norvane::InputEvaluator* evaluatorGamePlayerMulti[2] = {};       // data 0 and 1: the ship slot

    norvane::ControlQueue* queue = nullptr;
    SDL_Joystick* joysticks[2] = {};

    norvane::fonts::Font* fontStandard = nullptr;  // "Standard", size 33

    // HUD
    norvane::gfx::Image* imageFull = nullptr;
    norvane::gfx::Image* imageShield = nullptr;
    norvane::gfx::Image* imageSpeed[5] = {};    // "speed_1" .. "speed_5"
    norvane::gfx::Image* imageFire[5][6] = {};  // [n - 1][m] is "fire_n_m"
    std::vector<norvane::gfx::Image*> imageTimeWarp;  // [i] is "timewarp_<i + 1>", one per storable warp

    norvane::gfx::Image* imageLogo = nullptr;

    norvane::gfx::Image* imageLaserRayGreen = nullptr;
    norvane::gfx::Image* imageLaserRoundGreen = nullptr;
    norvane::gfx::Image* imageLaserRoundRed = nullptr;

    norvane::gfx::Animation* animPlayer1 = nullptr;
    norvane::gfx::Animation* animPlayer2 = nullptr;
    norvane::gfx::Animation* animEngine = nullptr;
    norvane::gfx::Animation* animEngineStutter = nullptr;
    norvane::gfx::Animation* animShield = nullptr;
    norvane::gfx::Animation* animAsteroidSmall = nullptr;
    norvane::gfx::Animation* animAsteroidLarge = nullptr;
    norvane::gfx::Animation* animCrystal = nullptr;
    norvane::gfx::Animation* animContainer[3] = {};  // "container_0" .. "container_2"
    norvane::gfx::Animation* animExtraFireRate = nullptr;
    norvane::gfx::Animation* animExtraLaserType = nullptr;
    norvane::gfx::Animation* animExtraSpeedup = nullptr;
    norvane::gfx::Animation* animExtraShield = nullptr;
    norvane::gfx::Animation* animExtraScore = nullptr;
    norvane::gfx::Animation* animExtraTimeWarp = nullptr;
    norvane::gfx::Animation* animFoeLeft = nullptr;
    norvane::gfx::Animation* animFoeRight = nullptr;
    norvane::gfx::Animation* animExplosionFast = nullptr;
    norvane::gfx::Animation* animExplosionSlow = nullptr;

    // Streamed pieces for the music manager.
    norvane::audio::StreamedSample* musicTitleIntro = nullptr;
    norvane::audio::StreamedSample* musicTitleLoop = nullptr;
    norvane::audio::StreamedSample* musicGameAIntro = nullptr;
    norvane::audio::StreamedSample* musicGameALoop = nullptr;
    norvane::audio::StreamedSample* musicGameBIntro = nullptr;
    norvane::audio::StreamedSample* musicGameBLoop = nullptr;
    norvane::audio::StreamedSample* musicDeath = nullptr;
    norvane::audio::StreamedSample* musicHighscoresIntro = nullptr;
    norvane::audio::StreamedSample* musicHighscoresLoop = nullptr;
    norvane::audio::StreamedSample* musicGameOverIntro = nullptr;
    norvane::audio::StreamedSample* musicGameOverLoop = nullptr;

    norvane::audio::Sample* sampleExplosion = nullptr;
    norvane::audio::Sample* sampleLaser = nullptr;
    norvane::audio::Sample* samplePing = nullptr;
    norvane::audio::Sample* sampleExtra = nullptr;
    norvane::audio::Sample* sampleTimeWarp = nullptr;
    norvane::audio::Sample* sampleMenuMove = nullptr;
    norvane::audio::Sample* sampleMenuClick = nullptr;

    // GUI components, named as in the GUI definition; set by init().
    norvane::gui::Component* pMainMenu = nullptr;
    norvane::gui::Component* pSettings = nullptr;
    norvane::gui::Component* pCredits = nullptr;
    norvane::gui::Component* pControls = nullptr;
    norvane::gui::Component* pGetKey = nullptr;
    norvane::gui::Component* pSoundSettings = nullptr;
    norvane::gui::Component* pEnterName = nullptr;
    norvane::gui::Component* pInGame = nullptr;
    norvane::gui::Component* pQuit = nullptr;

    norvane::gui::Button* btnQuitNo = nullptr;
    norvane::gui::Button* btnQuit = nullptr;
    norvane::gui::Button* btnSinglePlayerA = nullptr;
    norvane::gui::Button* btnSinglePlayerB = nullptr;
    norvane::gui::Button* btnMultiplayer = nullptr;
    norvane::gui::Button* btnSettings = nullptr;
    norvane::gui::Button* btnCredits = nullptr;
    norvane::gui::Button* btnSettingsDone = nullptr;
    norvane::gui::Button* btnSoundSettings = nullptr;
    norvane::gui::Button* btnSoundSettingsOk = nullptr;
    norvane::gui::Button* btnControlsSinglePlayer = nullptr;
    norvane::gui::Button* btnControlsMultiplayer1 = nullptr;
    norvane::gui::Button* btnControlsMultiplayer2 = nullptr;
    norvane::gui::Button* btnControlsPlayer1 = nullptr;
    norvane::gui::Button* btnControlsPlayer2 = nullptr;
    norvane::gui::Button* btnControlsLeft = nullptr;
    norvane::gui::Button* btnControlsRight = nullptr;
    norvane::gui::Button* btnControlsFire = nullptr;
    norvane::gui::Button* btnContinue = nullptr;
    norvane::gui::Button* btnInGameSoundSettings = nullptr;
    norvane::gui::Button* btnInGameControlsSinglePlayer = nullptr;
    norvane::gui::Button* btnInGameControlsMultiplayer1 = nullptr;
    norvane::gui::Button* btnInGameControlsMultiplayer2 = nullptr;

    norvane::gui::Checkbox* cbFullscreen = nullptr;
    norvane::gui::Checkbox* cbInGameFullscreen = nullptr;

    norvane::gui::Label* lHeaderVersion = nullptr;
    norvane::gui::Label* labelControlsHeader = nullptr;
    norvane::gui::Label* labelControlsLeft = nullptr;
    norvane::gui::Label* labelControlsLeftJoy = nullptr;
    norvane::gui::Label* labelControlsRight = nullptr;
    norvane::gui::Label* labelControlsRightJoy = nullptr;
    norvane::gui::Label* labelControlsUp = nullptr;
    norvane::gui::Label* labelControlsUpJoy = nullptr;
    norvane::gui::Label* labelControlsDown = nullptr;
    norvane::gui::Label* labelControlsDownJoy = nullptr;
    norvane::gui::Label* labelControlsFire = nullptr;
    norvane::gui::Label* labelControlsFireJoy = nullptr;
    norvane::gui::Label* labelControlsShield = nullptr;
    norvane::gui::Label* labelControlsShieldJoy = nullptr;
    norvane::gui::Label* labelControlsTimeWarp = nullptr;
    norvane::gui::Label* labelControlsTimeWarpJoy = nullptr;
    norvane::gui::Label* labelControlsPauseJoy = nullptr;
    norvane::gui::Label* lGetKeyTriggerName = nullptr;
    norvane::gui::Label* lGetKeyHeader = nullptr;
    norvane::gui::Label* lGetKeyHeaderAlternate = nullptr;
    norvane::gui::Label* lVolumeSoundsValue = nullptr;
    norvane::gui::Label* lVolumeMusicValue = nullptr;

    norvane::gui::InputCaptor* icGetKey = nullptr;
    norvane::gui::Slider<int>* sVolumeSounds = nullptr;
    norvane::gui::Slider<int>* sVolumeMusic = nullptr;

    norvane::gui::LabelStyle* lsTextfieldRed = nullptr;   // name entry of the first ship
    norvane::gui::LabelStyle* lsTextfieldBlue = nullptr;  // and of the second

    norvane::basic_Vector2D<float> logoPosition;        // in rcGui
    norvane::Color logoColor{1.0f, 1.0f, 1.0f, 0.0f};  // the title menu fades the alpha in while loading

    norvane::audio::SourcePool* menuSounds = nullptr;  // 2 sources
    norvane::audio::SourcePool* gameSounds = nullptr;  // 10 sources
    norvane::audio::MusicManager* musicManager = nullptr;  // null while the music volume is 0
    int currentVolumeSfx = 0;    // the sound dialog's live values; `settings` keeps the confirmed ones
    int currentVolumeMusic = 0;

    norvane::particles::StarfieldProperties starfieldProperties;
    norvane::particles::Starfield* starfield = nullptr;  // owned

    Highscores highscores;

    norvane::BackgroundTask* imageLoader = nullptr;  // owned by the framework; null once finished
};

}  // namespace vantorix

#endif
