#pragma once

#include <portaudio.h>

#include <functional>
#include <string>
#include <vector>

/// A link-time double of PortAudio: a test program that links zanto_fake_portaudio gets these definitions in
/// place of the library's. There is one input device, and the test plays its part:
///
///     fakeportaudio::reset();
///     fakeportaudio::state().startError = paHostApiNotFound;   // or let everything succeed
///     input.startRecording();
///     fakeportaudio::deliver(block);
namespace fakeportaudio {

struct State {
    PaDeviceIndex defaultInputDevice = 3;    ///< paNoDevice for a machine without a microphone
    bool deviceInfoKnown = true;             ///< false: the device exists and nothing is known of it
    std::vector<std::string> inputs;         ///< names by device number; empty for the default device alone
    PaTime defaultLowInputLatency = 0.0125;  ///< seconds

    PaError formatError = paNoError;  ///< of asking whether a format is supported
    PaError openError = paNoError;
    PaError startError = paNoError;
    PaError stopError = paNoError;
    PaError closeError = paNoError;

    std::vector<std::string> calls;  ///< names of the functions called, device queries and texts left out
    int sessions = 0;                ///< initialised and not yet terminated
    std::function<void()> opening;   ///< run inside Pa_OpenStream

    PaStreamParameters inputParameters{};  ///< of the last stream that was asked for, as all that follow
    bool hasOutput = false;
    double sampleRate = 0.0;
    unsigned long framesPerBuffer = 0;
    PaStreamFlags flags = 0;
    PaStreamCallback* callback = nullptr;
    void* userData = nullptr;
};

State& state();

/// Forgets everything; every call succeeds again.
void reset();

/// Hands `frameCount` frames to the stream's callback, from the calling thread; gives the callback's result.
int deliver(const float* block, unsigned long frameCount);

/// What Pa_GetErrorText says here: never what the library says, so that a test sees where a text comes from.
std::string textOf(PaError error);

}  // namespace fakeportaudio
