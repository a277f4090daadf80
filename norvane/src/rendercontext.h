#ifndef NORVANE_RENDERCONTEXT_H
#define NORVANE_RENDERCONTEXT_H

#include "gfx/blend.h"
#include "gfx/color.h"
#include "math/geometry.h"

namespace norvane {

// OpenGL state shared by 2D and 3D drawing; apply() re-establishes all of it. Hints: 0 don't care,
// negative fastest, positive nicest.
class RenderContext {
public:
    virtual ~RenderContext() = default;
    virtual void apply();

    bool wireframe = false;
    int smoothShading = 0;
    short fogHint = 0;
    short perspectiveHint = 0;
    short pointSmoothHint = 0;
    short polygonSmoothHint = 0;
    short separateSpecular = 0;  // read only with lighting on; above 0 for a separate specular colour
    bool lighting = false;
    Color ambient{0.2f, 0.2f, 0.2f, 0.1f};
};

// Orthographic: (0, 0) is the lower left of the viewport and `size` its upper right, y upwards.
class RenderContext2D : public RenderContext {
public:
    RenderContext2D();  // the size of currentViewport, or (0, 0) before the first setResolution
    explicit RenderContext2D(basic_Vector2D<float> size) : size(size) {}
    void apply() override;

    basic_Vector2D<float> size;
    bool blending = false;
    BlendMode blendMode = BLEND_DEFAULT;
};

// Sets no projection: the caller brings its own.
class RenderContext3D : public RenderContext {
public:
    void apply() override;

    bool depthTest = true;
    float clearDepth = 10000.0f;
    int fogMode = 0;  // 0 none, 1 linear, 2 exponential, any other squared exponential
    float fogStart = 0.0f;
    float fogEnd = 0.0f;
    float fogDensity = 0.0f;
    short fogQuality = 0;  // a hint value
    Color fogColor{0.0f, 0.0f, 0.0f, 0.0f};
};

extern RenderContext* currentRenderContext;  // the last one applied

}  // namespace norvane

#endif
