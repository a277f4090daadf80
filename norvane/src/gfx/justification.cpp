#include "gfx/justification.h"

#include <cstring>
#include <string>

namespace norvane {

const char* const STR_JUSTIFICATION_HORIZONTAL[] = {"left", "center", "right"};
const char* const STR_JUSTIFICATION_VERTICAL[] = {"top", "center", "bottom"};

namespace {

int wordIndex(const char* text, const char* const words[3], const char* typeName) {
    for (int i = 0; i < 3; ++i) {
        if (std::strcmp(text, words[i]) == 0) return i;
    }
    throw std::string(text) + " is not a valid " + typeName + " value.";
}

}  // namespace

JustificationHorizontal justificationHorizontal(const char* text) {
    return static_cast<JustificationHorizontal>(
        wordIndex(text, STR_JUSTIFICATION_HORIZONTAL, "JustificationHorizontal"));
}

JustificationVertical justificationVertical(const char* text) {
    return static_cast<JustificationVertical>(wordIndex(text, STR_JUSTIFICATION_VERTICAL, "JustificationVertical"));
}

}  // namespace norvane
