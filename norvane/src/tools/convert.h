#ifndef NORVANE_TOOLS_CONVERT_H
#define NORVANE_TOOLS_CONVERT_H

#include <sstream>
#include <string>

namespace norvane {

// Text conversions; input code specialises them for its enumerations.
template <typename T>
std::string toStr(T value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

// Right-aligned in at least `width` characters; width 0 means no padding. Longer numbers are not cut.
template <typename T>
std::string toStr(T value, int width, char fill);

template <>
std::string toStr<int>(int value, int width, char fill);

template <typename T>
T strTo(const std::string& text) {
    std::istringstream in(text);
    T value{};
    in >> value;
    return value;
}

}  // namespace norvane

#endif
