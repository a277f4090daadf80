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

basic_Rect<float> SingleTextureImage::visiblePart() const {
    if (visibleBox.width <= 0 || visibleBox.height <= 0) {
        return {0.0f, 0.0f, static_cast<float>(width), static_cast<float>(height)};
    }
    return {static_cast<float>(visibleBox.x), static_cast<float>(visibleBox.y), static_cast<float>(visibleBox.width),
            static_cast<float>(visibleBox.height)};
}

void SingleTextureImage::quad(float left, float top, const basic_Rect<float>& part) const {
    const float w = static_cast<float>(width), h = static_cast<float>(height);
    const float l = getLeftTexCoord(), r = getRightTexCoord(), u = getUpperTexCoord(), b = getLowerTexCoord();
    const float x0 = part.x, x1 = part.x + part.width, y0 = part.y, y1 = part.y + part.height;
    const float s0 = l + (r - l) * x0 / w, s1 = l + (r - l) * x1 / w;
    const float t0 = u + (b - u) * y0 / h, t1 = u + (b - u) * y1 / h;
    corner(s0, t0, left + x0, top - y0);
    corner(s0, t1, left + x0, top - y1);
    corner(s1, t1, left + x1, top - y1);
    corner(s1, t0, left + x1, top - y0);
}

void SingleTextureImage::draw(const basic_Vector2D<float>& position, BlendMode mode) const {
    if (width <= 0 || height <= 0 || !beginDraw(mode)) return;
    glBegin(GL_QUADS);
    quad(position.x - hotspot.x, position.y + hotspot.y + static_cast<float>(height), visiblePart());
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
    } else if (width > 0 && height > 0) {
        // Each tile shows the upper-left part of the image that fits, and of that the visible part.
        const basic_Rect<float> visible = visiblePart();
        const float tileW = static_cast<float>(width), tileH = static_cast<float>(height);
        for (float top = y + h; top > y; top -= tileH) {
            const float rowH = std::min(tileH, top - y);
            const float upper = visible.y, lower = std::min(rowH, visible.y + visible.height);
            if (lower <= upper) continue;
            for (float left = x; left < x + w; left += tileW) {
                const float columnW = std::min(tileW, x + w - left);
                const float leftmost = visible.x, rightmost = std::min(columnW, visible.x + visible.width);
                if (rightmost > leftmost) quad(left, top, {leftmost, upper, rightmost - leftmost, lower - upper});
            }
        }
    }
    glEnd();
    glPopAttrib();
}

}  // namespace gfx
}  // namespace norvane

