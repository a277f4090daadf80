#ifndef NORVANE_GUI_CONTAINERS_H
#define NORVANE_GUI_CONTAINERS_H

#include "gui/core.h"

namespace norvane {
namespace gui {

class RectStyle;

// A container that draws a background box.
class Pane : public Component {
public:
    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;

    void setStyle(RectStyle* newStyle) { style = newStyle; }
    RectStyle* getStyle() const { return style; }

private:
    RectStyle* style = nullptr;
};

}  // namespace gui
}  // namespace norvane

#endif
