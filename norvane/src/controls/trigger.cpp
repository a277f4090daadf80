#include "controls/trigger.h"

#include <cmath>

#include "controls/inputevaluator.h"
#include "controls/keynames.h"
#include "controls/queue.h"
#include "controls/translators.h"
#include "controls/xmlnames.h"
#include "debug/log.h"
#include "xml/xml.h"

namespace norvane {

namespace {

const char* const KEY_STATE_NAMES[] = {"default", "down", "up", "pressed"};

// Joins the parts that `part` yields for the selected translators; an empty part still takes its place.
template <typename T, typename Select, typename Part>
std::string joinLabels(const std::vector<Translator*>& translators, Select select, Part part) {
    std::string out;
    bool first = true;
    for (const Translator* translator : translators) {
        auto* t = dynamic_cast<const T*>(translator);
        if (!t || !select(t)) continue;
        if (!first) out += ";";
        out += part(t);
        first = false;
    }
    return out;
}

// Numbers are narrowed to the field they fill, as the stored bindings were written from it.
template <typename T>
T narrowed(const Node* node, const char* attribute, long def) {
    return static_cast<T>(node->getAttributeLong(attribute, def));
}

// A NaN value could never be released (the release compares values): the binding is skipped.
bool readValue(const Node* node, const Trigger* t, float& out) {
    const float v = node->getAttributeFloat(XML_VALUE, 1.0f);
    if (!std::isfinite(v)) {
        debug::warning(dbgControls, "Trigger \"%s\": %s value is not a number, binding skipped.", t->name.c_str(),
                       node->name.c_str());
        return false;
    }
    out = v;
    return true;
}

// Anything but "down", "up" and "pressed" is ksDefault, which a binding resolves to its trigger's default.
KeyState readKeyState(const Node* node, const char* attribute) {
    return strTo<KeyState>(node->getAttribute(attribute, std::string()));
}

}  // namespace

template <>
std::string toStr<KeyState>(KeyState state) {
    return KEY_STATE_NAMES[state >= ksDown && state <= ksPressed ? state : ksDefault];
}

template <>
KeyState strTo<KeyState>(const std::string& text) {
    for (int state = ksDown; state <= ksPressed; ++state) {
        if (text == KEY_STATE_NAMES[state]) return static_cast<KeyState>(state);
    }
    return ksDefault;
}

Trigger::Trigger(InputEvaluator* owner, int code, const std::string& name, const std::string& description,
                 KeyState defaultKeyState)
    : code(code), description(description), digital(true), maxValue(1.0f), defaultKeyState(defaultKeyState),
      queued(true) {
    this->name = name;
    if (owner) owner->add(name, this);
}

Trigger::Trigger(InputEvaluator* owner, int code, const std::string& name, const std::string& description,
                 float maxValue)
    : code(code), description(description), digital(false), maxValue(maxValue), defaultKeyState(ksPressed),
      queued(false) {
    this->name = name;
    if (owner) owner->add(name, this);
}

Trigger::~Trigger() {
    clearTranslators();
    if (bank) bank->release(this);  // perform would queue a dangling pointer
}

void Trigger::trigger(ControlQueue* queue) {
    if (queued && queue) *queue << this;
}

void Trigger::trigger(ControlQueue* queue, Translator*, float v) {
    value = v;
    trigger(queue);
}

void Trigger::setValue(ControlQueue* queue, Translator* by, float v) {
    if (v != value) trigger(queue, by, v);
}

Trigger* Trigger::clone(InputEvaluator* target) const {
    // In its own evaluator the new trigger replaces, and so destroys, this one before it is filled:
    // it is filled from a detached copy.
    Trigger held(nullptr, code, name, description, defaultKeyState);
    copySettingsTo(&held);
    Trigger* copy = new Trigger(target, held.code, held.name, held.description, held.defaultKeyState);
    held.copySettingsTo(copy);
    return copy;
}

void Trigger::copySettingsTo(Trigger* copy) const {
    copy->data = data;
    copy->dataString = dataString;
    copy->digital = digital;
    copy->maxValue = maxValue;
    copy->queued = queued;
    for (const Translator* translator : translators) translator->clone(copy);
}

template <typename T, typename Match>
void Trigger::clearTranslatorsOf(Match match) {
    // Backwards: each deletion erases its own entry from `translators`.
    for (size_t i = translators.size(); i-- > 0;) {
        auto* translator = dynamic_cast<T*>(translators[i]);
        if (translator && match(translator)) delete translator;
    }
}

void Trigger::clearTranslators() {
    while (!translators.empty()) delete translators.back();
}

void Trigger::clearKeyTranslators(float v) {
    clearTranslatorsOf<KeyTranslator>([v](const KeyTranslator* t) { return v == 0.0f || t->value == v; });
}

void Trigger::clearMouseButtonTranslators(float v) {
    clearTranslatorsOf<MouseButtonTranslator>(
        [v](const MouseButtonTranslator* t) { return v == 0.0f || t->value == v; });
}

void Trigger::clearJoyButtonTranslators(float v) {
    clearTranslatorsOf<JoyButtonTranslator>([v](const JoyButtonTranslator* t) { return v == 0.0f || t->value == v; });
}

void Trigger::clearMouseAxisTranslators(short d) {
    clearTranslatorsOf<MouseAxisTranslator>([d](const MouseAxisTranslator* t) { return d == 0 || t->direction == d; });
}

void Trigger::clearJoyAxisTranslators(short d) {
    clearTranslatorsOf<JoyAxisTranslator>([d](const JoyAxisTranslator* t) { return d == 0 || t->direction == d; });
}

std::string Trigger::keysToString(float v) const {
    return joinLabels<KeyTranslator>(
        translators, [v](const KeyTranslator* t) { return v == 0.0f || t->value == v; },
        [](const KeyTranslator* t) { return toStr<SDLKey>(t->key); });
}

std::string Trigger::joyButtonsToString(float v) const {
    return joinLabels<JoyButtonTranslator>(
        translators, [v](const JoyButtonTranslator* t) { return v == 0.0f || t->value == v; },
        [](const JoyButtonTranslator* t) { return "Joy " + toStr(t->joystick) + "; Btn " + toStr(t->button); });
}

std::string Trigger::joyAxisToString(short d) const {
    return joinLabels<JoyAxisTranslator>(
        translators, [d](const JoyAxisTranslator* t) { return d == 0 || t->direction == d; },
        [](const JoyAxisTranslator* t) {
            const char* sign = t->direction > 0 ? " +" : t->direction < 0 ? " -" : "";
            return "Joy " + toStr(t->joystick) + "; Axis " + toStr(static_cast<int>(t->axis)) + sign;
        });
}

std::string Trigger::joyToString(short d, float v) const {
    const std::string axes = joyAxisToString(d);
    const std::string buttons = joyButtonsToString(v);
    if (axes.empty()) return buttons;
    if (buttons.empty()) return axes;
    return axes + ";" + buttons;
}

Node* Trigger::buildTranslatorTree() const {
    Node* node = new Node;
    node->name = XML_TRIGGER;
    (*node)[XML_NAME] = name;
    for (const Translator* translator : translators) *node += translator->buildTranslatorTree();
    return node;
}

void Trigger::getFromNode(const Node* node, const std::string&) {
    if (node->getAttribute(XML_DEFAULTKEYSTATE)) defaultKeyState = readKeyState(node, XML_DEFAULTKEYSTATE);
    getTranslatorsFromNode(node);
}

void Trigger::getTranslatorsFromNode(const Node* node) {
    clearTranslators();
    for (const Node* child : node->children) {
        const bool isJoyAxis = child->name == XML_JOYAXISTRANSLATOR;
        float v = 1.0f;
        if (child->name == XML_KEYTRANSLATOR) {
            SDLKey key;
            try {
                key = strTo<SDLKey>(child->getAttribute(XML_KEY, std::string()));
            } catch (const std::string& message) {
                debug::warning(dbgControls, "%s", message.c_str());
                continue;
            }
            if (readValue(child, this, v)) new KeyTranslator(this, key, readKeyState(child, XML_STATE), v);
        } else if (child->name == XML_JOYBUTTONTRANSLATOR) {
            if (readValue(child, this, v)) {
                new JoyButtonTranslator(this, narrowed<short>(child, XML_JOY, 0), narrowed<short>(child, XML_BUTTON, 0),
                                        readKeyState(child, XML_STATE), v);
            }
        } else if (child->name == XML_MOUSEBUTTONTRANSLATOR) {
            if (readValue(child, this, v)) {
                new MouseButtonTranslator(this, narrowed<unsigned char>(child, XML_BUTTON, 0),
                                          readKeyState(child, XML_STATE), v);
            }
        } else if (isJoyAxis || child->name == XML_MOUSEAXISTRANSLATOR) {
            const auto axis = narrowed<unsigned char>(child, XML_AXIS, 0);
            const auto direction = static_cast<signed char>(narrowed<short>(child, XML_DIRECTION, 0));
            const auto min = narrowed<short>(child, XML_MIN, 0);
            const auto max = narrowed<short>(child, XML_MAX, 1);
            if (isJoyAxis) {
                new JoyAxisTranslator(this, narrowed<short>(child, XML_JOY, 0), axis, direction, min, max);
            } else {
                new MouseAxisTranslator(this, axis, direction, min, max);
            }
        } else {
            debug::debug(dbgControls, "Trigger \"%s\": unknown binding element \"%s\" skipped.", name.c_str(),
                         child->name.c_str());
        }
    }
}

}  // namespace norvane
