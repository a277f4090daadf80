#ifndef VANTORIX_RESOURCES_STATE_H
#define VANTORIX_RESOURCES_STATE_H

#include <string>

#include "framework/state.h"
#include "gfx/color.h"
#include "gfx/justification.h"
#include "gui/root.h"
#include "resources/highscores.h"

namespace norvane {
class InputEvaluator;
class Trigger;
namespace gui {
class Component;
}
}  // namespace norvane

namespace vantorix {

using norvane::InputEvaluator;
using norvane::Trigger;

// Base of the title menu and the running game: the frame in layers (starfield behind, the state's
// own content in layer 1, the GUI in front), the triggers that mean the same everywhere, and the
// controls, key capture and sound dialogs.
class GameState : public norvane::ApplicationState {
public:
    GameState();
    ~GameState() override;  // an open controls dialog's copy goes with it

    void handleEvent(const Trigger* trigger) override;
    void doPerform(int layer, unsigned int ticks) override;
    void doDraw(int layer) override;

    virtual void startMusic() = 0;
    // Closes the sound or the controls dialog, whichever is open; false when neither was.
    virtual bool closeWindows(bool apply);
    virtual void showWindowSoundSettings();
    virtual void closeWindowSoundSettings(bool apply);
    // Edits a copy of `evaluator`; the live one changes only when the dialog closes applied.
    virtual void showWindowControls(const std::string& title, InputEvaluator* evaluator);
    // Applied, the live evaluator gets new triggers (copyFrom): look up kept Trigger pointers again.
    virtual void closeWindowControls(bool apply);
    virtual void updateKeyLabels();
    // Ten rows downwards from y + 150, centred on x; rows mark1 and mark2 pulse (-1 for none).
    virtual void displayHighscores(float x, float y, norvane::HighscoreTable<HighscoreEntry, 10>* table, int mark1,
                                   int mark2);

    int fps = 0;
    bool paused = false;  // the running game's pause; also stops the starfield
    InputEvaluator* editedEvaluator = nullptr;
    InputEvaluator* editCopy = nullptr;  // owned while the controls dialog is open
    Trigger* currentTrigger = nullptr;   // of editCopy
    bool controlsChanged = false;        // cleared by the title menu once it saved the settings
    bool copyChanged = false;
    norvane::gui::Component* focusToRestore = nullptr;
    float currentValue = 0.0f;  // direction being rebound: -1, +1 or the trigger's own value
    float phase = 0.0f;         // in [0, pi], drives the pulsing highscore rows

protected:
    // With the standard font at (x, y) of the current context; nothing without the font.
    void print(float x, float y, norvane::JustificationHorizontal justification, const norvane::Color& color,
               const char* format, ...) __attribute__((format(printf, 6, 7)));

private:
    void requestKey(const Trigger* request);
    void captureKey();
    void captureJoyButton();
    void captureJoyAxis();
    void closeKeyCapture();
    void soundSliderMoved();
    void musicSliderMoved();
    void toggleFullscreen();
};

// Plays the menu sounds and keeps the title menu on its page while someone is using it.
class GUICallback : public norvane::gui::GUICallback {
public:
    void onMove() override;
    void onConfirm() override;
};

extern GUICallback callback;

}  // namespace vantorix

#endif
