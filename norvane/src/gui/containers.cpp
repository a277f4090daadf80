#include "gui/containers.h"

#include "gui/styles.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_STYLE = "style";
}  // namespace

void Pane::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    style = readStyle(node, XML_STYLE, gui, style, name);
}

void Pane::drawSelf() {
    if (style) style->draw({0.0f, 0.0f, dimensions.width, dimensions.height});
}

}  // namespace gui
}  // namespace norvane
