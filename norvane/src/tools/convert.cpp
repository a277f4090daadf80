#include "tools/convert.h"

#include <iomanip>

namespace norvane {

template <>
std::string toStr<int>(int value, int width, char fill) {
    std::ostringstream out;
    if (width > 0) out << std::setw(width) << std::setfill(fill);
    out << value;
    return out.str();
}

}  // namespace norvane
