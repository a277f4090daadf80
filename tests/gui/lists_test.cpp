#include "gui/lists.h"

#include "gui/loaded.h"

using namespace norvane;
using namespace norvane::gui;

TEST_F(LoadedGui, DropdownListsCycleOnClicksAndShareTheirLists) {
    ASSERT_NE(load("<DropdownList name=\"mode\" x=\"10\" y=\"10\" width=\"100\" height=\"20\" trigger=\"menu.t4\"><Item caption=\"A\""
                   " id=\"1\"/><Item caption=\"B\" id=\"2\"/><Item caption=\"C\" id=\"3\"/></DropdownList><DropdownList name=\"empty\"/>"), nullptr);
    auto* mode = get<DropdownList>("mode");
    ListItem* b = mode->getItems()->getItems()[1];
    EXPECT_EQ(mode->getCaption() + std::to_string(mode->getItems()->getItems()[2]->id), "A3");  // the first after loading
    mode->selectItem(b);
    mode->setFocused(true);
    std::string captions;
    for (auto [sym, unicode] : {std::pair{SDLK_RETURN, '\r'}, {SDLK_SPACE, ' '}, {SDLK_KP_ENTER, '\r'}}) {
        send(keyEvent(sym, true, unicode));  // by key symbol: keypad Enter is not Return
        captions += mode->getCaption();
    }
    EXPECT_EQ(captions, "CAA");
    EXPECT_EQ(behind.seen, std::vector<int>{SDL_KEYDOWN});  // the keys it used went no further
    click(mode, true);
    EXPECT_TRUE(mode->getState().down);
    click(mode, false);
    EXPECT_EQ(mode->getSelected(), b);
    auto* empty = get<DropdownList>("empty");
    empty->doClick(&q);  // nothing to select, no trigger
    EXPECT_TRUE(!empty->getItems() && !empty->getSelected() && callback.confirms == 0);
    EXPECT_EQ(fired(), (Codes{4, 4, 4}));

    // A new list keeps a selection it holds; a shared list lives as long as its last user.
    List* shared = new List;
    auto* x = new ListItem;
    x->caption = "X";
    for (ListItem* item : {x, b}) *shared += item;  // both lists hold B for a moment
    *mode->getItems() -= b;
    mode->setItems(shared);  // B kept; the loaded list is gone with its last user
    auto* other = new DropdownList;
    *gui += other;
    other->setItems(shared);
    EXPECT_TRUE(mode->getSelected() == b && other->getSelected() == x);
    delete other;
    EXPECT_TRUE(shared->getUseCount() == 1 && shared->findByData(nullptr) == x);
    mode->setItems(new List);
    EXPECT_TRUE(!mode->getSelected() && mode->getCaption().empty());
}
