#include "gfx/textureimage.h"

#include <GL/gl.h>

#include <algorithm>

namespace norvane {
namespace gfx {

namespace {

const GLbitfield DRAW_ATTRIBUTES = GL_CURRENT_BIT | GL_PIXEL_MODE_BIT | GL_LIGHTING_BIT | GL_FOG_BIT |
                                   GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT | GL_VIEWPORT_BIT | GL_TRANSFORM_BIT;

void corner(float s, float t, float x, float y) {
    glTexCoord2f(s, t);
    glVertex2f(x, y);
}

}  // namespace

SingleTextureImage::SingleTextureImage() = default;

SingleTextureImage::SingleTextureImage(const std::string& name, const std::string& filename)
    : ImageResource(name, filename) {}

bool SingleTextureImage::beginDraw(BlendMode mode) const {
    if (textureName == 0) return false;
    glPushAttrib(DRAW_ATTRIBUTES);
    if (mode != BLEND_DEFAULT) setBlendMode(mode);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, textureName);
    return true;
}

void SingleTextureImage::draw(const basic_Vector2D<float>& position, BlendMode mode) const {
    if (width <= 0 || height <= 0 || !beginDraw(mode)) return;
    const bool whole = visibleBox.width <= 0 || visibleBox.height <= 0;
    const basic_Rect<int> box = whole ? basic_Rect<int>{0, 0, width, height} : visibleBox;
    const float w = static_cast<float>(width), h = static_cast<float>(height);
    const float l = getLeftTexCoord(), r = getRightTexCoord(), u = getUpperTexCoord(), b = getLowerTexCoord();
    const float boxLeft = static_cast<float>(box.x), boxRight = static_cast<float>(box.x + box.width);
    const float boxTop = static_cast<float>(box.y), boxBottom = static_cast<float>(box.y + box.height);
    const float s0 = l + (r - l) * boxLeft / w, s1 = l + (r - l) * boxRight / w;
    const float t0 = u + (b - u) * boxTop / h, t1 = u + (b - u) * boxBottom / h;
    const float x = position.x - hotspot.x, y = position.y + hotspot.y;
    glBegin(GL_QUADS);
    corner(s0, t1, x + boxLeft, y + h - boxBottom);
    corner(s0, t0, x + boxLeft, y + h - boxTop);
    corner(s1, t0, x + boxRight, y + h - boxTop);
    corner(s1, t1, x + boxRight, y + h - boxBottom);
    glEnd();
    glPopAttrib();
}

void SingleTextureImage::drawStretched(const basic_Rect<float>& rect, BlendMode mode) const {
    if (!beginDraw(mode)) return;
    const float l = getLeftTexCoord(), r = getRightTexCoord(), u = getUpperTexCoord(), b = getLowerTexCoord();
    glBegin(GL_QUADS);
    corner(l, u, rect.x, rect.y + rect.height);
    corner(l, b, rect.x, rect.y);
    corner(r, b, rect.x + rect.width, rect.y);
    corner(r, u, rect.x + rect.width, rect.y + rect.height);
    glEnd();
    glPopAttrib();
}

void SingleTextureImage::draw(const basic_Rect<float>& rect, BlendMode mode) const {
    if (!beginDraw(mode)) return;
    const float x = rect.x, y = rect.y, w = rect.width, h = rect.height;
    glBegin(GL_QUADS);
    if (textureWidth == width && textureHeight == height) {
        // No padding: the texture itself repeats.
        const float s = w / static_cast<float>(textureWidth), t = h / static_cast<float>(textureHeight);
        corner(0.0f, 0.0f, x, y + h);
        corner(0.0f, t, x, y);
        corner(s, t, x + w, y);
        corner(s, 0.0f, x + w, y + h);
    } else {
        const float l = getLeftTexCoord(), r = getRightTexCoord(), u = getUpperTexCoord(), b = getLowerTexCoord();
        const float tileW = static_cast<float>(width), tileH = static_cast<float>(height);
        for (float top = y + h; top > y; top -= tileH) {
            const float rowH = std::min(tileH, top - y);
            const float lower = b * rowH / tileH;
            for (float left = x; left < x + w; left += tileW) {
                const float columnW = std::min(tileW, x + w - left);
                const float right = r * columnW / tileW;
                corner(l, u, left, top);
                corner(l, lower, left, top - rowH);
                corner(right, lower, left + columnW, top - rowH);
                corner(right, u, left + columnW, top);
            }
        }
    }
    glEnd();
    glPopAttrib();
}

}  // namespace gfx
}  // namespace norvane

