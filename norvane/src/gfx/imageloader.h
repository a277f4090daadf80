#ifndef NORVANE_GFX_IMAGELOADER_H
#define NORVANE_GFX_IMAGELOADER_H

#include <map>
#include <string>

#include "background.h"

namespace norvane {
namespace gfx {

class ImageBank;
class ImageResource;

// Loads one bank's images a few per frame, in name order, as a background task. A single image is
// never split, so a call overruns its deadline by at most the one image started before it. A file
// that will not load throws its text out of perform and the loader stays at that image. The bank
// must outlive the loader and keep its images meanwhile.
class ImageLoader : public BackgroundTask {
public:
    ImageLoader(ImageBank* bank, BackgroundTaskCallback* callback);
    void perform(unsigned int deadline) override;

private:
    ImageBank* bank;
    std::map<std::string, ImageResource*>::iterator position;  // the next image to load
};

}  // namespace gfx
}  // namespace norvane

#endif
