#include "gui/core.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "controls/queue.h"
#include "gui/containers.h"
#include "gui/lists.h"
#include "gui/root.h"
#include "gui/slider.h"
#include "gui/standard.h"
#include "gui/styles.h"
#include "gui/text.h"
#include "xml/xml.h"

namespace norvane {
namespace gui {

basic_Vector2D<float> currentPos;

namespace {

const char* const XML_NAME = "name";
const char* const XML_X = "x";
const char* const XML_Y = "y";
const char* const XML_WIDTH = "width";
const char* const XML_HEIGHT = "height";
const char* const XML_GRID_X = "gridX";
const char* const XML_GRID_Y = "gridY";
const char* const XML_GRID_WIDTH = "gridWidth";
const char* const XML_GRID_HEIGHT = "gridHeight";
const char* const XML_VISIBLE = "visible";
const char* const XML_ENABLED = "enabled";
const char* const XML_DATA = "data";
const char* const XML_DATA_STRING = "dataString";
const char* const XML_ITEM = "Item";  // a dropdown list's
const char* const XML_TRIGGER_DIRECTION[] = {"triggerNorth", "triggerEast", "triggerSouth", "triggerWest"};

// Grid cells and spans beyond this come from broken data; a grid of them would not fit in memory.
const long MAX_GRID_SIZE = 256;

Component* createComponent(const std::string& element) {
    if (element == "Pane") return new Pane;
    if (element == "InputCaptor") return new InputCaptor;
    if (element == "Label") return new Label;
    if (element == "Button") return new Button;
    if (element == "Checkbox") return new Checkbox;
    if (element == "DropdownList") return new DropdownList;
    if (element == "Textfield") return new Textfield;
    if (element == "Slider_int") return new Slider<int>;
    if (element == "Slider_float") return new Slider<float>;
    return nullptr;
}

bool isKnownElement(const std::string& element) {
    if (element == XML_ITEM) return true;
    std::unique_ptr<Style> style(createStyle(element));
    return style != nullptr;
}

// Reports an element whose cell or rectangle no component can have.
bool isSound(const Node* node) {
    const std::string name = node->getAttribute(XML_NAME, std::string());
    for (const char* attribute : {XML_GRID_X, XML_GRID_Y}) {
        const long value = node->getAttributeLong(attribute, -1);
        if (std::labs(value) >= MAX_GRID_SIZE) {
            debug::warning(dbgGui, "%s \"%s\": %s %ld is out of range. Element skipped.", node->name.c_str(),
                           name.c_str(), attribute, value);
            return false;
        }
    }
    for (const char* attribute : {XML_GRID_WIDTH, XML_GRID_HEIGHT}) {
        const long value = node->getAttributeLong(attribute, 1);
        if (value < 1 || value > MAX_GRID_SIZE) {
            debug::warning(dbgGui, "%s \"%s\": %s %ld is out of range. Element skipped.", node->name.c_str(),
                           name.c_str(), attribute, value);
            return false;
        }
    }
    for (const char* attribute : {XML_X, XML_Y, XML_WIDTH, XML_HEIGHT}) {
        if (!std::isfinite(node->getAttributeFloat(attribute, 0.0f))) {
            debug::warning(dbgGui, "%s \"%s\": %s is not a number. Element skipped.", node->name.c_str(),
                           name.c_str(), attribute);
            return false;
        }
    }
    return true;
}

// The scissor box in window pixels that the children being drawn are clipped to; empty width
// while no component clips.
basic_Rect<int> clipBox{0, 0, -1, -1};

// The rectangle (0, 0, size) of the current model-view origin, in window pixels.
basic_Rect<int> windowRect(const basic_Vector2D<float>& size) {
    GLdouble modelview[16], projection[16];
    GLint viewport[4];
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    GLdouble x0, y0, x1, y1, z;
    gluProject(0, 0, 0, modelview, projection, viewport, &x0, &y0, &z);
    gluProject(size.x, size.y, 0, modelview, projection, viewport, &x1, &y1, &z);
    const int left = static_cast<int>(std::lround(std::min(x0, x1)));
    const int bottom = static_cast<int>(std::lround(std::min(y0, y1)));
    return {left, bottom, static_cast<int>(std::lround(std::max(x0, x1))) - left,
            static_cast<int>(std::lround(std::max(y0, y1))) - bottom};
}

basic_Rect<int> intersect(const basic_Rect<int>& a, const basic_Rect<int>& b) {
    const int left = std::max(a.x, b.x);
    const int bottom = std::max(a.y, b.y);
    const int right = std::min(a.x + a.width, b.x + b.width);
    const int top = std::min(a.y + a.height, b.y + b.height);
    return {left, bottom, std::max(0, right - left), std::max(0, top - bottom)};
}

}  // namespace

Direction operator++(Direction& direction, int) {
    const Direction old = direction;
    switch (direction) {
    case North: direction = East; break;
    case East: direction = South; break;
    case South: direction = West; break;
    case West: direction = North; break;
    default: assert(!"bad direction");
    }
    return old;
}

Component::Component() = default;

Component::~Component() {
    while (!children.empty()) delete children.back();  // each child leaves the list itself
    if (parent) *parent -= this;
}

void Component::setDimensions(const basic_Rect<float>& rect) { dimensions = rect; }

void Component::setDimensions(const basic_Vector2D<float>& position, const basic_Vector2D<float>& size) {
    setDimensions(basic_Rect<float>{position.x, position.y, size.x, size.y});
}

void Component::setDimensions(const basic_Vector2D<float>& size) {
    setDimensions(basic_Rect<float>{dimensions.x, dimensions.y, size.x, size.y});
}

void Component::setVisible(bool isVisible) { visible = isVisible; }
void Component::setEnabled(bool isEnabled) { enabled = isEnabled; }
basic_Vector2D<float> Component::getPos() const { return {dimensions.x, dimensions.y}; }
basic_Vector2D<float> Component::getDimensions() const { return {dimensions.width, dimensions.height}; }
const std::string& Component::getName() const { return name; }
bool Component::getVisible() const { return visible; }
bool Component::getEnabled() const { return enabled; }

GUI* Component::getRoot() {
    Component* top = this;
    while (top->parent) top = top->parent;
    return dynamic_cast<GUI*>(top);
}

Component& Component::operator+=(Component* child) {
    if (child->parent) *child->parent -= child;
    if (child->gridX == -1 && child->gridY == -1) {
        child->gridX = 0;
        child->gridY = static_cast<int>(children.size());
    }
    children.push_back(child);
    child->parent = this;
    return *this;
}

Component& Component::operator-=(Component* child) {
    if (child->parent != this) throw std::string("Trying to remove a component which is not a child.");
    if (GUI* root = getRoot()) root->forget(child);
    children.erase(std::find(children.begin(), children.end(), child));
    child->parent = nullptr;
    return *this;
}

Component* Component::operator[](const std::string& childName) const {
    for (Component* child : children) {
        if (child->name == childName) return child;
    }
    for (Component* child : children) {
        if (Component* found = (*child)[childName]) return found;
    }
    return nullptr;
}

bool Component::contains(const basic_Vector2D<float>& point) const {
    return point.x >= 0 && point.x < dimensions.width && point.y >= 0 && point.y < dimensions.height;
}

Component* Component::find(const basic_Vector2D<float>& point) {
    if (!visible || !enabled || !contains(point)) return nullptr;
    for (Component* child : children) {
        if (Component* found = child->find({point.x - child->dimensions.x, point.y - child->dimensions.y})) {
            return found;
        }
    }
    return this;
}

basic_Vector2D<float> Component::getRelativeCoordinates(const basic_Vector2D<float>& point) const {
    const basic_Vector2D<float> base = parent ? parent->getRelativeCoordinates(point) : point;
    return {base.x - dimensions.x, base.y - dimensions.y};
}

void Component::center(const basic_Vector2D<float>& areaSize) {
    basic_Rect<float> rect = dimensions;
    if (areaSize.x > 0) rect.x = static_cast<float>(static_cast<int>(areaSize.x - dimensions.width) / 2);
    if (areaSize.y > 0) rect.y = static_cast<float>(static_cast<int>(areaSize.y - dimensions.height) / 2);
    setDimensions(rect);
}

void Component::bringToFront() {
    if (!parent) return;
    auto& siblings = parent->children;
    auto self = std::find(siblings.begin(), siblings.end(), this);
    std::rotate(siblings.begin(), self, self + 1);
}

void Component::setFocusFlags(bool hasFocus) {
    for (Component* c = this; c; c = c->parent) c->focused = hasFocus;
}

void Component::setFocused(bool hasFocus) {
    GUI* root = getRoot();
    Component* holder = root ? root->focusedComponent : nullptr;
    if (hasFocus) {
        if (holder == this && focused) return;
        if (holder) holder->setFocusFlags(false);
        setFocusFlags(true);
        if (root) root->focusedComponent = this;
    } else if (holder == this || !root) {
        setFocusFlags(false);  // the root keeps pointing here
    }
}

void Component::moveFocusTo(Component* target) {
    target->setFocused(true);
    if (GUI* root = getRoot()) root->doMove();
}

void Component::captureMouse(bool capture) {
    GUI* root = getRoot();
    if (!root) return;
    if (capture) {
        root->mouseCaptured = this;
    } else if (root->mouseCaptured == this) {
        root->mouseCaptured = nullptr;
    }
}

Component* Component::reachableNeighbour(Direction direction) {
    Component* next = neighbours[direction];
    // Hidden or disabled cells are passed over in the same direction; a row of them can lead
    // back here or wander between columns, so the walk is bounded by the number of siblings.
    const size_t bound = parent ? parent->children.size() : 0;
    for (size_t steps = 0; next && next != this && !next->isEnabled(); ++steps) {
        if (steps >= bound) return nullptr;
        next = next->neighbours[direction];
    }
    return next == this ? nullptr : next;
}

void Component::move(Direction direction, ControlQueue* queue) {
    if (triggers[direction]) {
        *queue << triggers[direction];
        return;
    }
    if (Component* target = reachableNeighbour(direction)) moveFocusTo(target);
}

void Component::focusNext() {
    // Walks forward in pre-order; the end of a non-focusable container starts it over, so a
    // container without anything to focus would cycle: restarting the same container twice ends it.
    std::vector<const Component*> restarted;
    auto takes = [](const Component* c) { return c->focusable && c->isEnabled(); };
    Component* current = this;
    do {
        if (current->isEnabled() && !current->children.empty()) {
            current = current->children.front();
            continue;
        }
        Component* p = current->parent;
        if (!p) return;
        auto next = std::find(p->children.begin(), p->children.end(), current) + 1;
        if (next != p->children.end()) {
            current = *next;
        } else if (takes(p)) {
            current = p;
        } else {
            if (std::find(restarted.begin(), restarted.end(), p) != restarted.end()) return;
            restarted.push_back(p);
            current = p->children.front();
        }
    } while (!takes(current));
    moveFocusTo(current);
}

bool Component::keyDown(ControlQueue* queue, SDLKey key, SDLMod, unsigned short) {
    GUI* root = getRoot();
    Component* target = root ? root->focusedComponent : this;
    switch (key) {
    case SDLK_TAB: focusNext(); return true;
    case SDLK_UP: target->move(North, queue); return true;
    case SDLK_DOWN: target->move(South, queue); return true;
    case SDLK_LEFT: target->move(West, queue); return true;
    case SDLK_RIGHT: target->move(East, queue); return true;
    default: return false;
    }
}

bool Component::joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short value) {
    if (joystick != 0 || axis > 1) return false;
    GUI* root = getRoot();
    Component* target = root ? root->focusedComponent : this;
    if (value == 1) target->move(axis == 0 ? East : South, queue);
    if (value == -1) target->move(axis == 0 ? West : North, queue);
    return true;
}

Trigger* readTrigger(const Node* node, const char* attribute, const GUI* gui, Trigger* current) {
    const std::string* triggerName = node->getAttribute(attribute);
    if (!triggerName) return current;
    return gui ? gui->findTrigger(*triggerName) : nullptr;
}

void Component::getSelfFromNode(const Node* node, GUI* gui) {
    const std::string* ownName = node->getAttribute(XML_NAME);
    if (!ownName) debug::error(dbgGui, "No name specified for component. Using empty name.");
    name = ownName ? *ownName : std::string();
    setDimensions(basic_Rect<float>{node->getAttributeFloat(XML_X, dimensions.x),
                                    node->getAttributeFloat(XML_Y, dimensions.y),
                                    node->getAttributeFloat(XML_WIDTH, dimensions.width),
                                    node->getAttributeFloat(XML_HEIGHT, dimensions.height)});
    gridX = static_cast<int>(node->getAttributeLong(XML_GRID_X, gridX));
    gridY = static_cast<int>(node->getAttributeLong(XML_GRID_Y, gridY));
    gridWidth = static_cast<int>(node->getAttributeLong(XML_GRID_WIDTH, gridWidth));
    gridHeight = static_cast<int>(node->getAttributeLong(XML_GRID_HEIGHT, gridHeight));
    setVisible(node->getAttributeBool(XML_VISIBLE, visible));
    setEnabled(node->getAttributeBool(XML_ENABLED, enabled));
    data = node->getAttributeLong(XML_DATA, data);
    dataString = node->getAttribute(XML_DATA_STRING, dataString);
    for (int d = North; d <= West; ++d) triggers[d] = readTrigger(node, XML_TRIGGER_DIRECTION[d], gui, triggers[d]);
}

void Component::getChildrenFromNode(const Node* node, GUI* gui) {
    for (const Node* element : node->children) {
        std::unique_ptr<Component> child(createComponent(element->name));
        if (!child) {
            // Styles are read by the GUI and items by their dropdown list; anything else is a typo.
            if (!isKnownElement(element->name)) {
                debug::warning(dbgGui, "Unknown GUI element \"%s\" skipped.", element->name.c_str());
            }
            continue;
        }
        if (!isSound(element)) continue;
        GUI* root = gui ? gui : dynamic_cast<GUI*>(child.get());
        child->getSelfFromNode(element, root);
        child->getChildrenFromNode(element, root);
        child->recalcNeighbours();
        *this += child.release();
    }
}

void Component::getComponentFromNode(const Node* node, GUI* gui) {
    GUI* root = gui ? gui : dynamic_cast<GUI*>(this);
    getSelfFromNode(node, root);
    getChildrenFromNode(node, root);
    recalcNeighbours();
}

void Component::perform(ControlQueue* queue, float ms) {
    if (!enabled) return;
    performSelf(queue, ms);
    for (size_t i = children.size(); i > 0; --i) {
        if (i <= children.size()) children[i - 1]->perform(queue, ms);  // a click may have removed some
    }
}

void Component::draw() {
    if (!visible) return;
    currentPos.x += dimensions.x;
    currentPos.y += dimensions.y;
    glTranslatef(dimensions.x, dimensions.y, 0.0f);
    drawSelf();
    if (!children.empty()) {
        // Children are clipped to this component's rectangle (and its ancestors') in window
        // pixels, whatever the scale between the GUI's units and the window.
        const basic_Rect<int> outer = clipBox;
        basic_Rect<int> box = windowRect({dimensions.width, dimensions.height});
        if (outer.width >= 0) box = intersect(box, outer);
        clipBox = box;
        glPushAttrib(GL_SCISSOR_BIT);
        glEnable(GL_SCISSOR_TEST);
        glScissor(box.x, box.y, box.width, box.height);
        for (size_t i = children.size(); i > 0; --i) children[i - 1]->draw();
        glPopAttrib();
        clipBox = outer;
    }
    drawSelfPost();
    glTranslatef(-dimensions.x, -dimensions.y, 0.0f);
    currentPos.x -= dimensions.x;
    currentPos.y -= dimensions.y;
}

void Component::recalcNeighbours() {
    int width = 0, height = 0;
    for (const Component* child : children) {
        if (!child->focusable) continue;
        width = std::max(width, child->gridX + child->gridWidth);
        height = std::max(height, child->gridY + child->gridHeight);
    }
    std::vector<Component*> cells(static_cast<size_t>(width) * static_cast<size_t>(height), nullptr);
    auto cell = [&](int x, int y) -> Component*& { return cells[static_cast<size_t>(y) * width + x]; };
    auto placed = [](const Component* c) {
        return c->focusable && c->gridX >= 0 && c->gridY >= 0 && c->gridWidth >= 1 && c->gridHeight >= 1;
    };
    for (Component* child : children) {
        if (!placed(child)) continue;
        for (int y = child->gridY; y < child->gridY + child->gridHeight; ++y) {
            for (int x = child->gridX; x < child->gridX + child->gridWidth; ++x) cell(x, y) = child;
        }
    }
    for (Component* child : children) {
        if (!child->focusable) continue;
        child->neighbours.fill(nullptr);
        if (!placed(child)) continue;
        const int x = child->gridX, y = child->gridY;
        child->neighbours[North] = cell(x, y == 0 ? height - 1 : y - 1);
        child->neighbours[East] = cell(x >= width - 1 ? 0 : x + 1, y);
        child->neighbours[South] = cell(x, y >= height - 1 ? 0 : y + 1);
        child->neighbours[West] = cell(x == 0 ? width - 1 : x - 1, y);
        for (Component*& neighbour : child->neighbours) {
            if (neighbour == child) neighbour = nullptr;
        }
    }
}

}  // namespace gui
}  // namespace norvane
