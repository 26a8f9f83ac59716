#include <portaudio.h>

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

// Preloaded in front of PortAudio: the environment variable SOUND_FAULT picks a failure.

namespace {

bool fault(const char* name) {
    const char* const chosen = std::getenv("SOUND_FAULT");
    return chosen != nullptr && std::strcmp(chosen, name) == 0;
}

template <class Function>
Function next(Function, const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

/// No back-end starts, so the library knows no device.
PaError Pa_Initialize() {
    return fault("no back-end") ? static_cast<PaError>(paInternalError)
                                : next(Pa_Initialize, "Pa_Initialize")();
}

/// A device that takes no 48000 Hz, or not one channel.
PaError Pa_OpenStream(PaStream** stream, const PaStreamParameters* input, const PaStreamParameters* output,
                      double sampleRate, unsigned long framesPerBuffer, PaStreamFlags flags,
                      PaStreamCallback* callback, void* userData) {
    if (fault("rate refused") && sampleRate == 48000.0) {
        return paInvalidSampleRate;
    }
    if (fault("mono refused") && input->channelCount == 1) {
        return paInvalidChannelCount;
    }
    return next(Pa_OpenStream, "Pa_OpenStream")(stream, input, output, sampleRate, framesPerBuffer, flags,
                                                callback, userData);
}

/// A device that opens and then does not start.
PaError Pa_StartStream(PaStream* stream) {
    return fault("start refused") ? static_cast<PaError>(paDeviceUnavailable)
                                  : next(Pa_StartStream, "Pa_StartStream")(stream);
}

}  // extern "C"
