// The controls, key capture and sound dialogs of GameState.
#include <cmath>
#include <string>

#include "audio/music.h"
#include "audio/sources.h"
#include "controls/inputevaluator.h"
#include "controls/translators.h"
#include "debug/log.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "resources/resources.h"
#include "resources/state.h"
#include "vantorix.h"

namespace vantorix {

using namespace norvane;
using norvane::gui::Label;

namespace {

const int CODE_BACK = 1;  // a player's pause input: bound to gamepad buttons only
const int CODE_X = 202;
const int CODE_Y = 203;
const short AXIS_MIN = 4000;
const short AXIS_MAX = 30000;

void setKeysLabel(Label* label, const Trigger* t, float value) {
    label->setCaption(t ? t->keysToString(value) : std::string());
}

void setJoyLabel(Label* label, const Trigger* t, short direction, float value) {
    label->setCaption(t ? t->joyToString(direction, value) : std::string());
}

}  // namespace

void GameState::showWindowControls(const std::string& title, InputEvaluator* evaluator) {
    Resources* r = resources;
    // The dialog's own buttons switch to another set of controls: the edits of this one are kept.
    if (editCopy) GameState::closeWindowControls(true);
    editedEvaluator = evaluator;
    editCopy = evaluator->clone();
    copyChanged = false;
    r->labelControlsHeader->setCaption(title);
    updateKeyLabels();
    r->pControls->setVisible(true);
    r->pInGame->setVisible(false);
    r->pSettings->setVisible(false);
    r->btnControlsLeft->setFocused(true);
}

void GameState::closeWindowControls(bool apply) {
    if (editCopy) {
        if (apply) editedEvaluator->copyFrom(editCopy);
        controlsChanged = controlsChanged || copyChanged;
        delete editCopy;
        editCopy = nullptr;
        currentTrigger = nullptr;
    }
    resources->pControls->setVisible(false);
}

void GameState::updateKeyLabels() {
    if (!editCopy) return;
    Resources* r = resources;
    const Trigger* x = editCopy->find("x");
    const Trigger* y = editCopy->find("y");
    const Trigger* fire = editCopy->find("fire");
    const Trigger* shield = editCopy->find("shield");
    const Trigger* timewarp = editCopy->find("timewarp");
    setKeysLabel(r->labelControlsLeft, x, -1.0f);
    setKeysLabel(r->labelControlsRight, x, 1.0f);
    setKeysLabel(r->labelControlsUp, y, -1.0f);
    setKeysLabel(r->labelControlsDown, y, 1.0f);
    setJoyLabel(r->labelControlsLeftJoy, x, -1, -1.0f);
    setJoyLabel(r->labelControlsRightJoy, x, 1, 1.0f);
    setJoyLabel(r->labelControlsUpJoy, y, -1, -1.0f);
    setJoyLabel(r->labelControlsDownJoy, y, 1, 1.0f);
    setKeysLabel(r->labelControlsFire, fire, 0.0f);
    setKeysLabel(r->labelControlsShield, shield, 0.0f);
    setKeysLabel(r->labelControlsTimeWarp, timewarp, 0.0f);
    setJoyLabel(r->labelControlsFireJoy, fire, 0, 0.0f);
    setJoyLabel(r->labelControlsShieldJoy, shield, 0, 0.0f);
    setJoyLabel(r->labelControlsTimeWarpJoy, timewarp, 0, 0.0f);
    setJoyLabel(r->labelControlsPauseJoy, editCopy->find("pause"), 0, 0.0f);
}

void GameState::requestKey(const Trigger* request) {
    Resources* r = resources;
    Trigger* target = editCopy ? editCopy->find(request->dataString) : nullptr;
    if (!target) {
        debug::warning(dbgVantorixResources, "No control \"%s\" to bind.", request->dataString.c_str());
        return;
    }
    focusToRestore = r->gui->getFocused();
    currentValue = static_cast<float>(request->data);
    currentTrigger = target;
    if (target->code == CODE_X) {
        r->lGetKeyTriggerName->setCaption(currentValue < 0.0f ? "Left" : "Right");
    } else if (target->code == CODE_Y) {
        r->lGetKeyTriggerName->setCaption(currentValue < 0.0f ? "Up" : "Down");
    } else {
        r->lGetKeyTriggerName->setCaption(target->description);
    }
    const bool joyOnly = target->code == CODE_BACK;
    r->lGetKeyHeader->setVisible(!joyOnly);
    r->lGetKeyHeaderAlternate->setVisible(joyOnly);
    // The capture replaces the controls dialog, so that a stray back cannot close that under it.
    r->pControls->setVisible(false);
    r->pGetKey->setVisible(true);
    r->icGetKey->setEnabled(true);
    r->icGetKey->setFocused(true);
}

void GameState::captureKey() {
    if (!currentTrigger) return;
    const SDLKey key = resources->icGetKey->getKey();
    if (key != SDLK_ESCAPE) {
        currentTrigger->clearKeyTranslators(currentValue);
        if (key == SDLK_BACKSPACE) {
            currentTrigger->clearJoyButtonTranslators(currentValue);
            currentTrigger->clearJoyAxisTranslators(static_cast<short>(std::lround(currentValue)));
        } else if (currentTrigger->code == CODE_BACK) {
            resources->icGetKey->setEnabled(true);  // still waiting for a gamepad button
            resources->icGetKey->setFocused(true);
            return;
        } else {
            new KeyTranslator(currentTrigger, key, ksDefault, currentValue);
        }
        copyChanged = true;
        updateKeyLabels();
    }
    closeKeyCapture();
}

void GameState::captureJoyButton() {
    if (!currentTrigger) return;
    const gui::InputCaptor* captor = resources->icGetKey;
    currentTrigger->clearJoyButtonTranslators(currentValue);
    currentTrigger->clearJoyAxisTranslators(static_cast<short>(std::lround(currentValue)));
    new JoyButtonTranslator(currentTrigger, captor->getJoy(), captor->getJoyButton(), ksDefault, currentValue);
    copyChanged = true;
    updateKeyLabels();
    closeKeyCapture();
}

void GameState::captureJoyAxis() {
    if (!currentTrigger) return;
    const gui::InputCaptor* captor = resources->icGetKey;
    for (float value : {-1.0f, 1.0f}) currentTrigger->clearJoyButtonTranslators(value);
    for (short direction : {-1, 1}) currentTrigger->clearJoyAxisTranslators(direction);
    for (signed char direction : {-1, 1}) {
        new JoyAxisTranslator(currentTrigger, captor->getJoy(), captor->getJoyAxis(), direction, AXIS_MIN, AXIS_MAX);
    }
    copyChanged = true;
    updateKeyLabels();
    closeKeyCapture();
}

void GameState::closeKeyCapture() {
    resources->pControls->setVisible(true);
    resources->pGetKey->setVisible(false);
    resources->icGetKey->setEnabled(false);
    if (focusToRestore) focusToRestore->setFocused(true);
}

void GameState::showWindowSoundSettings() {
    Resources* r = resources;
    r->sVolumeSounds->setValue(r->settings.volumeSfx);
    r->sVolumeMusic->setValue(r->settings.volumeMusic);
    r->lVolumeSoundsValue->setCaption(std::to_string(r->settings.volumeSfx));
    r->lVolumeMusicValue->setCaption(std::to_string(r->settings.volumeMusic));
    r->pSoundSettings->setVisible(true);
    r->pInGame->setVisible(false);
    r->pSettings->setVisible(false);
    r->btnSoundSettingsOk->setFocused(true);
}

void GameState::closeWindowSoundSettings(bool apply) {
    Resources* r = resources;
    r->pSoundSettings->setVisible(false);
    if (apply) {
        r->settings.volumeSfx = r->currentVolumeSfx;
        r->settings.volumeMusic = r->currentVolumeMusic;
        if (r->musicManager && r->currentVolumeMusic == 0) {
            r->musicManager->stop();
            delete r->musicManager;  // music stays off until the volume is raised again
            r->musicManager = nullptr;
        }
    } else {
        r->setVolumeSfx(r->settings.volumeSfx);
        r->setVolumeMusic(r->settings.volumeMusic);
    }
}

void GameState::soundSliderMoved() {
    Resources* r = resources;
    const int value = r->sVolumeSounds->getValue();
    if (value == r->currentVolumeSfx) return;
    r->setVolumeSfx(value);
    if (r->sampleMenuMove) r->menuSounds->play(r->sampleMenuMove);
    r->lVolumeSoundsValue->setCaption(std::to_string(value));
}

void GameState::musicSliderMoved() {
    Resources* r = resources;
    const int value = r->sVolumeMusic->getValue();
    if (value == r->currentVolumeMusic) return;
    if (r->sampleMenuMove) r->menuSounds->play(r->sampleMenuMove);
    if (value > 0 && !r->musicManager) {
        r->musicManager = new audio::MusicManager;
        startMusic();
    } else if (r->musicManager && !r->musicManager->isPlaying()) {
        startMusic();
    }
    r->setVolumeMusic(value);
    r->lVolumeMusicValue->setCaption(std::to_string(value));
}

}  // namespace vantorix
