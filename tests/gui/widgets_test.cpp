#include <gtest/gtest.h>

#include "gui/lists.h"
#include "gui/loaded.h"
#include "gui/standard.h"
#include "gui/text.h"
#include "sprites/sprites.h"

using namespace norvane;
using namespace norvane::gui;
using namespace probe;

namespace {

class Cursor : public sprites::Sprite {
public:
    Cursor() : Sprite({0, 0}, true) {}
    void drawSelf() override {}
};

struct ClickCounter : ClickEventHandler {
    void handleClickEvent(Component* c) override { clicked.push_back(c); }
    std::vector<Component*> clicked;
};

// Two buttons (a repeating one), a checkbox, a text field and an input captor, one per row.
class Widgets : public loaded::LoadedGui {
protected:
    void SetUp() override {
        ASSERT_NE(load("<Button name=\"ok\" x=\"10\" y=\"400\" width=\"100\" height=\"20\" trigger=\"menu.t1\"/>"
                       "<Button name=\"more\" x=\"10\" y=\"360\" width=\"100\" height=\"20\" repeat=\"true\""
                       "        trigger=\"menu.t2\"/>"
                       "<Checkbox name=\"box\" x=\"10\" y=\"320\" width=\"100\" height=\"20\" trigger=\"menu.t3\""
                       "          triggerOff=\"menu.t4\"/>"
                       "<Textfield name=\"text\" x=\"10\" y=\"280\" width=\"100\" height=\"20\" caption=\"ab\""
                       "           maxLength=\"5\" triggerConfirm=\"menu.t5\"/>"
                       "<InputCaptor name=\"captor\" triggerKey=\"menu.t6\" triggerJoyButton=\"menu.t7\""
                       "             triggerJoyAxis=\"menu.t8\"/>"),
                  nullptr);
        ok = get<Button>("ok");
        more = get<Button>("more");
        box = get<Checkbox>("box");
        text = get<Textfield>("text");
        captor = get<InputCaptor>("captor");
        ok->setOnClick(&counter);
        gui->setMouseCursor(new Cursor);
    }
    // Screen coordinates of a point `dx`, `dy` inside `c` (the window's y grows downward).
    void moveTo(const Component* c, float dx = 5, float dy = 5) {
        send(mouseMotionEvent(Uint16(c->getPos().x + dx), Uint16(480 - (c->getPos().y + dy))));
    }
    void button(Uint8 type, const Component* c) {
        send(mouseButtonEvent(type, 1, Uint16(c->getPos().x + 5), Uint16(480 - (c->getPos().y + 5))));
    }
    void frames(int count, float ms) {
        for (int i = 0; i < count; ++i) gui->perform(&q, ms);
    }

    Button* ok;
    Button* more;
    Checkbox* box;
    Textfield* text;
    InputCaptor* captor;
    ClickCounter counter;
};

using Definitions = loaded::LoadedGui;

}  // namespace

TEST_F(Widgets, ButtonClicksOnReleaseOnlyWhenTheCursorStayedOnIt) {
    moveTo(ok);
    button(SDL_MOUSEBUTTONDOWN, ok);
    EXPECT_TRUE(ok->getState().down);
    EXPECT_TRUE(ok->getState().hot);
    moveTo(box);  // dragged off: the capture keeps the button, the focus goes to the GUI
    EXPECT_EQ(gui->getFocused(), gui);
    EXPECT_FALSE(ok->getState().down);
    button(SDL_MOUSEBUTTONUP, box);
    EXPECT_TRUE(fired().empty());
    EXPECT_EQ(callback.confirms, 0);

    moveTo(ok);
    button(SDL_MOUSEBUTTONDOWN, ok);
    EXPECT_TRUE(fired().empty());  // not yet
    button(SDL_MOUSEBUTTONUP, ok);
    EXPECT_EQ(fired(), (std::vector<int>{1}));
    EXPECT_EQ(callback.confirms, 1);
    EXPECT_EQ(counter.clicked, (std::vector<Component*>{ok}));
    EXPECT_EQ(gui->getMouseCaptured(), nullptr);
    send(mouseButtonEvent(SDL_MOUSEBUTTONUP, 3, 15, 75));  // other buttons do nothing
    EXPECT_TRUE(fired().empty());
}

