#include "audio/core.h"

#include <AL/al.h>
#include <AL/alc.h>

#include "audio/resources.h"
#include "debug/log.h"

namespace norvane {
namespace audio {

bool enabled = true;
ALCdevice* device = nullptr;
Context* context = nullptr;
AudioResourceBankGenerator resourceBankGenerator;

namespace {
const char* const BANK_SAMPLES = "samples";
}  // namespace

void init(const std::string& deviceName, int frequency) {
    context = nullptr;
    if (enabled) {
        alcGetError(nullptr);
        device = alcOpenDevice(deviceName.empty() ? nullptr : deviceName.c_str());
        if (!device) throw getALCErrorString(alcGetError(nullptr));
        debug::debug(dbgAudio, "Initialized OpenAL device \"%s\".", alcGetString(device, ALC_DEVICE_SPECIFIER));
    }
    new Context(frequency);  // registers itself as `context`
}

void cleanUp() {
    delete context;
    context = nullptr;
    if (device) {
        alcCloseDevice(device);
        device = nullptr;
    }
}

Context::Context(int frequency) {
    if (context) throw std::string("Cannot create more than one audio context.");
    if (enabled) {
        alcGetError(device);
        const ALCint attributes[] = {ALC_FREQUENCY, frequency, 0};
        ALCcontext* created = alcCreateContext(device, attributes);
        if (!created) throw getALCErrorString(alcGetError(device));
        handle = created;
        alcMakeContextCurrent(created);
        const ALCenum error = alcGetError(device);
        if (error != ALC_NO_ERROR) debug::warning(dbgAudio, "%s", getALCErrorString(error).c_str());
    }
    context = this;
    const ALfloat orientation[] = {0.0f, 0.0f, -1.0f, 0.0f, 1.0f, 0.0f};
    alListener3f(AL_POSITION, 0.0f, 0.0f, 0.0f);
    alListenerfv(AL_ORIENTATION, orientation);
}

Context::~Context() {
    if (!handle) return;
    ALCcontext* own = static_cast<ALCcontext*>(handle);
    if (alcGetCurrentContext() == own) alcMakeContextCurrent(nullptr);
    alcDestroyContext(own);
}

BasicResourceBank* AudioResourceBankGenerator::generateBank(const std::string& type) const {
    return type == BANK_SAMPLES ? new SampleBank() : nullptr;
}

std::string getALErrorString(int code) {
    switch (code) {
        case AL_NO_ERROR: return "AL_NO_ERROR";
        case AL_INVALID_NAME: return "AL_INVALID_NAME";
        case AL_INVALID_VALUE: return "AL_INVALID_VALUE";
        case AL_OUT_OF_MEMORY: return "AL_OUT_OF_MEMORY";
        default: return "(Unknown AL error)";
    }
}

std::string getALCErrorString(int code) {
    switch (code) {
        case ALC_NO_ERROR: return "AL_NO_ERROR";
        case ALC_INVALID_DEVICE: return "ALC_INVALID_DEVICE";
        case ALC_INVALID_CONTEXT: return "ALC_INVALID_CONTEXT";
        case ALC_INVALID_ENUM: return "ALC_INVALID_ENUM";
        case ALC_INVALID_VALUE: return "ALC_INVALID_VALUE";
        case ALC_OUT_OF_MEMORY: return "ALC_OUT_OF_MEMORY";
        default: return "(Unknown ALC error)";
    }
}

}  // namespace audio
}  // namespace norvane
