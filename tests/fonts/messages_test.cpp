#include "gfx/messages.h"

#include "gfx/fonts.h"
#include "support/window.h"

using namespace norvane::fonts;

// Writes down what it prints instead of drawing it.
struct Ledger : Font {
    unsigned char getHeight() override { return 10; }
    unsigned short getWidth(const char* text) override { return static_cast<unsigned short>(std::string(text).size()); }
    using Font::print;
    void print(const char* text) override { printed.push_back(text); }
    void release() override {}
    void load() override {}
    std::vector<std::string> printed;
};

struct Counted : Message {
    Counted(float time, int* destroyed) : Message("", time), destroyed(destroyed) {}
    ~Counted() override { ++*destroyed; }
    int* destroyed;
};

TEST(Messages, ExpireReplaceOrAccumulateAndBlink) {
    int destroyed = 0;
    Ledger fallback, own;
    Messages messages;
    messages.font = &fallback;
    messages += new Counted(1000, &destroyed);
    for (float ms : {999.5f, 0.5f}) messages.perform(ms);  // used up exactly
    EXPECT_TRUE(messages.messages.empty());
    messages += new Counted(100, &destroyed);
    auto* mine = new Counted(100, &destroyed);
    mine->font = &own;
    messages += mine;  // replaces the previous one
    EXPECT_TRUE(destroyed == 2 && mine->font == &own);
    messages.accumulate = true;
    messages += new Counted(300, &destroyed);
    const bool fallen = messages.messages.back()->font == &fallback;
    messages.perform(150);
    EXPECT_TRUE(fallen && messages.messages.size() == 1u && destroyed == 3);

    BlinkMessage same("x", 3000, 500, -1), uneven("x", 10000, 500, 250), still;  // off as long as on; all times 0
    std::string shown;
    for (int i = 0; i < 6; ++i)
        for (BlinkMessage* m : {&same, &uneven, &still}) m->perform(250), shown += m->visible ? '#' : '.';
    EXPECT_EQ(shown, "######..#.######.#");
    // Several cycles in one step: from the end of "off", four whole cycles, then 100 into "on" leave 400 of it.
    uneven.perform(4 * 750 + 100);
    EXPECT_TRUE(uneven.visible && uneven.phaseTime == 400.0f);
}

TEST_F(WindowTest, MessagesDrawOnlyWithAFontAndWhileVisible) {
    Ledger font;
    Messages messages;
    messages.accumulate = true;
    messages += new Message("no font", 100);  // neither its own nor a default: drawn as nothing
    messages.font = &font;
    messages += new Message("steady", 1000);
    auto* blinking = new BlinkMessage("blink", 1000, 100, 100);
    messages += blinking;
    for (float ms : {0.0f, 150.0f}) blinking->perform(ms), messages.draw();
    EXPECT_EQ(font.printed, (std::vector<std::string>{"steady", "blink", "steady"}));
}
