#ifndef NORVANE_GFX_IMAGEBANK_H
#define NORVANE_GFX_IMAGEBANK_H

#include <string>

#include "gfx/image.h"
#include "resources/manager.h"

namespace norvane {
namespace gfx {

// The named images of one "images" element. Reading the definition only creates the images;
// refresh() or an ImageLoader brings them onto the graphics card later, in name order.
// Destroying the bank destroys its images but not their textures: release() first.
class ImageBank : public NamedResourceBank<ImageResource>, public RefreshingBank {
public:
    std::string getNodeName() override;
    void getFromNode(const Node* node, const std::string& dir) override;
    int size() const override;
    // A file that cannot be loaded throws its text; the images after it stay unloaded.
    void refresh(RefreshingBankHandler* handler) override;
    void release();
    void reload();  // throws as refresh() does

    ImageFilter maxFilter = FILTER_LINEAR;  // images asking for more get mipmaps but this filter
};

class ImageResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;
};

extern const ImageResourceBankGenerator imageResourceBankGenerator;

}  // namespace gfx
}  // namespace norvane

#endif
