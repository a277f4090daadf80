#include "gui/lists.h"

#include <gtest/gtest.h>

#include "gui/loaded.h"

using namespace norvane;
using namespace norvane::gui;

TEST_F(LoadedGui, DropdownListsCycleOnClicksAndShareTheirLists) {
    ASSERT_NE(load("<DropdownList name=\"mode\" x=\"10\" y=\"10\" width=\"100\" height=\"20\" trigger=\"menu.t4\">"
                   "  <Item caption=\"A\" id=\"1\"/><Item caption=\"B\" id=\"2\"/><Item caption=\"C\" id=\"3\"/>"
                   "</DropdownList><DropdownList name=\"empty\"/>"),
              nullptr);
    auto* mode = get<DropdownList>("mode");
    auto item = [&](size_t index) { return mode->getItems()->getItems()[index]; };
    EXPECT_EQ(mode->getCaption(), "A");  // the first item after loading
    EXPECT_EQ(item(2)->id, 3);
    mode->selectItem(item(1));
    mode->setFocused(true);
    key(SDLK_RETURN, '\r');
    EXPECT_EQ(mode->getCaption(), "C");
    key(SDLK_SPACE, ' ');
    EXPECT_EQ(mode->getCaption(), "A");
    key(SDLK_KP_ENTER, '\r');  // by key symbol: keypad Enter is not Return
    EXPECT_EQ(mode->getCaption(), "A");
    click(mode, true);
    EXPECT_TRUE(mode->getState().down);
    click(mode, false);
    EXPECT_EQ(mode->getSelected(), item(1));
    EXPECT_EQ(fired(), (std::vector<int>{4, 4, 4}));
    EXPECT_EQ(callback.confirms, 0);
    auto* empty = get<DropdownList>("empty");
    EXPECT_EQ(empty->getItems(), nullptr);
    empty->doClick(&q);  // nothing to select, no trigger
    EXPECT_EQ(empty->getSelected(), nullptr);
    EXPECT_TRUE(fired().empty());

    // A new list keeps a selection it holds; a shared list lives as long as its last user.
    ListItem* b = item(1);
    List* shared = new List;
    auto* x = new ListItem;
    x->caption = "X";
    *shared += x;
    ListItem same = *x;
    EXPECT_TRUE(same == *x);
    same.id = 9;
    EXPECT_FALSE(same == *x);
    *shared += b;  // both lists hold B for a moment
    *mode->getItems() -= b;
    mode->setItems(shared);
    EXPECT_EQ(mode->getSelected(), b);  // kept; the loaded list is gone with its last user
    auto* other = new DropdownList;
    *gui += other;
    other->setItems(shared);
    EXPECT_EQ(other->getSelected(), x);
    EXPECT_EQ(shared->getUseCount(), 2);
    delete other;
    EXPECT_EQ(shared->getUseCount(), 1);
    EXPECT_EQ(shared->findByData(nullptr), x);
    mode->setItems(new List);
    EXPECT_EQ(mode->getSelected(), nullptr);
    EXPECT_EQ(mode->getCaption(), "");
}
