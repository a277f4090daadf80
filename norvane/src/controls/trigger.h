#ifndef NORVANE_CONTROLS_TRIGGER_H
#define NORVANE_CONTROLS_TRIGGER_H

#include <string>
#include <vector>

#include "resources/manager.h"
#include "tools/convert.h"

namespace norvane {

class ControlQueue;
class InputEvaluator;
class Translator;

// Which edge of a button a binding reacts to.
enum KeyState {
    ksDefault = 0,  // replaced by the trigger's defaultKeyState when the binding is built
    ksDown = 1,
    ksUp = 2,
    ksPressed = 3,  // held from press to release, queued every frame meanwhile
};

template <>
std::string toStr<KeyState>(KeyState state);
// "down", "up", "pressed"; any other text is ksDefault.
template <>
KeyState strTo<KeyState>(const std::string& text);

// A named action ("fire", an axis) with its current value and its bindings. Held by its evaluator;
// destroying it destroys its translators.
class Trigger : public NamedResource<InputEvaluator, std::string> {
public:
    // Digital: the value is 0 or maxValue (1). Replaces a trigger of the same name in `owner`.
    Trigger(InputEvaluator* owner, int code, const std::string& name, const std::string& description,
            KeyState defaultKeyState);
    // Analog: the value follows an axis between -maxValue and maxValue; not queued.
    Trigger(InputEvaluator* owner, int code, const std::string& name, const std::string& description,
            float maxValue);
    Trigger(const Trigger&) = delete;
    Trigger& operator=(const Trigger&) = delete;
    ~Trigger() override;

    void trigger(ControlQueue* queue);  // appends this trigger if it is queued
    void trigger(ControlQueue* queue, Translator* by, float v);
    void setValue(ControlQueue* queue, Translator* by, float v);  // queues only a change
    void reset() { value = 0.0f; }
    bool isActive() const { return value != 0.0f; }

    // A copy with cloned bindings and value 0 in `target`, replacing a trigger of the same name there.
    Trigger* clone(InputEvaluator* target) const;

    void clearTranslators();
    // v = 0 (or d = 0) clears every binding of that class; otherwise only those with that value (direction).
    void clearKeyTranslators(float v);
    void clearMouseButtonTranslators(float v);
    void clearJoyButtonTranslators(float v);
    void clearMouseAxisTranslators(short d);
    void clearJoyAxisTranslators(short d);

    // Labels for the controls dialog, e.g. "left;a" and "Joy 0; Axis 1 -;Joy 0; Btn 3".
    std::string keysToString(float v) const;
    std::string joyToString(short d, float v) const;
    std::string joyButtonsToString(float v) const;
    std::string joyAxisToString(short d) const;

    Node* buildTranslatorTree() const;  // the caller owns the result
    void getFromNode(const Node* node, const std::string& path);
    // Replaces all bindings by the translator elements below `node`.
    void getTranslatorsFromNode(const Node* node);

    int code;
    std::string description;
    int data = 0;            // the state's own use: the game keeps a player index here
    std::string dataString;  // likewise
    std::vector<Translator*> translators;  // owned, in creation order
    bool digital;
    float maxValue;
    KeyState defaultKeyState;
    bool queued;
    float value = 0.0f;  // 0 means inactive

private:
    template <typename T, typename Match>
    void clearTranslatorsOf(Match match);
    void copySettingsTo(Trigger* copy) const;  // all but code, name, description and value
};

}  // namespace norvane

#endif
