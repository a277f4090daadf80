#include "gui/lists.h"

#include <GL/gl.h>

#include <algorithm>

#include "controls/queue.h"
#include "gui/root.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

namespace {
const char* const XML_CAPTION = "caption";
const char* const XML_ID = "id";
const char* const XML_STYLE = "style";
const char* const XML_TRIGGER = "trigger";
const char* const XML_ITEM = "Item";
}  // namespace

void ListItem::getFromNode(const Node* node) {
    caption = node->getAttribute(XML_CAPTION, caption);
    id = node->getAttributeLong(XML_ID, id);
    data = nullptr;
}

void List::unuse() {
    if (--useCount <= 0) delete this;
}

List& List::operator+=(ListItem* item) {
    items.push_back(item);
    return *this;
}

List& List::operator-=(ListItem* item) {
    items.erase(std::remove(items.begin(), items.end(), item), items.end());
    return *this;
}

ListItem* List::findByData(const void* data) const {
    for (ListItem* item : items) {
        if (item->data == data) return item;
    }
    return nullptr;
}

void List::clear() {
    for (ListItem* item : items) delete item;
    items.clear();
}

DropdownList::DropdownList() { focusable = true; }

DropdownList::~DropdownList() {
    if (items) items->unuse();
}

void DropdownList::setItems(List* list) {
    if (list != items) {
        if (items) items->unuse();
        items = list;
        if (items) items->use();
    }
    if (!items) return;
    const std::vector<ListItem*>& all = items->getItems();
    if (all.empty()) {
        selectItem(nullptr);
    } else if (!selected || std::find(all.begin(), all.end(), selected) == all.end()) {
        selectItem(all.front());
    }
}

void DropdownList::selectItem(ListItem* item) {
    selected = item;
    caption = item ? item->caption : std::string();
    if (item) {
        debug::debug(dbgDdd, "Selected dropdown list item \"%s\".", caption.c_str());
    } else {
        debug::debug(dbgDdd, "Selected dropdown list item null.");
    }
}

void DropdownList::doClick(ControlQueue* queue) {
    if (items && !items->getItems().empty()) {
        const std::vector<ListItem*>& all = items->getItems();
        auto at = std::find(all.begin(), all.end(), selected);
        selectItem(at != all.end() && at + 1 != all.end() ? *(at + 1) : all.front());
    }
    if (trigger) *queue << trigger;
}

void DropdownList::getSelfFromNode(const Node* node, GUI* gui) {
    Component::getSelfFromNode(node, gui);
    CaptionedObject::getSelfFromNode(node, gui);
    if (const std::string* styleName = node->getAttribute(XML_STYLE)) {
        style = findStyle<DropdownListStyle>(gui, *styleName);
        if (style) {
            debug::debug(dbgGui, "Attached style \"%s\" to dropdown list \"%s\".", styleName->c_str(), name.c_str());
        } else {
            debug::warning(dbgGui, "Could not find matching style for dropdown list \"%s\".", name.c_str());
        }
    }
    // Resolved like every other widget's trigger: the GUI's plain-name table is never filled.
    trigger = readTrigger(node, XML_TRIGGER, gui, trigger);
    List* own = nullptr;
    for (const Node* element : node->children) {
        if (element->name != XML_ITEM) continue;
        if (!own) own = new List;
        auto* item = new ListItem;
        item->getFromNode(element);
        *own += item;
    }
    if (own) setItems(own);
}

void DropdownList::drawSelf() {
    if (!style) return;
    const basic_Rect<float> rect{0.0f, 0.0f, dimensions.width, dimensions.height};
    style->draw(rect, getState());
    glPushMatrix();
    style->print(rect, getState(), caption.c_str());
    glPopMatrix();
}

void DropdownList::mouseDown(ControlQueue*, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    captureMouse(true);
    pressed = true;
}

void DropdownList::mouseUp(ControlQueue* queue, const basic_Vector2D<float>&, unsigned char button) {
    if (button != SDL_BUTTON_LEFT) return;
    if (pressed && focused) doClick(queue);
    pressed = false;
    captureMouse(false);
}

bool DropdownList::keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) {
    if (key == SDLK_RETURN || key == SDLK_SPACE) {
        doClick(queue);
        return true;
    }
    return Component::keyDown(queue, key, modifiers, unicode);
}

}  // namespace gui
}  // namespace norvane
