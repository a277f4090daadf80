#ifndef NORVANE_GUI_LISTS_H
#define NORVANE_GUI_LISTS_H

#include <string>
#include <vector>

#include "gui/standard.h"

namespace norvane {
namespace gui {

struct ListItem {
    void getFromNode(const Node* node);  // "caption" and "id"; data becomes null
    bool operator==(const ListItem& other) const {
        return caption == other.caption && id == other.id && data == other.data;
    }

    std::string caption;
    long id = 0;
    void* data = nullptr;  // the application's; not owned
};

// Items shared by several dropdown lists, counted by use. Owns its items.
class List {
public:
    List() = default;
    List(const List&) = delete;
    List& operator=(const List&) = delete;
    ~List() { clear(); }

    void use() { ++useCount; }
    void unuse();  // the last user destroys the list

    List& operator+=(ListItem* item);
    List& operator-=(ListItem* item);  // hands the item back undeleted
    ListItem* findByData(const void* data) const;
    void clear();
    const std::vector<ListItem*>& getItems() const { return items; }
    int getUseCount() const { return useCount; }

private:
    int useCount = 0;
    std::vector<ListItem*> items;
};

// Shows the selected item's caption with a marker; every click, Return or space steps the
// selection to the next item, wrapping to the first. The caption always holds the selection's.
class DropdownList : public Component, public CaptionedObject {
public:
    DropdownList();
    ~DropdownList() override;

    virtual void setItems(List* list);  // keeps the selection if the new list holds it
    virtual void selectItem(ListItem* item);
    virtual List* getItems() const { return items; }
    virtual ListItem* getSelected() const { return selected; }
    virtual void setStyle(DropdownListStyle* newStyle) { style = newStyle; }
    virtual DropdownListStyle* getStyle() const { return style; }
    virtual void setTrigger(Trigger* newTrigger) { trigger = newTrigger; }
    virtual Trigger* getTrigger() const { return trigger; }

    void getSelfFromNode(const Node* node, GUI* gui) override;
    void drawSelf() override;
    void mouseDown(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    void mouseUp(ControlQueue* queue, const basic_Vector2D<float>& position, unsigned char button) override;
    bool keyDown(ControlQueue* queue, SDLKey key, SDLMod modifiers, unsigned short unicode) override;

    void doClick(ControlQueue* queue);  // no callback: the trigger says it
    bool isDown() const { return pressed && focused; }
    ButtonState getState() const { return {isDown(), focused}; }

private:
    bool pressed = false;
    DropdownListStyle* style = nullptr;
    Trigger* trigger = nullptr;
    List* items = nullptr;  // used, not owned
    ListItem* selected = nullptr;
};

}  // namespace gui
}  // namespace norvane

#endif
