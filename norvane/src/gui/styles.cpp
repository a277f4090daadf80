#include "gui/styles.h"

#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_NAME = "name";
}  // namespace

void Style::getFromNode(const Node* node, GUI*) {
    const std::string* styleName = node->getAttribute(XML_NAME);
    if (!styleName) debug::error(dbgGui, "No name specified for style. Using empty name.");
    name = styleName ? *styleName : std::string();
}

}  // namespace gui
}  // namespace norvane
