#include <portaudio.h>

// Preloaded in front of PortAudio: a device that opens and then refuses to start.
extern "C" PaError Pa_StartStream(PaStream* /*stream*/) {
    return paDeviceUnavailable;
}