TEST_F(Widgets, RepeatingButtonClicksOnPressAfterTheDelayEveryRepeatAndOnRelease) {
    moveTo(more);
    button(SDL_MOUSEBUTTONDOWN, more);
    EXPECT_EQ(fired().size(), 1u);  // at once
    frames(29, 10.0f);              // 290 ms
    EXPECT_TRUE(fired().empty());
    frames(11, 10.0f);  // 400 ms: at 300, 330, 360 and 390
    EXPECT_EQ(fired().size(), 4u);
    moveTo(ok);  // a repeating button stays down off the cursor
    EXPECT_TRUE(more->getState().down);
    button(SDL_MOUSEBUTTONUP, more);
    EXPECT_EQ(fired().size(), 1u);
    frames(50, 10.0f);
    EXPECT_TRUE(fired().empty());
    EXPECT_EQ(callback.confirms, 6);

    gui->setKeyRepeat(100.0f, 0.0f);  // a zero step must not hang the catch-up loop
    moveTo(more);
    button(SDL_MOUSEBUTTONDOWN, more);
    frames(1, 101.0f);
    EXPECT_GT(fired().size(), 1u);
    button(SDL_MOUSEBUTTONUP, more);
}

TEST_F(Widgets, KeysAndJoystickButtonsClickButtonsAndCheckboxes) {
    ok->setFocused(true);
    key(SDLK_SPACE, ' ');
    key(SDLK_RETURN, '\r');
    key(SDLK_KP_ENTER, '\r');  // a button reads the character
    send(joyButtonEvent(SDL_JOYBUTTONDOWN, 1, 0));
    send(joyButtonEvent(SDL_JOYBUTTONDOWN, 0, 1));
    EXPECT_EQ(fired(), (std::vector<int>{1, 1, 1, 1}));
    key(SDLK_DOWN);  // the arrows still navigate
    EXPECT_EQ(gui->getFocused(), more);

    box->setFocused(true);
    key(SDLK_KP_ENTER, '\r');  // a checkbox reads the key symbol
    EXPECT_FALSE(box->getChecked());
    key(SDLK_SPACE, ' ');
    EXPECT_TRUE(box->getChecked());
    key(SDLK_RETURN, '\r');
    EXPECT_FALSE(box->getChecked());
    send(joyButtonEvent(SDL_JOYBUTTONDOWN, 2, 0));
    EXPECT_TRUE(box->getChecked());
    // "trigger" set both, "triggerOff" overrode one of them.
    EXPECT_EQ(fired(), (std::vector<int>{3, 4, 3}));
    EXPECT_EQ(callback.confirms, 7);

    moveTo(box);
    button(SDL_MOUSEBUTTONDOWN, box);
    EXPECT_TRUE(box->getState().down);
    button(SDL_MOUSEBUTTONUP, box);
    EXPECT_FALSE(box->getChecked());
    EXPECT_EQ(fired(), (std::vector<int>{4}));
}

TEST_F(Widgets, TextFieldTakesLatin1CharactersUpToItsLimitAndRepeatsHeldKeys) {
    text->setFocused(true);
    send(keyEvent(SDL_KEYDOWN, SDLK_a, 'a'));
    EXPECT_EQ(text->getCaption(), "aba");
    frames(32, 10.0f);  // 320 ms: still one
    EXPECT_EQ(text->getCaption(), "aba");
    frames(1, 10.0f);  // 330 ms
    EXPECT_EQ(text->getCaption(), "abaa");
    send(keyEvent(SDL_KEYUP, SDLK_a));
    frames(10, 10.0f);
    EXPECT_EQ(text->getCaption(), "abaa");

    send(keyEvent(SDL_KEYDOWN, SDLK_WORLD_73, 0xE9));  // é from SDL's unicode field: one Latin-1 byte
    EXPECT_EQ(text->getCaption(), "abaa\xE9");
    send(keyEvent(SDL_KEYDOWN, SDLK_b, 'b'));  // full at five
    EXPECT_EQ(text->getCaption(), "abaa\xE9");
    frames(50, 10.0f);  // and nothing to repeat
    EXPECT_EQ(text->getCaption(), "abaa\xE9");

    // Held backspace empties the field and then stops.
    send(keyEvent(SDL_KEYDOWN, SDLK_BACKSPACE, 8));
    EXPECT_EQ(text->getCaption(), "abaa");
    frames(60, 10.0f);
    EXPECT_EQ(text->getCaption(), "");
    send(keyEvent(SDL_KEYUP, SDLK_BACKSPACE));
    send(keyEvent(SDL_KEYDOWN, SDLK_BACKSPACE, 8));  // on an empty field: nothing
    EXPECT_EQ(text->getCaption(), "");

    // Control characters, delete and the C1 range are no text; they are not swallowed either.
    for (Uint16 c : {1, 27, 127, 128, 150, 159, 256, 0x20AC}) {
        send(keyEvent(SDL_KEYDOWN, SDLK_UNKNOWN, c));
    }
    send(keyEvent(SDL_KEYDOWN, SDLK_SPACE, ' '));
    send(keyEvent(SDL_KEYDOWN, SDLK_UNKNOWN, 0xA0));  // no-break space, the first printable of the upper half
    send(keyEvent(SDL_KEYDOWN, SDLK_UNKNOWN, 0xFF));
    EXPECT_EQ(text->getCaption(), " \xA0\xFF");

    send(keyEvent(SDL_KEYDOWN, SDLK_RETURN, '\r'));
    EXPECT_EQ(fired(), (std::vector<int>{5}));
    EXPECT_EQ(callback.confirms, 0);  // a text field confirms by its trigger only
    send(keyEvent(SDL_KEYDOWN, SDLK_TAB, '\t'));  // Tab is no text: it moves the focus
    EXPECT_EQ(gui->getFocused(), ok);
    EXPECT_EQ(text->getCaption(), " \xA0\xFF");
}

