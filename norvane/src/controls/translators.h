#ifndef NORVANE_CONTROLS_TRANSLATORS_H
#define NORVANE_CONTROLS_TRANSLATORS_H

#include <SDL/SDL.h>

#include "controls/trigger.h"

namespace norvane {

// Whether a binding in `state` reacts to a press (or, with isPress false, to a release).
inline bool takesEdge(KeyState state, bool isPress) {
    return state == ksPressed || (isPress ? state == ksDown : state == ksUp);
}

// One binding of a trigger to a key, button or axis direction. Built bindings enter their trigger's
// list and their evaluator's index of their class, and leave both when destroyed.
class Translator {
public:
    explicit Translator(Trigger* trigger);
    Translator(const Translator&) = delete;
    Translator& operator=(const Translator&) = delete;
    virtual ~Translator();
    // Applies an event the evaluator has already matched; true when it is consumed.
    virtual bool translate(const SDL_Event& event, ControlQueue* queue) = 0;
    virtual Translator* clone(Trigger* t) const = 0;  // same class and parameters on `t`
    virtual Node* buildTranslatorTree() const = 0;    // the caller owns the result

    Trigger* trigger;  // never null
};

class KeyTranslator : public Translator {
public:
    KeyTranslator(Trigger* t, SDLKey key, KeyState state, float value);
    ~KeyTranslator() override;
    bool translate(const SDL_Event& event, ControlQueue* queue) override;
    Translator* clone(Trigger* t) const override;
    Node* buildTranslatorTree() const override;

    SDLKey key;
    KeyState state;
    float value;
};

class JoyTranslator : public Translator {
public:
    JoyTranslator(Trigger* t, short joystick) : Translator(t), joystick(joystick) {}

    short joystick;  // SDL's index; negative means any joystick where the class allows it
};

class JoyButtonTranslator : public JoyTranslator {
public:
    JoyButtonTranslator(Trigger* t, short joystick, short button, KeyState state, float value);
    ~JoyButtonTranslator() override;
    bool translate(const SDL_Event& event, ControlQueue* queue) override;
    Translator* clone(Trigger* t) const override;
    Node* buildTranslatorTree() const override;

    short button;  // negative: any button
    KeyState state;
    float value;
};

// With a digital trigger only `min` counts, as a dead zone; an analog one scales between `min` and `max`.
class JoyAxisTranslator : public JoyTranslator {
public:
    JoyAxisTranslator(Trigger* t, short joystick, unsigned char axis, signed char direction, short min, short max);
    ~JoyAxisTranslator() override;
    bool translate(const SDL_Event& event, ControlQueue* queue) override;
    Translator* clone(Trigger* t) const override;
    Node* buildTranslatorTree() const override;

    unsigned char axis;
    short direction;  // -1, 0 (both) or +1
    short min;
    short max;
};

class MouseButtonTranslator : public Translator {
public:
    MouseButtonTranslator(Trigger* t, unsigned char button, KeyState state, float value);
    ~MouseButtonTranslator() override;
    bool translate(const SDL_Event& event, ControlQueue* queue) override;
    Translator* clone(Trigger* t) const override;
    Node* buildTranslatorTree() const override;

    unsigned char button;  // SDL's button number
    KeyState state;
    float value;
};

// Follows the relative motion of the mouse.
class MouseAxisTranslator : public Translator {
public:
    MouseAxisTranslator(Trigger* t, unsigned char axis, signed char direction, short min, short max);
    ~MouseAxisTranslator() override;
    bool translate(const SDL_Event& event, ControlQueue* queue) override;
    Translator* clone(Trigger* t) const override;
    Node* buildTranslatorTree() const override;

    unsigned char axis;  // 0 horizontal, anything else vertical
    short direction;
    short min;
    short max;
};

}  // namespace norvane

#endif
