#include "gui/loaded.h"
#include "gui/standard.h"
#include "gui/text.h"
#include "support/cursor.h"

using namespace norvane;
using namespace norvane::gui;

struct ClickCounter : ClickEventHandler {
    void handleClickEvent(Component* c) override { clicked.push_back(c); }
    std::vector<Component*> clicked;
};

struct Widgets : LoadedGui {
    void SetUp() override {
        const std::string at = " x=\"10\" width=\"100\" height=\"20\" y=";
        ASSERT_NE(load("<Button name=\"ok\" trigger=\"menu.t1\"" + at + "\"400\"/><Button name=\"more\" repeat=\"true\""
                       " trigger=\"menu.t2\"" + at + "\"360\"/><Checkbox name=\"box\" trigger=\"menu.t3\" triggerOff=\"menu.t4\"" + at +
                       "\"320\"/><Textfield name=\"text\" caption=\"ab\" maxLength=\"5\" triggerConfirm=\"menu.t5\"" + at + "\"280\"/>"
                       "<InputCaptor name=\"captor\" triggerKey=\"menu.t6\" triggerJoyButton=\"menu.t7\" triggerJoyAxis=\"menu.t8\"/>"),
                  nullptr);
        ok = get<Button>("ok"), more = get<Button>("more"), box = get<Checkbox>("box"), text = get<Textfield>("text");
        ok->setOnClick(&counter);
        gui->setMouseCursor(new NullCursor);
    }
    void frames(int count, float ms = 10.0f) { for (int i = 0; i < count; ++i) gui->perform(&q, ms); }
    // A key press on what holds the focus, as the GUI hands it on: true when it was used.
    bool type(Uint16 unicode, SDLKey sym = SDLK_UNKNOWN) { return gui->getFocused()->keyDown(&q, sym, KMOD_NONE, unicode); }

    Button *ok, *more;
    Checkbox* box;
    Textfield* text;
    ClickCounter counter;
};

TEST_F(Widgets, ButtonsClickOnReleaseOverThemAndRepeatingOnesAlsoOnPressAndWhileHeld) {
    moveTo(ok);
    click(ok, true);
    moveTo(box);  // dragged off: the capture keeps the button, the focus goes to the GUI
    EXPECT_FALSE(ok->getState().down);
    click(box, false);
    moveTo(ok);
    click(ok, true);
    EXPECT_TRUE(fired().empty() && ok->getState().down && ok->getState().hot);  // not yet
    click(ok, false);
    click(ok, false, 5, 5, 3);  // other buttons do nothing
    EXPECT_TRUE(fired() == Codes{1} && counter.clicked == std::vector<Component*>{ok} && !gui->getMouseCaptured());

    moveTo(more);
    click(more, true);
    EXPECT_EQ(fired().size(), 1u);  // at once
    frames(29);                     // 290 ms
    EXPECT_TRUE(fired().empty());
    frames(11);  // 400 ms: at 300, 330, 360 and 390
    moveTo(ok);  // a repeating button stays down off the cursor
    EXPECT_TRUE(more->getState().down);
    click(more, false);
    frames(50);
    EXPECT_TRUE(fired().size() == 5u && callback.confirms == 7);
    gui->setKeyRepeat(100.0f, 0.0f);  // a zero step must not hang the catch-up loop
    moveTo(more);
    click(more, true);
    frames(1, 101.0f);
    EXPECT_GT(fired().size(), 1u);
}

