#ifndef VANTORIX_MENU_MENU_H
#define VANTORIX_MENU_MENU_H

#include "resources/settings.h"
#include "resources/state.h"

namespace norvane {
namespace sprites {
class SpriteEngine;
}
}  // namespace norvane

namespace vantorix {

// The title screen: credits while the game images load, then the main menu with its settings,
// credits and quit panels; left alone it cycles through the highscore and help pages. Lives from
// start-up to the end; a game deactivates it and activates it again when it ends.
class Menu : public GameState {
public:
    Menu();
    ~Menu() override;

    void activate() override;
    void deactivate() override;
    void handleEvent(const Trigger* trigger) override;
    void doPerform(int layer, unsigned int ticks) override;
    void doDraw(int layer) override;
    void startMusic() override;
    void closeWindowSoundSettings(bool apply) override;
    void closeWindowControls(bool apply) override;

    void initSpritesHelp();  // once the game images are loaded

    int page = 0;  // 0 main menu, 1 single-player highscores, 2 two-player highscores, 3 help
    unsigned int pageTimer;  // ms until the next page
    norvane::sprites::SpriteEngine* helpSprites = nullptr;
    norvane::gui::Component* lastButton;  // gets the focus when the menu returns

private:
    void back(bool confirmed);
    void startGame(int type, norvane::gui::Component* button);
    void showPage(int newPage);
    void drawHelp();

    norvane::gui::Component* creditsBack;  // the credits panel's only button
    norvane::gui::Component* quitAsker = nullptr;  // had the focus when the quit question came up
    Settings settingsShown;  // as the settings panel opened: saved on closing only if changed
};

}  // namespace vantorix

#endif
