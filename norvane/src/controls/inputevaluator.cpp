#include "controls/inputevaluator.h"

#include <algorithm>
#include <cmath>

#include "controls/queue.h"
#include "controls/translators.h"
#include "controls/xmlnames.h"
#include "debug/log.h"
#include "xml/xml.h"

namespace norvane {

const BasicResourceBankGenerator resourceBankGenerator;

BasicResourceBank* BasicResourceBankGenerator::generateBank(const std::string& type) const {
    return type == XML_INPUTEVALUATOR ? new InputEvaluator : nullptr;
}

InputEvaluator::~InputEvaluator() {
    // Before the bank's own destructor: triggers leave the indexes of this evaluator as they go.
    clear();
}

void InputEvaluator::perform(float, ControlQueue* queue) {
    for (Trigger* t : pressedTriggers) *queue << t;  // whatever the trigger's queued flag says
}

bool InputEvaluator::evaluate(const SDL_Event& event, ControlQueue* queue) {
    if (size() == 0) return false;
    switch (event.type) {
        case SDL_KEYDOWN:
        case SDL_KEYUP: return handleKeyEvent(event, queue);
        case SDL_MOUSEMOTION: return handleMouseAxisEvent(event, queue);
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP: return handleMouseButtonEvent(event, queue);
        case SDL_JOYAXISMOTION: return handleJoyAxisEvent(event, queue);
        case SDL_JOYBUTTONDOWN:
        case SDL_JOYBUTTONUP: return handleJoyButtonEvent(event, queue);
        default: return false;
    }
}

void InputEvaluator::hold(Trigger* t) {
    if (std::find(pressedTriggers.begin(), pressedTriggers.end(), t) == pressedTriggers.end()) {
        pressedTriggers.push_back(t);
    }
}

void InputEvaluator::release(Trigger* t) {
    const auto it = std::find(pressedTriggers.begin(), pressedTriggers.end(), t);
    if (it != pressedTriggers.end()) pressedTriggers.erase(it);
}

void InputEvaluator::flush() {
    for (Trigger* t : pressedTriggers) t->value = 0.0f;
    pressedTriggers.clear();
}

std::string InputEvaluator::getNodeName() { return XML_INPUTEVALUATOR; }

// Every matching binding gets the event; one consuming it does not stop the others.
bool InputEvaluator::handleKeyEvent(const SDL_Event& event, ControlQueue* queue) {
    const bool isPress = event.type == SDL_KEYDOWN;
    bool consumed = false;
    for (KeyTranslator* t : keyTranslators) {
        if (t->key == event.key.keysym.sym && takesEdge(t->state, isPress)) consumed |= t->translate(event, queue);
    }
    return consumed;
}

bool InputEvaluator::handleMouseButtonEvent(const SDL_Event& event, ControlQueue* queue) {
    const bool isPress = event.type == SDL_MOUSEBUTTONDOWN;
    bool consumed = false;
    for (MouseButtonTranslator* t : mouseButtonTranslators) {
        if (t->button == event.button.button && takesEdge(t->state, isPress)) consumed |= t->translate(event, queue);
    }
    return consumed;
}

bool InputEvaluator::handleMouseAxisEvent(const SDL_Event& event, ControlQueue* queue) {
    bool consumed = false;
    for (MouseAxisTranslator* t : mouseAxisTranslators) consumed |= t->translate(event, queue);
    return consumed;
}

bool InputEvaluator::handleJoyAxisEvent(const SDL_Event& event, ControlQueue* queue) {
    bool consumed = false;
    for (JoyAxisTranslator* t : joyAxisTranslators) {
        if (t->joystick == event.jaxis.which && t->axis == event.jaxis.axis) consumed |= t->translate(event, queue);
    }
    return consumed;
}

bool InputEvaluator::handleJoyButtonEvent(const SDL_Event& event, ControlQueue* queue) {
    const bool isPress = event.type == SDL_JOYBUTTONDOWN;
    const short which = event.jbutton.which;
    const short button = event.jbutton.button;
    bool consumed = false;
    bool takenByExact = false;
    JoyButtonTranslator* wildcard = nullptr;
    for (JoyButtonTranslator* t : joyButtonTranslators) {
        if (t->joystick == which && t->button == button) {
            if (takesEdge(t->state, isPress)) {
                consumed |= t->translate(event, queue);
                takenByExact = true;
            }
        } else if (!takenByExact && (t->joystick < 0 || t->joystick == which) && (t->button < 0 || t->button == button) &&
                   takesEdge(t->state, isPress)) {
            wildcard = t;  // the last one wins
        }
    }
    if (!takenByExact && wildcard) consumed |= wildcard->translate(event, queue);
    return consumed;
}

void InputEvaluator::clear() {
    while (!resources.empty()) {
        auto last = std::prev(resources.end());
        if (!last->second) {
            resources.erase(last);  // left behind by a lookup with operator[]
            continue;
        }
        delete last->second;  // erases its own entry
    }
    keyTranslators.clear();
    joyButtonTranslators.clear();
    joyAxisTranslators.clear();
    mouseButtonTranslators.clear();
    mouseAxisTranslators.clear();
    pressedTriggers.clear();
}

void InputEvaluator::setDataOnAllTriggers(int data) {
    for (auto& entry : resources) {
        if (entry.second) entry.second->data = data;
    }
}

void InputEvaluator::copyFrom(const InputEvaluator* other) {
    if (other == this) return;  // clear() would leave nothing to copy
    clear();
    for (const auto& entry : other->resources) {
        if (entry.second) entry.second->clone(this);
    }
}

InputEvaluator* InputEvaluator::clone() const {
    InputEvaluator* copy = new InputEvaluator;
    copy->copyFrom(this);
    return copy;
}

void InputEvaluator::getFromNode(const Node* node, const std::string&) {
    for (const Node* child : node->children) {
        const bool isAxis = child->name == XML_AXIS;
        if (!isAxis && child->name != XML_TRIGGER) {
            debug::debug(dbgControls, "Unknown element \"%s\" in input definition skipped.", child->name.c_str());
            continue;
        }
        // Numbers are narrowed to their fields, as everywhere in input definitions.
        const auto code = static_cast<int>(child->getAttributeLong(XML_CODE, 0));
        const std::string name = child->getAttribute(XML_NAME, std::string());
        const std::string description = child->getAttribute(XML_DESCRIPTION, std::string());
        Trigger* t;
        if (isAxis) {
            float max = child->getAttributeFloat(XML_MAX, 1.0f);
            if (!std::isfinite(max)) {
                debug::warning(dbgControls, "Trigger \"%s\": max is not a number, using 1.", name.c_str());
                max = 1.0f;
            }
            t = new Trigger(this, code, name, description, max);
        } else {
            t = new Trigger(this, code, name, description, ksDown);
        }
        t->getFromNode(child, std::string());
        t->queued = child->getAttributeBool(XML_QUEUE, t->queued);
        t->data = static_cast<int>(child->getAttributeLong(XML_DATA, 0));
        t->dataString = child->getAttribute(XML_DATASTRING, std::string());
    }
}

void InputEvaluator::getTranslatorsFromNode(const Node* node) {
    for (const Node* child : node->children) {
        if (child->name != XML_TRIGGER && child->name != XML_AXIS) {
            debug::debug(dbgControls, "Unknown element \"%s\" in stored bindings skipped.", child->name.c_str());
            continue;
        }
        const std::string name = child->getAttribute(XML_NAME, std::string());
        Trigger* t = find(name);
        if (!t) {
            // Bindings of a trigger that a newer definition dropped: nothing to apply them to.
            debug::warning(dbgControls, "Stored bindings for unknown trigger \"%s\" skipped.", name.c_str());
            continue;
        }
        t->getTranslatorsFromNode(child);
    }
}

void InputEvaluator::addTranslatorsToTree(Node* parent) const {
    for (const auto& entry : resources) {
        if (entry.second) *parent += entry.second->buildTranslatorTree();
    }
}

}  // namespace norvane
