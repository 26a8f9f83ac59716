#include <portaudio.h>

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>

// Preloaded in front of PortAudio: failures that no real machine brings about at will, picked by the
// environment variable SOUND_FAULT.

namespace {

bool fault(char const* name) {
    char const* const chosen = std::getenv("SOUND_FAULT");
    return chosen != nullptr && std::strcmp(chosen, name) == 0;
}

template <class Function>
Function next(Function, char const* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

/// No back-end could be set up; the library then knows no device, and says so to every question.
PaError Pa_Initialize() {
    return fault("no back-end") ? static_cast<PaError>(paInternalError)
                                : next(Pa_Initialize, "Pa_Initialize")();
}

/// A device that takes no 48000 Hz, or not one channel.
PaError Pa_OpenStream(PaStream** stream, PaStreamParameters const* input, PaStreamParameters const* output,
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

}  // extern "C"
