#ifndef TESTS_SUPPORT_CURSOR_H
#define TESTS_SUPPORT_CURSOR_H

#include "sprites/sprites.h"

// A mouse cursor that draws nothing and counts its end: a GUI follows the mouse only while it has
// a cursor, and owns it.
class NullCursor : public norvane::sprites::Sprite {
public:
    explicit NullCursor(int* deleted = nullptr) : Sprite({0, 0}, true), deleted(deleted) {}
    ~NullCursor() override {
        if (deleted) ++*deleted;
    }
    void drawSelf() override {}

private:
    int* deleted;
};

#endif
