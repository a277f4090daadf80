#ifndef NORVANE_GUI_CORE_H
#define NORVANE_GUI_CORE_H

#include <SDL/SDL.h>

#include <array>
#include <string>
#include <vector>

#include "math/geometry.h"

namespace norvane {

class ControlQueue;
class Trigger;
namespace xml {
class Node;
}
using xml::Node;

namespace gui {

class GUI;

// North is "up", towards grid row 0.
enum Direction { North = 0, East = 1, South = 2, West = 3 };

// Steps North, East, South, West and back to North; returns the old value.
Direction operator++(Direction& direction, int);

// While a tree is drawn: the absolute position of the component being drawn.
extern basic_Vector2D<float> currentPos;

// Base of every GUI element: a rectangle relative to its parent's lower-left corner (y upward)
// that owns its children. The first child is the topmost: drawn last, found first by the mouse.
class Component {
public:
    Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;
    virtual ~Component();  // deletes the children, then leaves the parent

    virtual void setDimensions(const basic_Rect<float>& rect);
    void setDimensions(const basic_Vector2D<float>& position, const basic_Vector2D<float>& size);
    void setDimensions(const basic_Vector2D<float>& size);  // keeps the position
    virtual void setVisible(bool isVisible);
    virtual void setEnabled(bool isEnabled);
    virtual basic_Vector2D<float> getPos() const;
    virtual basic_Vector2D<float> getDimensions() const;  // width and height
    virtual const std::string& getName() const;
    virtual bool getVisible() const;
    virtual bool getEnabled() const;

    virtual void getSelfFromNode(const Node* node, GUI* gui);

    virtual void draw();
    virtual void drawSelf() {}
    virtual void drawSelfPost() {}  // after the children, outside their clipping

    // A direction trigger wins over the neighbour; the callback hears of every move, also onto
    // the component that already holds the focus.
    virtual void move(Direction direction, ControlQueue* queue);
    virtual void performSelf(ControlQueue*, float) {}

    // Positions are relative to the receiving component. A bool result means "handled".
    virtual void enter(ControlQueue*, const basic_Vector2D<float>&) {}
    virtual void leave(ControlQueue*, const basic_Vector2D<float>&) {}
    virtual void mouseDown(ControlQueue*, const basic_Vector2D<float>&, unsigned char) {}
    virtual void mouseUp(ControlQueue*, const basic_Vector2D<float>&, unsigned char) {}
    virtual void mouseMove(ControlQueue*, const basic_Vector2D<float>&) {}
    // Tab and the arrow keys move the focus; nothing else is handled here.
    virtual bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode);
    virtual bool keyUp(ControlQueue*, SDLKey, SDLMod, unsigned short) { return false; }
    virtual bool joyButtonDown(ControlQueue*, unsigned char, unsigned char) { return false; }
    virtual bool joyButtonUp(ControlQueue*, unsigned char, unsigned char) { return false; }
    // Joystick 0, axes 0 and 1, values already quantised to -1, 0 and 1 by the GUI.
    virtual bool joyAxisMotion(ControlQueue* queue, unsigned char joystick, unsigned char axis, short value);

    Component* getParent() const { return parent; }
    GUI* getRoot();  // null when the top of the tree is not a GUI
    const std::vector<Component*>& getChildren() const { return children; }
    void setName(const std::string& newName) { name = newName; }

    // Moves `child` here from any other parent; an unplaced child gets the next row of column 0.
    Component& operator+=(Component* child);
    // Hands `child` back to the caller undeleted. Throws when it is not a child of this.
    Component& operator-=(Component* child);
    // A direct child first, then each child's subtree in turn; null when none has the name.
    Component* operator[](const std::string& childName) const;
    // The innermost visible, enabled component under `point` (relative to this), or null.
    Component* find(const basic_Vector2D<float>& point);
    bool contains(const basic_Vector2D<float>& point) const;
    // `point` minus the positions of this component and all its ancestors.
    basic_Vector2D<float> getRelativeCoordinates(const basic_Vector2D<float>& point) const;
    void center(const basic_Vector2D<float>& areaSize);  // axes of size 0 or less stay
    void bringToFront();

    bool isFocused() const { return focused; }
    bool isEnabled() const { return enabled && visible; }
    void setFocused(bool hasFocus);
    // Tab: the next focusable component of the innermost non-focusable container around this one.
    void focusNext();
    void focusPrevious() {}
    void captureMouse(bool capture);

    void perform(ControlQueue* queue, float ms);  // children from the last to the first
    void recalcNeighbours();  // run once the children are complete
    // Creates a component for every component element below `node`; other elements are passed
    // over. With a null `gui` a new component that is a GUI stands for it.
    void getChildrenFromNode(const Node* node, GUI* gui);
    void getComponentFromNode(const Node* node, GUI* gui);  // fills this component

    // Free for the application; `focusable` components take part in navigation and Tab.
    bool focusable = false;
    int gridX = -1, gridY = -1;  // cell in the parent's navigation grid; -1 means not placed
    int gridWidth = 1, gridHeight = 1;
    std::array<Component*, 4> neighbours{};  // by Direction; computed by the parent's recalcNeighbours()
    std::array<Trigger*, 4> triggers{};      // by Direction; borrowed
    long data = 0;
    std::string dataString;

protected:
    // Focus moved by navigation or Tab: as setFocused(true), then the callback's onMove().
    void moveFocusTo(Component* target);

    Component* parent = nullptr;
    std::vector<Component*> children;  // owned
    bool focused = false;              // this component or one of its descendants holds the focus
    std::string name;
    basic_Rect<float> dimensions;
    bool visible = true;
    bool enabled = true;

private:
    // The neighbour in `direction`, passing over hidden and disabled ones; null when none is left.
    Component* reachableNeighbour(Direction direction);
    void setFocusFlags(bool hasFocus);  // on this component and all its ancestors
};

// The trigger named by `attribute` ("evaluator.trigger"), `current` when the attribute is absent,
// null when it names nothing or there is no GUI to ask.
Trigger* readTrigger(const Node* node, const char* attribute, const GUI* gui, Trigger* current);

}  // namespace gui
}  // namespace norvane

#endif
