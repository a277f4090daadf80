#include "gui/text.h"

#include <GL/gl.h>

#include "controls/queue.h"
#include "gui/root.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_STYLE = "style";
const char* const XML_TRIGGER_CONFIRM = "triggerConfirm";
const char* const XML_MAX_LENGTH = "maxLength";
const unsigned short BACKSPACE = 8;
const unsigned short RETURN = 13;
// ISO-8859-1 has control codes at 127 (delete) and from 128 to 159; they have no glyphs.
bool isPrintable(unsigned short c) { return (c >= 32 && c < 127) || (c >= 160 && c <= 255); }
}  // namespace

Textfield::Textfield() { focusable = true; }

void Textfield::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    CaptionedObject::getSelfFromNode(node, gui);
    style = readStyle(node, XML_STYLE, gui, style, name);
    triggerConfirm = readTrigger(node, XML_TRIGGER_CONFIRM, gui, triggerConfirm);
    const long length = node->getAttributeLong(XML_MAX_LENGTH, static_cast<long>(maxLength));
    if (length < 0) {
        debug::warning(dbgGui, "Textfield \"%s\": maxLength %ld is negative, keeping %zu.", name.c_str(), length,
                       maxLength);
    } else {
        maxLength = static_cast<size_t>(length);
    }
    if (caption.size() > maxLength) caption.resize(maxLength);
}

void Textfield::drawSelf() {
    if (!style) return;
    const basic_Rect<float> rect{0.0f, 0.0f, dimensions.width, dimensions.height};
    style->draw(rect);
    shown.assign(caption);
    if (focused) shown += '_';
    glPushMatrix();
    style->print(rect, shown.c_str(), image);
    glPopMatrix();
}

void Textfield::leave(ControlQueue*, const basic_Vector2D<float>&) { repeatChar = 0; }

bool Textfield::keyUp(ControlQueue*, SDLKey, SDLMod, unsigned short) {
    repeatChar = 0;
    return true;
}

bool Textfield::keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) {
    GUI* root = getRoot();
    const float delay = root ? root->getKeyDelay() : 0.0f;
    if (unicode == BACKSPACE) {
        if (caption.empty()) {
            repeatChar = 0;
            return true;
        }
        caption.pop_back();
        if (repeatChar != BACKSPACE) {
            repeatChar = BACKSPACE;
            repeatTimer = -delay;
        }
        return true;
    }
    if (unicode == RETURN) {
        repeatChar = 0;
        doConfirm(queue);
        return true;
    }
    if (!isPrintable(unicode)) return Component::keyDown(queue, key, modifiers, unicode);
    if (caption.size() >= maxLength) {
        repeatChar = 0;  // full: swallowed, and nothing to repeat
        return true;
    }
    caption += static_cast<char>(static_cast<unsigned char>(unicode));
    if (unicode != repeatChar) {
        repeatChar = unicode;
        repeatTimer = -delay;
    }
    return true;
}

void Textfield::performSelf(ControlQueue* queue, float ms) {
    GUI* root = getRoot();
    if (repeatChar == 0 || !root) return;
    repeatTimer += ms;
    while (repeatChar != 0 && repeatTimer >= root->getKeyRepeat()) {
        repeatTimer -= root->getKeyRepeat();
        keyDown(queue, SDLK_PAUSE, KMOD_NONE, repeatChar);
    }
}

void Textfield::doConfirm(ControlQueue* queue) {
    if (triggerConfirm) *queue << triggerConfirm;
}

}  // namespace gui
}  // namespace norvane
