#ifndef NORVANE_GFX_SIMPLEIMAGE_H
#define NORVANE_GFX_SIMPLEIMAGE_H

#include "gfx/textureimage.h"

namespace norvane {
namespace gfx {

// An image loaded from its own file with SDL_image. Files should hold 24-bit RGB or 32-bit RGBA;
// anything else is converted to RGBA first.
class SimpleImage : public SingleTextureImage {
public:
    SimpleImage();
    SimpleImage(const std::string& name, const std::string& filename);

    void load(bool last, bool withBitmask) override;
    void refresh(bool last) override;
    void release(bool last) override;
    void setFilter(ImageFilter filter) override;
};

}  // namespace gfx
}  // namespace norvane

#endif
