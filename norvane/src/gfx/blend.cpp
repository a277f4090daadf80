#include "gfx/blend.h"

#include <GL/gl.h>

#include <cassert>

namespace norvane {

void setBlendMode(BlendMode mode) {
    switch (mode) {
        case BLEND_DEFAULT:
        case BLEND_ALPHA: glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA); break;
        case BLEND_ADDITIVE: glBlendFunc(GL_SRC_ALPHA, GL_ONE); break;
        default: assert(!"unknown blend mode");
    }
}

}  // namespace norvane
