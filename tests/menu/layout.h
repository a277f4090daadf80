#ifndef TESTS_MENU_LAYOUT_H
#define TESTS_MENU_LAYOUT_H

#include <memory>
#include <string>

#include "math/geometry.h"
#include "resources/manager.h"

namespace norvane {
namespace gui {
class Component;
class GUI;
}  // namespace gui
}  // namespace norvane

// Where the shipped GUI definition puts its components in the 800 x 600 window, with the panels
// centred as the game centres them: for checking the pixels of screenshots at known places.
class Layout {
public:
    Layout();
    ~Layout();

    // In window pixels from the lower left; what the game's GUI was given by the definition.
    norvane::basic_Rect<float> rect(const std::string& name) const;

private:
    norvane::ResourceManager manager;
    norvane::gui::GUI* gui = nullptr;
};

// The absolute rectangle of a component of a GUI tree, in the GUI's coordinates.
norvane::basic_Rect<float> absoluteRect(const norvane::gui::Component* component);

#endif
