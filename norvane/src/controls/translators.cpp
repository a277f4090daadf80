#include "controls/translators.h"

#include <algorithm>
#include <cstdlib>

#include "controls/inputevaluator.h"
#include "controls/keynames.h"
#include "controls/xmlnames.h"
#include "xml/xml.h"

namespace norvane {

namespace {

template <typename T>
void removeFromIndex(std::vector<T*>& index, T* translator) {
    auto it = std::find(index.begin(), index.end(), translator);
    if (it != index.end()) index.erase(it);  // keeps creation order, which decides wildcard precedence
}

// The same for keys, mouse buttons and joystick buttons; the evaluator has matched button and edge.
bool translateButton(Translator* by, KeyState state, float value, bool isPress, ControlQueue* queue) {
    Trigger* t = by->trigger;
    if (state != ksPressed) {
        t->trigger(queue, by, value);
        return true;
    }
    InputEvaluator* evaluator = t->bank;
    if (isPress) {
        if (evaluator) evaluator->hold(t);  // its perform queues t from now on
        t->value = value;
    } else if (t->value == value) {  // otherwise another binding of t has taken over
        if (evaluator) evaluator->release(t);
        t->value = 0.0f;
        t->trigger(queue);
    }
    return true;
}

bool translateAxis(Translator* by, int v, short direction, short min, short max, ControlQueue* queue) {
    Trigger* t = by->trigger;
    const int a = std::abs(v);
    float newValue;
    if (t->digital) {
        newValue = a > min ? t->maxValue : 0.0f;
    } else {
        const int sign = (v > 0) - (v < 0);
        if (direction != 0 && sign != 0 && sign != direction) return false;  // the other half's business
        if (a < min) {
            newValue = 0.0f;
        } else if (a >= max) {
            newValue = static_cast<float>(sign) * t->maxValue;
        } else {
            // a < max here, so max > min: no division by zero
            newValue = static_cast<float>(a - min) * static_cast<float>(sign) * t->maxValue /
                       static_cast<float>(max - min);
        }
    }
    t->setValue(queue, by, newValue);
    return true;
}

KeyState resolve(KeyState state, const Trigger* t) { return state == ksDefault ? t->defaultKeyState : state; }

Node* newElement(const char* name) {
    Node* node = new Node;
    node->name = name;
    return node;
}

void writeButtonState(Node* node, KeyState state, float value, const Trigger* t) {
    (*node)[XML_VALUE] = toStr(static_cast<double>(value));
    if (state != t->defaultKeyState) (*node)[XML_STATE] = toStr<KeyState>(state);
}

void writeAxis(Node* node, short direction, short min, short max) {
    if (direction != 0) (*node)[XML_DIRECTION] = toStr(direction);
    (*node)[XML_MIN] = toStr(min);
    (*node)[XML_MAX] = toStr(max);
}

}  // namespace

Translator::Translator(Trigger* trigger) : trigger(trigger) { trigger->translators.push_back(this); }

Translator::~Translator() {
    auto& list = trigger->translators;
    auto it = std::find(list.begin(), list.end(), this);
    if (it != list.end()) list.erase(it);
}

KeyTranslator::KeyTranslator(Trigger* t, SDLKey key, KeyState state, float value)
    : Translator(t), key(key), state(resolve(state, t)), value(value) {
    if (t->bank) t->bank->keyTranslators.push_back(this);
}

KeyTranslator::~KeyTranslator() {
    if (trigger->bank) removeFromIndex(trigger->bank->keyTranslators, this);
}

bool KeyTranslator::translate(const SDL_Event& event, ControlQueue* queue) {
    return translateButton(this, state, value, event.type == SDL_KEYDOWN, queue);
}

Translator* KeyTranslator::clone(Trigger* t) const { return new KeyTranslator(t, key, state, value); }

Node* KeyTranslator::buildTranslatorTree() const {
    Node* node = newElement(XML_KEYTRANSLATOR);
    (*node)[XML_KEY] = toStr<SDLKey>(key);
    writeButtonState(node, state, value, trigger);
    return node;
}

JoyButtonTranslator::JoyButtonTranslator(Trigger* t, short joystick, short button, KeyState state, float value)
    : JoyTranslator(t, joystick), button(button), state(resolve(state, t)), value(value) {
    if (t->bank) t->bank->joyButtonTranslators.push_back(this);
}

JoyButtonTranslator::~JoyButtonTranslator() {
    if (trigger->bank) removeFromIndex(trigger->bank->joyButtonTranslators, this);
}

bool JoyButtonTranslator::translate(const SDL_Event& event, ControlQueue* queue) {
    return translateButton(this, state, value, event.type == SDL_JOYBUTTONDOWN, queue);
}

Translator* JoyButtonTranslator::clone(Trigger* t) const {
    return new JoyButtonTranslator(t, joystick, button, state, value);
}

Node* JoyButtonTranslator::buildTranslatorTree() const {
    Node* node = newElement(XML_JOYBUTTONTRANSLATOR);
    (*node)[XML_JOY] = toStr(joystick);
    (*node)[XML_BUTTON] = toStr(button);
    writeButtonState(node, state, value, trigger);
    return node;
}

JoyAxisTranslator::JoyAxisTranslator(Trigger* t, short joystick, unsigned char axis, signed char direction, short min,
                                     short max)
    : JoyTranslator(t, joystick), axis(axis), direction(direction), min(min), max(max) {
    if (t->bank) t->bank->joyAxisTranslators.push_back(this);
}

JoyAxisTranslator::~JoyAxisTranslator() {
    if (trigger->bank) removeFromIndex(trigger->bank->joyAxisTranslators, this);
}

bool JoyAxisTranslator::translate(const SDL_Event& event, ControlQueue* queue) {
    return translateAxis(this, event.jaxis.value, direction, min, max, queue);
}

Translator* JoyAxisTranslator::clone(Trigger* t) const {
    return new JoyAxisTranslator(t, joystick, axis, static_cast<signed char>(direction), min, max);
}

Node* JoyAxisTranslator::buildTranslatorTree() const {
    Node* node = newElement(XML_JOYAXISTRANSLATOR);
    (*node)[XML_JOY] = toStr(joystick);
    (*node)[XML_AXIS] = toStr(static_cast<int>(axis));
    writeAxis(node, direction, min, max);
    return node;
}

MouseButtonTranslator::MouseButtonTranslator(Trigger* t, unsigned char button, KeyState state, float value)
    : Translator(t), button(button), state(resolve(state, t)), value(value) {
    if (t->bank) t->bank->mouseButtonTranslators.push_back(this);
}

MouseButtonTranslator::~MouseButtonTranslator() {
    if (trigger->bank) removeFromIndex(trigger->bank->mouseButtonTranslators, this);
}

bool MouseButtonTranslator::translate(const SDL_Event& event, ControlQueue* queue) {
    return translateButton(this, state, value, event.type == SDL_MOUSEBUTTONDOWN, queue);
}

Translator* MouseButtonTranslator::clone(Trigger* t) const { return new MouseButtonTranslator(t, button, state, value); }

Node* MouseButtonTranslator::buildTranslatorTree() const {
    Node* node = newElement(XML_MOUSEBUTTONTRANSLATOR);
    (*node)[XML_BUTTON] = toStr(static_cast<int>(button));
    writeButtonState(node, state, value, trigger);
    return node;
}

MouseAxisTranslator::MouseAxisTranslator(Trigger* t, unsigned char axis, signed char direction, short min, short max)
    : Translator(t), axis(axis), direction(direction), min(min), max(max) {
    if (t->bank) t->bank->mouseAxisTranslators.push_back(this);
}

MouseAxisTranslator::~MouseAxisTranslator() {
    if (trigger->bank) removeFromIndex(trigger->bank->mouseAxisTranslators, this);
}

bool MouseAxisTranslator::translate(const SDL_Event& event, ControlQueue* queue) {
    return translateAxis(this, axis == 0 ? event.motion.xrel : event.motion.yrel, direction, min, max, queue);
}

Translator* MouseAxisTranslator::clone(Trigger* t) const {
    return new MouseAxisTranslator(t, axis, static_cast<signed char>(direction), min, max);
}

Node* MouseAxisTranslator::buildTranslatorTree() const {
    Node* node = newElement(XML_MOUSEAXISTRANSLATOR);
    (*node)[XML_AXIS] = toStr(static_cast<int>(axis));
    writeAxis(node, direction, min, max);
    return node;
}

}  // namespace norvane
