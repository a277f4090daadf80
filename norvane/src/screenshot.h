#ifndef NORVANE_SCREENSHOT_H
#define NORVANE_SCREENSHOT_H

struct SDL_Surface;

namespace norvane {

// Both throw their failure as text; a failed save leaves an existing file untouched.
// The whole frame buffer as an RGBA PNG, top row first.
void saveScreenshot(const char* filename);
// Any surface of 1 to 4 bytes per pixel as an 8-bit RGBA PNG (Adam7 interlaced).
void savePng(SDL_Surface* surface, const char* filename);

}  // namespace norvane

#endif
