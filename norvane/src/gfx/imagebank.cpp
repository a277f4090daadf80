#include "gfx/imagebank.h"

#include <iterator>

#include "debug/log.h"
#include "gfx/simpleimage.h"
#include "xml/xml.h"

namespace norvane {
namespace gfx {

namespace {
const char* const XML_IMAGES = "images";
const char* const XML_IMAGE = "image";
const char* const XML_LOOP = "loop";
const char* const XML_NAME = "name";
const char* const XML_FILENAME = "filename";
const char* const XML_HOT_X = "hotX";
const char* const XML_HOT_Y = "hotY";
const char* const XML_BITMASK_THRESHOLD = "bitmaskThreshold";
const char* const XML_CLAMP = "clamp";
const char* const XML_FILTER = "filter";
}  // namespace

const ImageResourceBankGenerator imageResourceBankGenerator;

BasicResourceBank* ImageResourceBankGenerator::generateBank(const std::string& type) const {
    return type == XML_IMAGES ? new ImageBank : nullptr;
}

std::string ImageBank::getNodeName() { return XML_IMAGES; }

int ImageBank::size() const { return static_cast<int>(resources.size()); }

void ImageBank::getFromNode(const Node* node, const std::string& dir) {
    // Shared by all image banks: a loop's body is read by a nested call.
    static xml::LoopList loops;
    for (const Node* child : node->children) {
        if (child->name == XML_LOOP) {
            xml::readLoop(child, loops, dbgImages, [&](const Node* body) { getFromNode(body, dir); });
            continue;
        }
        if (child->name != XML_IMAGE) continue;

        const std::string* filename = child->getAttribute(XML_FILENAME);
        std::string name = child->getAttribute(XML_NAME, std::string());
        if (!child->getAttribute(XML_NAME)) {
            debug::warning(dbgImages, "No name specified for image. Using filename.");
            if (filename) name = *filename;
        }
        if (!filename) {
            debug::error(dbgImages, "No filename specified for image \"%s\". Skipping entry.", name.c_str());
            continue;
        }
        name = xml::substitute(name, loops);
        auto* image = new SimpleImage(name, dir + xml::substitute(*filename, loops));
        image->setHotspot({child->getAttributeFloat(XML_HOT_X, image->getHotspot().x),
                           child->getAttributeFloat(XML_HOT_Y, image->getHotspot().y)});
        image->bitmaskThreshold = child->getAttributeFloat(XML_BITMASK_THRESHOLD, image->bitmaskThreshold);
        image->clamp = child->getAttributeBool(XML_CLAMP, image->clamp);
        image->filter = imageFilter(child->getAttribute(XML_FILTER, STR_IMAGEFILTER[image->filter]));
        add(name, image);
    }
}

void ImageBank::refresh(RefreshingBankHandler* handler) {
    for (auto it = resources.begin(); it != resources.end(); ++it) {
        it->second->refresh(std::next(it) == resources.end());
        if (handler) handler->elementRefreshed();
    }
}

void ImageBank::release() {
    for (auto& entry : resources) entry.second->release(false);
}

void ImageBank::reload() {
    for (auto it = resources.begin(); it != resources.end(); ++it) {
        it->second->reload(std::next(it) == resources.end());
    }
}

}  // namespace gfx
}  // namespace norvane
