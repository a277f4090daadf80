#ifndef NORVANE_GFX_TEXTUREIMAGE_H
#define NORVANE_GFX_TEXTUREIMAGE_H

#include "gfx/image.h"

namespace norvane {
namespace gfx {

// An image in the upper-left part of one power-of-two OpenGL texture. Draws nothing while it has
// no texture. Drawing keeps the attribute groups it touches except texturing and the blend
// function: GL_TEXTURE_2D stays enabled and `mode`, when not BLEND_DEFAULT, stays set.
class SingleTextureImage : public ImageResource {
public:
    SingleTextureImage();
    SingleTextureImage(const std::string& name, const std::string& filename);

    void draw(const basic_Vector2D<float>& position, BlendMode mode) const override;
    void draw(const basic_Rect<float>& rect, BlendMode mode) const override;
    void drawStretched(const basic_Rect<float>& rect, BlendMode mode) const override;

    unsigned int getTextureName() const { return textureName; }
    int getTextureWidth() const { return textureWidth; }
    int getTextureHeight() const { return textureHeight; }
    float getLeftTexCoord() const { return texCoordRect.x; }
    float getRightTexCoord() const { return texCoordRect.x + texCoordRect.width; }
    float getUpperTexCoord() const { return texCoordRect.y; }
    float getLowerTexCoord() const { return texCoordRect.y + texCoordRect.height; }
    const basic_Rect<float>& getTexCoordRect() const { return texCoordRect; }

protected:
    unsigned int textureName = 0;  // an OpenGL texture name; 0 while there is none
    basic_Rect<float> texCoordRect;  // the image's part of the texture; x and y stay 0
    int textureWidth = 0;
    int textureHeight = 0;
    // The part of the image that is not fully transparent, in its pixels (x right, y down); an
    // empty box stands for the whole image. Drawing at a position covers only this part: every
    // pixel a quad covers costs fill, drawn or not. Tiles are cut to it too.
    basic_Rect<int> visibleBox;

private:
    // Saves the state drawing changes and binds the texture; false when there is nothing to draw.
    bool beginDraw(BlendMode mode) const;
    basic_Rect<float> visiblePart() const;  // visibleBox, or the whole image
    // Inside glBegin(GL_QUADS): the image's pixels `part` (x right, y down) with the image's
    // upper-left corner at (left, top).
    void quad(float left, float top, const basic_Rect<float>& part) const;
};

}  // namespace gfx
}  // namespace norvane

#endif
