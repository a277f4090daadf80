#include "screen.h"

#include <GL/gl.h>
#include <SDL/SDL_image.h>

#include <cstring>
#include <string>

#include "debug/log.h"
#include "norvane.h"

namespace norvane {

basic_Rect<float> vpScreen;

namespace {
bool doubleBuffer = true;  // handed to SDL in setResolution, where SDL's video device is sure to exist
}

void setResolution(int width, int height, int bpp, bool isFullscreen, int depthBits, int stencilBits) {
    // SDL 1.2 dereferences its video device in SDL_GL_SetAttribute without checking.
    if (!SDL_WasInit(SDL_INIT_VIDEO) && SDL_InitSubSystem(SDL_INIT_VIDEO) < 0) throw std::string(SDL_GetError());
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, bpp / 4);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, bpp / 4);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, bpp / 4);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, bpp / 4);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, doubleBuffer ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, depthBits);
    SDL_GL_SetAttribute(SDL_GL_STENCIL_SIZE, stencilBits);

    screen = SDL_SetVideoMode(width, height, bpp, SDL_OPENGL | (isFullscreen ? SDL_FULLSCREEN : 0));
    if (!screen) throw std::string(SDL_GetError());

    const GLubyte* version = glGetString(GL_VERSION);
    debug::info(dbgCore, "Norvane is now using OpenGL version \"%s\" at %dx%dx%d.",
                version ? reinterpret_cast<const char*>(version) : "", width, height, bpp);
    vpScreen = {0.0f, 0.0f, static_cast<float>(width), static_cast<float>(height)};
    currentViewport = &vpScreen;
    glViewport(0, 0, width, height);
    fullscreen = isFullscreen;
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
}

void toggleFullscreen() {
    if (!screen || !SDL_WM_ToggleFullScreen(screen)) {
        throw std::string("Could not toggle fullscreen mode:") + SDL_GetError();
    }
    fullscreen = !fullscreen;
}

void setFullscreen(bool on) {
    if (fullscreen != on) toggleFullscreen();
}

std::vector<VideoMode> getVideoModes() {
    std::vector<VideoMode> modes;
    SDL_Rect** list = SDL_ListModes(nullptr, SDL_FULLSCREEN);
    if (list == reinterpret_cast<SDL_Rect**>(-1)) {
        debug::warning(dbgCore, "Unrestricted modes not yet handled correctly!");
        return modes;
    }
    for (; list && *list; ++list) modes.emplace_back((*list)->w, (*list)->h);
    return modes;
}

void setWindowCaption(const char* text) { SDL_WM_SetCaption(text, text); }

void setWindowIcon(const char* filename) {
    SDL_Surface* icon = IMG_Load(filename);
    if (!icon) {
        debug::warning(dbgCore, "Could not load window icon \"%s\": %s", filename, IMG_GetError());
        return;
    }
    SDL_WM_SetIcon(icon, nullptr);
    SDL_FreeSurface(icon);
}

void showCursor(bool on) { SDL_ShowCursor(on ? SDL_ENABLE : SDL_DISABLE); }

void enableDoubleBuffer(bool on) { doubleBuffer = on; }

Uint32 getPixel(SDL_Surface* surface, int x, int y) {
    const int bytes = surface->format->BytesPerPixel;
    const Uint8* p = static_cast<const Uint8*>(surface->pixels) + y * surface->pitch + x * bytes;
    switch (bytes) {
        case 1: return *p;
        case 2: {
            Uint16 value;
            std::memcpy(&value, p, sizeof value);
            return value;
        }
        case 3: return p[0] | p[1] << 8 | p[2] << 16;
        case 4: return p[0] | p[1] << 8 | p[2] << 16 | static_cast<Uint32>(p[3]) << 24;
        default: debug::critical(dbgCore, "Unknown surface format (bpp=%d).", bytes); return 0;
    }
}

void setClearColor(const Color& color) { glClearColor(color.red, color.green, color.blue, color.alpha); }

void clearScreen() { glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT); }

void flipScreen() { SDL_GL_SwapBuffers(); }

void resetCursor() { glLoadIdentity(); }

void moveCursor(const basic_Vector2D<float>& offset) { glTranslatef(offset.x, offset.y, 0.0f); }

void moveCursor(const basic_Vector3D<float>& offset) { glTranslatef(offset.x, offset.y, offset.z); }

void rotateCursor(float angleDegrees, const basic_Vector3D<float>& axis) {
    glRotatef(angleDegrees, axis.x, axis.y, axis.z);
}

}  // namespace norvane
