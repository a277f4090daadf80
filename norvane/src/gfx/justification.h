#ifndef NORVANE_GFX_JUSTIFICATION_H
#define NORVANE_GFX_JUSTIFICATION_H

namespace norvane {

enum JustificationHorizontal { JH_LEFT = 0, JH_CENTER = 1, JH_RIGHT = 2 };
enum JustificationVertical { JV_TOP = 0, JV_CENTER = 1, JV_BOTTOM = 2 };

// XML words, indexed by value.
extern const char* const STR_JUSTIFICATION_HORIZONTAL[];
extern const char* const STR_JUSTIFICATION_VERTICAL[];

// Exact, case-sensitive words; anything else throws "<text> is not a valid Justification... value.".
JustificationHorizontal justificationHorizontal(const char* text);
JustificationVertical justificationVertical(const char* text);

}  // namespace norvane

#endif
