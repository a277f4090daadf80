#ifndef NORVANE_GUI_STYLES_H
#define NORVANE_GUI_STYLES_H

#include <string>

#include "resources/manager.h"

namespace norvane {
namespace gui {

class GUI;
class StyleBank;

// How widgets look; named in a GUI definition and looked up by widgets at load time.
class Style : public NamedResource<StyleBank, std::string> {
public:
    virtual void getFromNode(const Node* node, GUI* gui);
};

class StyleBank : public NamedResourceBank<Style> {};

}  // namespace gui
}  // namespace norvane

#endif
