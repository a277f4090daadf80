#ifndef NORVANE_GUI_ROOT_H
#define NORVANE_GUI_ROOT_H

#include <map>
#include <string>

#include "controls/evaluator.h"
#include "gui/core.h"
#include "resources/manager.h"

namespace norvane {

namespace fonts {
class FontBank;
}
namespace gfx {
class ImageBank;
}
namespace sprites {
class Sprite;
}

namespace gui {

class StyleBank;

// Told when the focus moves by navigation and when a widget is activated (the game's menu sounds).
class GUICallback {
public:
    virtual ~GUICallback() = default;
    virtual void onMove() = 0;
    virtual void onConfirm() = 0;
};

// The root of a component tree, an evaluator that routes SDL events to the focused component,
// and the bank ("gui") that reads a whole GUI definition: styles first, then the components.
// Starts inactive and invisible.
class GUI : public Component, public Evaluator, public BasicResourceBank {
public:
    GUI();
    ~GUI() override;

    // False for every event while inactive, so the next evaluator sees it.
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override;
    std::string getNodeName() override;
    // Styles first, in document order, then the components; `dir` is not used.
    void getFromNode(const Node* node, const std::string& dir) override;

    virtual fonts::FontBank* getFonts() const { return fonts; }
    virtual gfx::ImageBank* getImages() const { return images; }
    virtual std::map<std::string, Trigger*>* getTriggers() const { return nullptr; }  // never filled
    virtual StyleBank* getStyles() const { return styles; }
    virtual sprites::Sprite* getMouseCursor() const { return mouseCursor; }
    virtual Component* getMouseCaptured() const { return mouseCaptured; }
    virtual Component* getFocused() const { return focusedComponent; }
    virtual bool getActive() const { return active; }
    virtual float getKeyDelay() const { return keyDelay; }
    virtual float getKeyRepeat() const { return keyRepeat; }
    virtual void setMouseCursor(sprites::Sprite* cursor);  // takes ownership, deletes the old one
    virtual void setActive(bool isActive) { active = isActive; }
    virtual void setKeyRepeat(float delayMs, float repeatMs);

    void getSelfFromNode(const Node* node, GUI* gui) override;
    void draw() override;
    void drawSelfPost() override;  // the mouse cursor, over everything

    void setFonts(fonts::FontBank* bank) { fonts = bank; }
    void setImages(gfx::ImageBank* bank) { images = bank; }
    void setCallback(GUICallback* newCallback) { callback = newCallback; }
    GUICallback* getCallback() const { return callback; }
    void doMove();
    void doConfirm();
    // "evaluator.trigger" among the manager's input evaluators; null when it names nothing.
    // Throws "Manager not yet set!" without a manager.
    Trigger* findTrigger(const std::string& fullName) const;

    using Component::perform;  // the tree's; the evaluator's per-frame step stays empty
    using Evaluator::perform;

private:
    friend class Component;  // keeps focusedComponent and mouseCaptured in step with the tree

    // Holders of the focus or the mouse capture inside `subtree` are forgotten: it leaves the tree.
    void forget(const Component* subtree);
    void mouseMotion(const SDL_MouseMotionEvent& motion, ControlQueue* queue);

    fonts::FontBank* fonts = nullptr;
    gfx::ImageBank* images = nullptr;
    StyleBank* styles;  // owned
    sprites::Sprite* mouseCursor = nullptr;  // owned
    Component* mouseCaptured = nullptr;
    Component* focusedComponent;  // never null: the GUI itself when nothing else
    bool active = false;
    float keyDelay = 300.0f;   // ms before a held button or key repeats
    float keyRepeat = 30.0f;   // ms between repeats
    GUICallback* callback = nullptr;
};

// The last quantised value (-1, 0, 1) passed on per (joystick, axis), shared by all GUIs.
extern std::map<std::pair<unsigned char, unsigned char>, short> axisTable;

// "gui" yields a new GUI.
class GuiResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;
};

extern const GuiResourceBankGenerator resourceBankGenerator;

}  // namespace gui
}  // namespace norvane

#endif
