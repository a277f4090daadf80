#include "gui/root.h"

#include <GL/gl.h>

#include <algorithm>
#include <memory>

#include "controls/inputevaluator.h"
#include "controls/queue.h"
#include "gfx/blend.h"
#include "gfx/fonts.h"
#include "gfx/imagebank.h"
#include "gfx/textureimage.h"
#include "gui/styles.h"
#include "screen.h"
#include "sprites/sprites.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

std::map<std::pair<unsigned char, unsigned char>, short> axisTable;
const GuiResourceBankGenerator resourceBankGenerator;

namespace {
const char* const XML_GUI = "gui";
const char* const XML_IMAGES = "images";
const char* const XML_FONTS = "fonts";
const char* const XML_CURSOR = "cursor";

// The bank `attribute` names in `manager`, when it is of kind T; `current` without the attribute.
template <typename T>
T* readBank(const Node* node, const char* attribute, const ResourceManager* manager, T* current) {
    const std::string* bankName = node->getAttribute(attribute);
    if (!bankName) return current;
    auto it = manager->banks.find(*bankName);
    return it == manager->banks.end() ? nullptr : dynamic_cast<T*>(it->second);
}

// Stick positions within this distance of the middle count as centred.
const short AXIS_DEAD_ZONE = 16000;
// Repeating widgets catch up in a loop of keyRepeat steps: a zero step would never end it.
const float MIN_KEY_REPEAT = 1.0f;
}  // namespace

GUI::GUI() : styles(new StyleBank), focusedComponent(this) { visible = false; }

GUI::~GUI() {
    // The tree goes first, while this is still a GUI, so leaving components find their root.
    while (!children.empty()) delete children.back();
    delete mouseCursor;
    delete styles;
}

std::string GUI::getNodeName() { return XML_GUI; }

void GUI::setMouseCursor(sprites::Sprite* cursor) {
    if (cursor != mouseCursor) delete mouseCursor;
    mouseCursor = cursor;
}

void GUI::setKeyRepeat(float delayMs, float repeatMs) {
    keyDelay = delayMs;
    keyRepeat = std::max(repeatMs, MIN_KEY_REPEAT);
}

void GUI::doMove() {
    if (callback) callback->onMove();
}

void GUI::doConfirm() {
    if (callback) callback->onConfirm();
}

Trigger* GUI::findTrigger(const std::string& fullName) const {
    if (!manager) {
        debug::critical(dbgGui, "Manager not yet set!");
        throw std::string("Manager not yet set!");
    }
    const size_t dot = fullName.find('.');
    if (dot == std::string::npos) {
        debug::critical(dbgGui, "Not a fully qualified trigger name.");
        return nullptr;
    }
    auto bank = manager->banks.find(fullName.substr(0, dot));
    if (bank == manager->banks.end()) return nullptr;
    auto* evaluator = dynamic_cast<InputEvaluator*>(bank->second);
    return evaluator ? evaluator->find(fullName.substr(dot + 1)) : nullptr;
}

void GUI::getFromNode(const Node* node, const std::string&) {
    getSelfFromNode(node, this);
    getChildrenFromNode(node, this);
    recalcNeighbours();
}

void GUI::getSelfFromNode(const Node* node, GUI* gui) {
    if (manager) {
        fonts = readBank(node, XML_FONTS, manager, fonts);
        images = readBank(node, XML_IMAGES, manager, images);
    }
    Component::getSelfFromNode(node, gui);
    for (const Node* element : node->children) {
        std::unique_ptr<Style> style(createStyle(element->name));
        if (!style) continue;
        style->getFromNode(element, this);  // an unknown stretch mode throws
        const std::string key = style->name;
        styles->add(key, style.release());  // replaces and deletes an earlier one of that name
    }
    // Without an images bank there is nothing to show: the cursor is ignored.
    const std::string* cursorName = node->getAttribute(XML_CURSOR);
    if (cursorName && images) {
        auto* image = dynamic_cast<gfx::SingleTextureImage*>(images->find(*cursorName));
        setMouseCursor(new sprites::ImageSprite({dimensions.width / 2, dimensions.height / 2}, true, image));
    }
}

