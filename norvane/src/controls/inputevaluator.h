#ifndef NORVANE_CONTROLS_INPUTEVALUATOR_H
#define NORVANE_CONTROLS_INPUTEVALUATOR_H

#include <string>
#include <vector>

#include "controls/evaluator.h"
#include "controls/trigger.h"
#include "resources/manager.h"

namespace norvane {

class KeyTranslator;
class JoyButtonTranslator;
class JoyAxisTranslator;
class MouseButtonTranslator;
class MouseAxisTranslator;

// A bank of triggers that turns events into them. Translators are indexed by device class, so an
// event only visits the bindings of its own kind.
class InputEvaluator : public Evaluator, public NamedResourceBank<Trigger> {
public:
    InputEvaluator() = default;
    InputEvaluator(const InputEvaluator&) = delete;
    InputEvaluator& operator=(const InputEvaluator&) = delete;
    ~InputEvaluator() override;

    void perform(float ms, ControlQueue* queue) override;  // queues every held trigger
    bool evaluate(const SDL_Event& event, ControlQueue* queue) override;
    void flush() override;  // releases held triggers to 0 without queueing them

    std::string getNodeName() override;
    // Reads a definition; triggers not named in it stay.
    void getFromNode(const Node* node, const std::string& path) override;

    // Each offers the event to every matching binding of its class; true when any consumed it.
    bool handleKeyEvent(const SDL_Event& event, ControlQueue* queue);
    bool handleMouseButtonEvent(const SDL_Event& event, ControlQueue* queue);
    bool handleMouseAxisEvent(const SDL_Event& event, ControlQueue* queue);
    // An exact joystick and button binding takes precedence over wildcards; of those only the last one fires.
    bool handleJoyButtonEvent(const SDL_Event& event, ControlQueue* queue);
    bool handleJoyAxisEvent(const SDL_Event& event, ControlQueue* queue);

    void clear();  // destroys every trigger
    void setDataOnAllTriggers(int data);
    void copyFrom(const InputEvaluator* other);  // replaces all triggers by clones of other's
    InputEvaluator* clone() const;               // the caller owns the copy

    // Applies stored bindings: each "trigger" element replaces the bindings of the trigger it names.
    void getTranslatorsFromNode(const Node* node);
    void addTranslatorsToTree(Node* parent) const;  // in name order
    void hold(Trigger* t);     // perform queues `t` from now on
    void release(Trigger* t);  // until this

    // Indexes, in creation order; the triggers own the translators.
    std::vector<KeyTranslator*> keyTranslators;
    std::vector<JoyButtonTranslator*> joyButtonTranslators;
    std::vector<JoyAxisTranslator*> joyAxisTranslators;
    std::vector<MouseButtonTranslator*> mouseButtonTranslators;
    std::vector<MouseAxisTranslator*> mouseAxisTranslators;
    // Held through a "pressed" binding. Few at a time: a vector, so that a key press does not
    // allocate once the most held at once have been seen.
    std::vector<Trigger*> pressedTriggers;
};

// The framework core's bank generator: "inputEvaluator" yields an InputEvaluator.
class BasicResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;
};

extern const BasicResourceBankGenerator resourceBankGenerator;

}  // namespace norvane

#endif
