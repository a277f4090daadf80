#ifndef NORVANE_CONTROLS_KEYNAMES_H
#define NORVANE_CONTROLS_KEYNAMES_H

#include <SDL/SDL.h>

#include <map>
#include <string>

#include "tools/convert.h"

namespace norvane {

// The names of keys in input definitions and stored bindings; built on first use.
const std::map<SDLKey, std::string>& getKeyNameMap();
const std::map<std::string, SDLKey>& getNameKeyMap();

// Empty for a key without a name.
template <>
std::string toStr<SDLKey>(SDLKey key);
// Throws "<name> is no valid key identifier." for an unknown name.
template <>
SDLKey strTo<SDLKey>(const std::string& text);

}  // namespace norvane

#endif
