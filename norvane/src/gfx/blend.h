#ifndef NORVANE_GFX_BLEND_H
#define NORVANE_GFX_BLEND_H

namespace norvane {

enum BlendMode {
    BLEND_DEFAULT = 0,  // image and sprite drawing keep the current blend function; set, it is alpha
    BLEND_ALPHA = 1,
    BLEND_ADDITIVE = 2,
};

// Sets the blend function only; blending itself is switched by the render context.
void setBlendMode(BlendMode mode);

}  // namespace norvane

#endif
