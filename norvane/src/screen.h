#ifndef NORVANE_SCREEN_H
#define NORVANE_SCREEN_H

#include <SDL/SDL.h>

#include <utility>
#include <vector>

#include "gfx/color.h"
#include "math/geometry.h"

namespace norvane {

// The whole window; currentViewport (norvane.h) points here after the first setResolution.
extern basic_Rect<float> vpScreen;

using VideoMode = std::pair<int, int>;  // width, height

// Opens or reopens the OpenGL window with bpp / 4 bits per channel. Throws SDL's error text.
void setResolution(int width, int height, int bpp, bool fullscreen, int depthBits, int stencilBits);
// Throws "Could not toggle fullscreen mode:" followed by SDL's text.
void toggleFullscreen();
void setFullscreen(bool on);
// Full-screen modes in SDL's order; empty when SDL lists none or allows any size.
std::vector<VideoMode> getVideoModes();
void setWindowCaption(const char* text);
void setWindowIcon(const char* filename);
void showCursor(bool on);
// Takes effect at the next setResolution.
void enableDoubleBuffer(bool on);
// The raw value of pixel (x, y); lock the surface first where SDL asks for it.
Uint32 getPixel(SDL_Surface* surface, int x, int y);

void setClearColor(const Color& color);
void clearScreen();  // colour and depth
void flipScreen();

// The model-view "cursor" that drawing starts from.
void resetCursor();
void moveCursor(const basic_Vector2D<float>& offset);
void moveCursor(const basic_Vector3D<float>& offset);
void rotateCursor(float angleDegrees, const basic_Vector3D<float>& axis);

}  // namespace norvane

#endif
