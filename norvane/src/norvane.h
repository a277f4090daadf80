#ifndef NORVANE_NORVANE_H
#define NORVANE_NORVANE_H

#include <SDL/SDL.h>

#include <list>

#include "background.h"
#include "math/geometry.h"

namespace norvane {

// SDL's own initialisation flags, or-ed together.
using SubSystem = unsigned int;
const SubSystem SUBSYSTEM_TIMER = SDL_INIT_TIMER;
const SubSystem SUBSYSTEM_AUDIO = SDL_INIT_AUDIO;
const SubSystem SUBSYSTEM_VIDEO = SDL_INIT_VIDEO;
const SubSystem SUBSYSTEM_JOYSTICK = SDL_INIT_JOYSTICK;

extern bool quitting;  // set once shutdown has begun
extern SDL_Surface* screen;
extern bool fullscreen;
extern std::list<BackgroundTask*> backgroundTasks;
extern basic_Rect<float>* currentViewport;

// Throws SDL's error text if SDL cannot start.
void init(SubSystem subsystems, bool installSignalHandlers);
[[noreturn]] void quit();
void cleanUp();
[[noreturn]] void handleSignal(int signal);
// Gives the background tasks time until `deadline` (SDL ticks) and retires the finished ones.
void perform(unsigned int deadline);

SDL_Joystick* initJoystick(int index);
void cleanUpJoystick(SDL_Joystick* joystick);

}  // namespace norvane

#endif
