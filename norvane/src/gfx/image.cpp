#include "gfx/image.h"

#include "gfx/bitmask.h"
#include "gfx/imagebank.h"

namespace norvane {
namespace gfx {

const char* const STR_IMAGEFILTER[] = {"none", "linear", "bilinear", "trilinear"};

ImageFilter imageFilter(const std::string& word) {
    for (int i = FILTER_NONE; i <= FILTER_TRILINEAR; ++i) {
        if (word == STR_IMAGEFILTER[i]) return static_cast<ImageFilter>(i);
    }
    return FILTER_LINEAR;
}

void Image::perform(float) {}

ImageResource::ImageResource() = default;

ImageResource::ImageResource(const std::string& resourceName, const std::string& filename) : filename(filename) {
    name = resourceName;
}

ImageResource::~ImageResource() { delete bitmask; }

void ImageResource::release(bool) {}

void ImageResource::reload(bool last) { load(last, bitmask == nullptr); }

void ImageResource::createBitmask(SDL_Surface* surface, bool last) {
    if (bitmaskThreshold < 0.0f) return;
    delete bitmask;
    bitmask = new Bitmask(surface, bitmaskThreshold, !last);
    outerBoundingBox = bitmask->getOuterBoundingBox();
    innerBoundingBox = bitmask->getInnerBoundingBox();
}

}  // namespace gfx
}  // namespace norvane