void GUI::forget(const Component* subtree) {
    auto inside = [subtree](const Component* c) {
        for (; c; c = c->getParent()) {
            if (c == subtree) return true;
        }
        return false;
    };
    if (inside(focusedComponent)) {
        focusedComponent->setFocused(false);
        focusedComponent = this;
    }
    if (inside(mouseCaptured)) mouseCaptured = nullptr;
}

bool GUI::evaluate(const SDL_Event& event, ControlQueue* queue) {
    if (!active) return false;
    Component* focus = focusedComponent;
    switch (event.type) {
    case SDL_KEYDOWN:
        return focus->keyDown(queue, event.key.keysym.sym, event.key.keysym.mod, event.key.keysym.unicode);
    case SDL_KEYUP:
        return focus->keyUp(queue, event.key.keysym.sym, event.key.keysym.mod, event.key.keysym.unicode);
    case SDL_JOYBUTTONDOWN: return focus->joyButtonDown(queue, event.jbutton.which, event.jbutton.button);
    case SDL_JOYBUTTONUP: return focus->joyButtonUp(queue, event.jbutton.which, event.jbutton.button);
    case SDL_JOYAXISMOTION: {
        const short value = event.jaxis.value > AXIS_DEAD_ZONE ? 1 : event.jaxis.value < -AXIS_DEAD_ZONE ? -1 : 0;
        short& last = axisTable[{event.jaxis.which, event.jaxis.axis}];
        if (value == last) return false;
        last = value;
        return focus->joyAxisMotion(queue, event.jaxis.which, event.jaxis.axis, value);
    }
    case SDL_MOUSEMOTION: mouseMotion(event.motion, queue); return true;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
        Component* target = mouseCaptured ? mouseCaptured : focus;
        const basic_Vector2D<float> position =
            target->getRelativeCoordinates({float(event.button.x), vpScreen.height - float(event.button.y)});
        if (event.type == SDL_MOUSEBUTTONDOWN) {
            target->mouseDown(queue, position, event.button.button);
        } else {
            target->mouseUp(queue, position, event.button.button);
        }
        return true;
    }
    default: return false;
    }
}

void GUI::mouseMotion(const SDL_MouseMotionEvent& motion, ControlQueue* queue) {
    if (!mouseCursor) return;
    const basic_Vector2D<float> cursor{
        std::clamp(float(motion.x) - dimensions.x, 0.0f, std::max(0.0f, dimensions.width - 1.0f)),
        std::clamp(dimensions.height - float(motion.y) - dimensions.y, 0.0f, std::max(0.0f, dimensions.height - 1.0f))};
    mouseCursor->position = cursor;
    Component* found = find(cursor);
    if (Component* captured = mouseCaptured) {
        const basic_Vector2D<float> position = captured->getRelativeCoordinates(cursor);
        if (found == captured && !captured->isFocused()) {
            captured->enter(queue, position);
            captured->setFocused(true);
        } else if (found != captured && captured->isFocused()) {
            captured->leave(queue, position);
            setFocused(true);
        } else {
            captured->mouseMove(queue, position);
        }
        return;
    }
    if (!found) return;  // over nothing (a hidden or disabled GUI): the focus stays
    if (found == focusedComponent && found->isFocused()) {
        found->mouseMove(queue, found->getRelativeCoordinates(cursor));
        return;
    }
    focusedComponent->leave(queue, cursor);
    found->enter(queue, cursor);
    found->setFocused(true);
}

void GUI::draw() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glDisable(GL_DEPTH_TEST);
    glEnable(GL_BLEND);
    currentPos = {0.0f, 0.0f};
    Component::draw();
    glPopAttrib();
}

void GUI::drawSelfPost() {
    if (!mouseCursor || !mouseCursor->visible) return;
    // The GUI draws with alpha blending; a cursor that asks for another blend function gets it
    // for itself only.
    const bool ownBlend = mouseCursor->blendMode != BLEND_DEFAULT;
    if (ownBlend) {
        glPushAttrib(GL_COLOR_BUFFER_BIT);
        setBlendMode(mouseCursor->blendMode);
    }
    mouseCursor->drawSelf();
    if (ownBlend) glPopAttrib();
}

BasicResourceBank* GuiResourceBankGenerator::generateBank(const std::string& type) const {
    return type == XML_GUI ? new GUI : nullptr;
}

}  // namespace gui
}  // namespace norvane