TEST_F(Widgets, InputCaptorRecordsOneKeyButtonOrAxisThenSwallowsKeysUntilEnabled) {
    captor->setFocused(true);
    EXPECT_TRUE(captor->joyAxisMotion(&q, 0, 2, 0));  // centred: not captured
    EXPECT_TRUE(captor->getEnabled());
    send(keyEvent(SDL_KEYDOWN, SDLK_q, 'q'));
    EXPECT_EQ(captor->getKey(), SDLK_q);
    EXPECT_FALSE(captor->getEnabled());
    send(keyEvent(SDL_KEYDOWN, SDLK_TAB, '\t'));  // swallowed: the focus stays
    EXPECT_EQ(gui->getFocused(), captor);
    EXPECT_EQ(captor->getKey(), SDLK_q);

    captor->setEnabled(true);
    send(joyButtonEvent(SDL_JOYBUTTONDOWN, 1, 5));
    EXPECT_EQ(captor->getJoy(), 1);
    EXPECT_EQ(captor->getJoyButton(), 5);
    captor->setEnabled(true);
    send(joyAxisEvent(0, 3, -30000));
    EXPECT_EQ(captor->getJoy(), 0);
    EXPECT_EQ(captor->getJoyAxis(), 3);
    EXPECT_EQ(captor->getJoyAxisDirection(), -1);
    EXPECT_FALSE(captor->getEnabled());
    EXPECT_EQ(fired(), (std::vector<int>{6, 7, 8}));
    EXPECT_EQ(callback.confirms, 0);
}

TEST_F(Definitions, UnknownWidgetTypesAndStylesAreReportedAndTheRestWorks) {
    ASSERT_NE(load("<LabelStyle name=\"plain\"/>"
                   "<Slider_double name=\"odd\"/>"
                   "<Button name=\"go\" x=\"0\" y=\"0\" width=\"50\" height=\"20\" style=\"missing\" trigger=\"menu.t9\"/>"
                   "<Checkbox name=\"box\" style=\"plain\"/>"
                   "<DropdownList name=\"list\" style=\"plain\"><Item caption=\"only\"/></DropdownList>"
                   "<Textfield name=\"text\" style=\"gone\"/>"),
              nullptr);
    for (const char* line : {"Unknown GUI element \"Slider_double\" skipped.",
                             "Could not find matching style \"missing\" for \"go\".",
                             "Could not find matching style \"plain\" for \"box\".",  // a label style, not a checkbox style
                             "Could not find matching style for dropdown list \"list\".",
                             "Could not find matching style \"gone\" for \"text\"."}) {
        EXPECT_NE(log.find(line), std::string::npos) << line << "\n" << log;
    }
    EXPECT_EQ((*gui)["odd"], nullptr);
    auto* go = get<Button>("go");
    ASSERT_NE(go, nullptr);
    EXPECT_EQ(go->getStyle(), nullptr);
    go->setFocused(true);
    key(SDLK_RETURN, '\r');
    EXPECT_EQ(fired(), (std::vector<int>{9}));
    EXPECT_EQ(get<DropdownList>("list")->getCaption(), "only");
}
