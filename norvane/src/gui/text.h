#ifndef NORVANE_GUI_TEXT_H
#define NORVANE_GUI_TEXT_H

#include <cstddef>
#include <string>

#include "gui/standard.h"

namespace norvane {
namespace gui {

// An editable line of text: the caption. Typed characters are kept as one ISO-8859-1 byte each;
// a held key repeats keyDelay + keyRepeat ms after it went down, then every keyRepeat ms.
class Textfield : public Component, public CaptionedObject {
public:
    Textfield();
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;  // the caption, with "_" after it while focused
    void leave(ControlQueue* queue, const basic_Vector2D<float>& position) override;
    void performSelf(ControlQueue* queue, float ms) override;
    // Backspace, Return and the printable Latin-1 characters; anything else may move the focus.
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;
    bool keyUp(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;

    void doConfirm(ControlQueue* queue);
    void setStyle(LabelStyle* newStyle) { style = newStyle; }
    LabelStyle* getStyle() const { return style; }
    void setTriggerConfirm(Trigger* t) { triggerConfirm = t; }
    Trigger* getTriggerConfirm() const { return triggerConfirm; }
    void setMaxLength(size_t length) { maxLength = length; }
    size_t getMaxLength() const { return maxLength; }

private:
    unsigned short repeatChar = 0;  // the character being repeated; 0 for none
    float repeatTimer = 0.0f;       // ms; starts at minus keyDelay
    LabelStyle* style = nullptr;
    Trigger* triggerConfirm = nullptr;
    size_t maxLength = 255;  // characters the text may hold
    std::string shown;       // the drawn text; reused, so drawing does not allocate
};

}  // namespace gui
}  // namespace norvane

#endif
