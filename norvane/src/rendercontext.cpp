#include "rendercontext.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include "norvane.h"

namespace norvane {

RenderContext* currentRenderContext = nullptr;

namespace {

GLenum hintMode(short hint) { return hint == 0 ? GL_DONT_CARE : hint < 0 ? GL_FASTEST : GL_NICEST; }

void enable(GLenum capability, bool on) {
    if (on) glEnable(capability);
    else glDisable(capability);
}

}  // namespace

void RenderContext::apply() {
    currentRenderContext = this;
    glPolygonMode(GL_FRONT_AND_BACK, wireframe ? GL_LINE : GL_FILL);
    glShadeModel(smoothShading != 0 ? GL_SMOOTH : GL_FLAT);
    glHint(GL_FOG_HINT, hintMode(fogHint));
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, hintMode(perspectiveHint));
    glHint(GL_POINT_SMOOTH_HINT, hintMode(pointSmoothHint));
    glHint(GL_POLYGON_SMOOTH_HINT, hintMode(polygonSmoothHint));
    if (lighting) {
        glEnable(GL_LIGHTING);
        glLightModelf(GL_LIGHT_MODEL_LOCAL_VIEWER, 1.0f);
        glLightModeli(GL_LIGHT_MODEL_COLOR_CONTROL, separateSpecular > 0 ? GL_SEPARATE_SPECULAR_COLOR : GL_SINGLE_COLOR);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient.data());
    } else {
        glDisable(GL_LIGHTING);
    }
}

RenderContext2D::RenderContext2D() {
    if (currentViewport) size = {currentViewport->width, currentViewport->height};
}

void RenderContext2D::apply() {
    RenderContext::apply();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluOrtho2D(0.0, size.x, 0.0, size.y);
    glMatrixMode(GL_MODELVIEW);
    glDisable(GL_DEPTH_TEST);
    enable(GL_BLEND, blending);
    if (blending) setBlendMode(blendMode);
    glDisable(GL_NORMALIZE);
    glDisable(GL_CULL_FACE);
    glDisable(GL_FOG);
}

void RenderContext3D::apply() {
    RenderContext::apply();
    glClearDepth(clearDepth);
    enable(GL_DEPTH_TEST, depthTest);
    glDisable(GL_BLEND);
    glEnable(GL_NORMALIZE);
    glCullFace(GL_BACK);
    glEnable(GL_CULL_FACE);
    if (fogMode == 0) {
        glDisable(GL_FOG);
        return;
    }
    glFogi(GL_FOG_MODE, fogMode == 1 ? GL_LINEAR : fogMode == 2 ? GL_EXP : GL_EXP2);
    glFogf(GL_FOG_START, fogStart);
    glFogf(GL_FOG_END, fogEnd);
    glFogf(GL_FOG_DENSITY, fogDensity);
    glFogfv(GL_FOG_COLOR, fogColor.data());
    glHint(GL_FOG_HINT, hintMode(fogQuality));
    glEnable(GL_FOG);
}

}  // namespace norvane
