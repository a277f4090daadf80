#ifndef NORVANE_GFX_IMAGE_H
#define NORVANE_GFX_IMAGE_H

#include <string>

#include "gfx/blend.h"
#include "math/geometry.h"
#include "resources/manager.h"

struct SDL_Surface;

namespace norvane {
namespace gfx {

class Bitmask;
class ImageBank;

// Anything sprites can draw and collide: a still image, or an animated one showing its current
// frame. Drawing uses the 2D render context's units (y upward); boxes and bitmask are in the
// image's pixels (x right, y down from the top-left pixel).
class Image {
public:
    Image() = default;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    virtual ~Image() = default;

    virtual void perform(float ms);
    // The image's lower-left corner lands at (position.x - hotspot.x, position.y + hotspot.y).
    virtual void draw(const basic_Vector2D<float>& position, BlendMode mode) const = 0;
    // Tiles the image over `rect`, starting at its upper-left corner.
    virtual void draw(const basic_Rect<float>& rect, BlendMode mode) const = 0;
    virtual void drawStretched(const basic_Rect<float>& rect, BlendMode mode) const = 0;

    int getWidth() const { return width; }
    int getHeight() const { return height; }
    Bitmask* getBitmask() const { return bitmask; }
    const basic_Rect<int>& getOuterBoundingBox() const { return outerBoundingBox; }
    const basic_Rect<int>& getInnerBoundingBox() const { return innerBoundingBox; }
    void setHotspot(const basic_Vector2D<float>& spot) { hotspot = spot; }
    const basic_Vector2D<float>& getHotspot() const { return hotspot; }

protected:
    int width = 0;
    int height = 0;
    basic_Vector2D<float> hotspot;
    Bitmask* bitmask = nullptr;  // null: no pixel collision. Owned by ImageResource, not by Image
    basic_Rect<int> outerBoundingBox;
    basic_Rect<int> innerBoundingBox;
};

enum ImageFilter { FILTER_NONE = 0, FILTER_LINEAR = 1, FILTER_BILINEAR = 2, FILTER_TRILINEAR = 3 };

// XML words, indexed by value.
extern const char* const STR_IMAGEFILTER[];
// Exact words; anything else is FILTER_LINEAR.
ImageFilter imageFilter(const std::string& word);

// An image held in an image bank, loaded from a file. `last` marks the last image of a batch: only
// then may the bitmask builder free its working buffers.
class ImageResource : public NamedResource<ImageBank, std::string>, public Image {
public:
    ImageResource();
    ImageResource(const std::string& name, const std::string& filename);
    ~ImageResource() override;  // deletes the bitmask; owners release the texture first

    // (Re)creates the texture from the file; throws "Could not load ..." when the file won't do.
    virtual void load(bool last, bool withBitmask) = 0;
    // Loads if there is no texture yet, then applies the filter.
    virtual void refresh(bool last) = 0;
    virtual void release(bool last);
    // Applies `filter` to the texture, capped by the bank's maxFilter; the filter field stays.
    virtual void setFilter(ImageFilter filter) = 0;

    void reload(bool last);
    // Replaces the bitmask and both boxes from `surface`, unless the threshold is negative.
    void createBitmask(SDL_Surface* surface, bool last);

    const std::string& getFilename() const { return filename; }
    void setFilename(const std::string& file) { filename = file; }
    ImageFilter getFilter() const { return filter; }
    void setBitmaskThreshold(float threshold) { bitmaskThreshold = threshold; }
    float getBitmaskThreshold() const { return bitmaskThreshold; }
    void setClamp(bool on) { clamp = on; }
    bool getClamp() const { return clamp; }

protected:
    friend class ImageBank;  // sets the wanted filter while reading a definition

    std::string filename;
    float bitmaskThreshold = -1.0f;  // alpha 0..1; negative: no bitmask
    bool clamp = false;              // clamp texture coordinates to the edge instead of repeating
    ImageFilter filter = FILTER_LINEAR;
};

}  // namespace gfx
}  // namespace norvane

#endif
