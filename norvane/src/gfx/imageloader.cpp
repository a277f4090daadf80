#include "gfx/imageloader.h"

#include <SDL/SDL.h>

#include <iterator>

#include "gfx/imagebank.h"

namespace norvane {
namespace gfx {

ImageLoader::ImageLoader(ImageBank* bank, BackgroundTaskCallback* callback)
    : BackgroundTask(callback), bank(bank), position(bank->resources.begin()) {
    progressTotal = static_cast<unsigned int>(bank->size());
}

void ImageLoader::perform(unsigned int deadline) {
    const auto end = bank->resources.end();
    while (position != end) {
        if (SDL_GetTicks() >= deadline) return;
        position->second->refresh(std::next(position) == end);  // a broken file throws to the caller
        ++position;
        ++progressDone;
    }
    if (!finished) finish();
}

}  // namespace gfx
}  // namespace norvane
