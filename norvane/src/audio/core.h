#ifndef NORVANE_AUDIO_CORE_H
#define NORVANE_AUDIO_CORE_H

#include <string>

#include "resources/manager.h"

namespace norvane {
namespace audio {

// The one OpenAL context; the listener stands at the origin facing -z with +y up.
class Context {
public:
    explicit Context(int frequency);  // throws the ALC error name, or when a context exists already
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context();

    void perform(float) {}

private:
    void* handle = nullptr;  // the ALCcontext; null while audio is disabled
};

class AudioResourceBankGenerator : public ResourceBankGenerator {
public:
    BasicResourceBank* generateBank(const std::string& type) const override;  // "samples"
};

extern bool enabled;  // false runs without sound: no device, no context, nothing loaded
extern Context* context;
extern AudioResourceBankGenerator resourceBankGenerator;

// Opens the named device (the default one for an empty name) and creates the context.
// Throws the ALC error name, such as "ALC_INVALID_VALUE", when there is no device.
void init(const std::string& deviceName, int frequency);
void cleanUp();

std::string getALErrorString(int code);
std::string getALCErrorString(int code);

}  // namespace audio
}  // namespace norvane

#endif