TEST_F(Widgets, KeysAndJoystickButtonsClickButtonsAndCheckboxesAndOnlyWhatTheyUseIsConsumed) {
    ok->setFocused(true);
    // A button reads the character, a checkbox the key symbol: keypad Enter is no Return to it.
    EXPECT_TRUE(type(' ', SDLK_SPACE) && type('\r', SDLK_RETURN) && type('\r', SDLK_KP_ENTER));
    for (auto [joystick, button] : {std::pair{1, 0}, {0, 1}}) send(joyButtonEvent(joystick, button));  // only button 0 clicks
    EXPECT_EQ(fired(), (Codes{1, 1, 1, 1}));
    key(SDLK_DOWN);  // the arrows still navigate
    EXPECT_EQ(gui->getFocused(), more);
    box->setFocused(true);
    EXPECT_FALSE(type('\r', SDLK_KP_ENTER));
    EXPECT_TRUE(type(' ', SDLK_SPACE) && box->getChecked() && type('\r', SDLK_RETURN));
    for (auto [joystick, button] : {std::pair{2, 0}, {0, 3}}) send(joyButtonEvent(joystick, button));
    EXPECT_TRUE(box->getChecked());
    moveTo(box);
    for (bool down : {true, false}) click(box, down);
    EXPECT_TRUE(!box->getChecked() && callback.confirms == 8);
    EXPECT_EQ(fired(), (Codes{3, 4, 3, 4}));  // "trigger" set both, "triggerOff" overrode one of them
    EXPECT_EQ(behind.seen, (std::vector<int>{SDL_JOYBUTTONDOWN, SDL_KEYUP, SDL_JOYBUTTONDOWN}));
}

TEST_F(Widgets, TextFieldsTakeLatin1CharactersUpToTheirLimitAndInputCaptorsRecordOneInput) {
    text->setFocused(true);
    type('a', SDLK_a);
    frames(32);  // 320 ms: still one
    EXPECT_EQ(text->getCaption(), "aba");
    frames(1);  // 330 ms
    EXPECT_EQ(text->getCaption(), "abaa");
    send(keyEvent(SDLK_a, false));
    frames(10);
    type(0xE9, SDLK_WORLD_73);       // é from SDL's unicode field: one Latin-1 byte
    EXPECT_TRUE(type('b', SDLK_b));  // full at five: swallowed
    frames(50);                      // and nothing to repeat
    EXPECT_EQ(text->getCaption(), "abaa\xE9");
    EXPECT_TRUE(type(8, SDLK_BACKSPACE));  // held: empties the field and then stops
    frames(60);
    send(keyEvent(SDLK_BACKSPACE, false));
    EXPECT_TRUE(type(8, SDLK_BACKSPACE) && text->getCaption().empty());
    // Control characters, delete and the C1 range are no text; they are not swallowed either.
    for (Uint16 c : {1, 27, 31, 127, 128, 150, 159, 256, 0x20AC}) EXPECT_FALSE(type(c)) << c;
    for (Uint16 c : {32, 0xA0, 0xFF}) EXPECT_TRUE(type(c)) << c;  // from space and no-break space on
    EXPECT_TRUE(type('\r', SDLK_RETURN) && fired() == Codes{5} && callback.confirms == 0);  // it confirms by its trigger only
    type('\t', SDLK_TAB);  // Tab is no text: it moves the focus
    EXPECT_EQ(text->getCaption(), " \xA0\xFF");
    EXPECT_TRUE(gui->getFocused() == ok && behind.seen.empty());  // key releases are used too

    auto* captor = get<InputCaptor>("captor");
    captor->setFocused(true);
    EXPECT_TRUE(captor->joyAxisMotion(&q, 0, 2, 0));  // centred: not captured
    type('q', SDLK_q);
    EXPECT_TRUE(captor->getKey() == SDLK_q && type('\t', SDLK_TAB) && !captor->getEnabled());  // Tab swallowed
    EXPECT_EQ(gui->getFocused(), captor);
    captor->setEnabled(true);
    for (Uint8 button : {5, 6}) send(joyButtonEvent(1, button));
    EXPECT_EQ(captor->getJoy() * 10 + captor->getJoyButton(), 15);
    captor->setEnabled(true);
    send(joyAxisEvent(0, 3, -30000));
    EXPECT_EQ((std::vector<int>{captor->getJoy(), captor->getJoyAxis(), captor->getJoyAxisDirection(), captor->getEnabled()}),
              (std::vector<int>{0, 3, -1, false}));
    EXPECT_TRUE(fired() == (Codes{6, 7, 8}) && behind.seen.empty());
}
