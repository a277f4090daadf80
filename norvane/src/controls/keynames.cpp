#include "controls/keynames.h"

namespace norvane {

namespace {

std::map<SDLKey, std::string> buildKeyNames() {
    std::map<SDLKey, std::string> names;
    auto add = [&names](int key, const std::string& name) { names[static_cast<SDLKey>(key)] = name; };
    auto addChars = [&add](int from, int to) {
        for (int key = from; key <= to; ++key) add(key, std::string(1, static_cast<char>(key)));
    };
    add(SDLK_BACKSPACE, "backspace");
    add(SDLK_TAB, "tab");
    add(SDLK_CLEAR, "clear");
    add(SDLK_RETURN, "return");
    add(SDLK_PAUSE, "pause");
    add(SDLK_ESCAPE, "esc");
    add(SDLK_SPACE, "space");
    addChars(33, 36);  // '%' (37) has no key of its own
    addChars(38, 64);
    addChars(91, 92);
    add(SDLK_RIGHTBRACKET, "}");  // stored files have always used this name
    addChars(94, 96);
    addChars(97, 122);
    add(SDLK_DELETE, "del");
    for (int digit = 0; digit <= 9; ++digit) add(SDLK_KP0 + digit, "pad_" + std::to_string(digit));
    add(SDLK_KP_PERIOD, "pad_.");
    add(SDLK_KP_DIVIDE, "pad_/");
    add(SDLK_KP_MULTIPLY, "pad_*");
    add(SDLK_KP_MINUS, "pad_-");
    add(SDLK_KP_PLUS, "pad_+");
    add(SDLK_KP_ENTER, "enter");
    add(SDLK_KP_EQUALS, "pad_=");
    add(SDLK_UP, "up");
    add(SDLK_DOWN, "down");
    add(SDLK_RIGHT, "right");
    add(SDLK_LEFT, "left");
    add(SDLK_INSERT, "ins");
    add(SDLK_HOME, "home");
    add(SDLK_END, "end");
    add(SDLK_PAGEUP, "pgup");
    add(SDLK_PAGEDOWN, "pgdn");
    for (int f = 1; f <= 15; ++f) add(SDLK_F1 + f - 1, "f" + std::to_string(f));
    add(SDLK_NUMLOCK, "numlock");
    add(SDLK_CAPSLOCK, "capslock");
    add(SDLK_SCROLLOCK, "scrollock");
    add(SDLK_RSHIFT, "rshift");
    add(SDLK_LSHIFT, "lshift");
    add(SDLK_RCTRL, "rctrl");
    add(SDLK_LCTRL, "lctrl");
    add(SDLK_RALT, "ralt");
    add(SDLK_LALT, "lalt");
    add(SDLK_RMETA, "rmeta");
    add(SDLK_LMETA, "lmeta");
    add(SDLK_LSUPER, "lwin");
    add(SDLK_RSUPER, "rwin");
    add(SDLK_MODE, "mode");
    add(SDLK_HELP, "help");
    add(SDLK_PRINT, "printscreen");
    add(SDLK_SYSREQ, "sysrq");
    add(SDLK_BREAK, "break");
    add(SDLK_MENU, "menu");
    add(SDLK_POWER, "power");
    add(SDLK_EURO, "euro");
    return names;
}

}  // namespace

const std::map<SDLKey, std::string>& getKeyNameMap() {
    static const std::map<SDLKey, std::string> names = buildKeyNames();
    return names;
}

const std::map<std::string, SDLKey>& getNameKeyMap() {
    static const std::map<std::string, SDLKey> keys = [] {
        std::map<std::string, SDLKey> inverse;
        for (const auto& entry : getKeyNameMap()) inverse[entry.second] = entry.first;
        return inverse;
    }();
    return keys;
}

template <>
std::string toStr<SDLKey>(SDLKey key) {
    const auto& names = getKeyNameMap();
    auto it = names.find(key);
    return it == names.end() ? std::string() : it->second;
}

template <>
SDLKey strTo<SDLKey>(const std::string& text) {
    const auto& keys = getNameKeyMap();
    auto it = keys.find(text);
    if (it == keys.end()) throw std::string(text + " is no valid key identifier.");
    return it->second;
}

}  // namespace norvane
