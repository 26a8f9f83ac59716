#include "tests/support/FakePortAudio.h"

namespace fakeportaudio {

State& state() {
    static State instance;
    return instance;
}

void reset() {
    state() = State();
}

int deliver(const float* block, unsigned long frameCount) {
    const PaStreamCallbackTimeInfo timeInfo{};
    return state().callback(block, nullptr, frameCount, &timeInfo, 0, state().userData);
}

std::string textOf(PaError error) {
    return "fake text of " + std::to_string(error);
}

namespace {

/// The only stream; what a failed opening leaves behind points here too.
int theStream = 0;

PaError noted(const char* call, PaError result) {
    state().calls.emplace_back(call);
    return result;
}

}  // namespace

}  // namespace fakeportaudio

using fakeportaudio::noted;
using fakeportaudio::state;

extern "C" {

PaError Pa_Initialize() {
    ++state().sessions;
    return noted("Pa_Initialize", paNoError);
}

PaError Pa_Terminate() {
    --state().sessions;
    return noted("Pa_Terminate", paNoError);
}

PaDeviceIndex Pa_GetDefaultInputDevice() {
    return state().defaultInputDevice;
}

const PaDeviceInfo* Pa_GetDeviceInfo(PaDeviceIndex device) {
    static PaDeviceInfo info{};
    const std::vector<std::string>& names = state().inputs;
    const bool named = device >= 0 && device < Pa_GetDeviceCount() && !names.empty();
    info.name = named ? names[static_cast<std::size_t>(device)].c_str() : "fake microphone";
    info.maxInputChannels = 2;
    info.defaultSampleRate = 44100.0;
    info.defaultLowInputLatency = state().defaultLowInputLatency;
    const bool isDefault = device >= 0 && device == state().defaultInputDevice;
    return (named || isDefault) && state().deviceInfoKnown ? &info : nullptr;
}

PaDeviceIndex Pa_GetDeviceCount() {
    return state().inputs.empty() ? state().defaultInputDevice + 1
                                  : static_cast<PaDeviceIndex>(state().inputs.size());
}

const PaHostApiInfo* Pa_GetHostApiInfo(PaHostApiIndex) {
    static PaHostApiInfo info{};
    info.name = "fake host";
    return &info;
}

PaError Pa_IsFormatSupported(const PaStreamParameters* input, const PaStreamParameters*, double sampleRate) {
    state().inputParameters = *input;
    state().sampleRate = sampleRate;
    return state().formatError;
}

PaError Pa_OpenStream(PaStream** stream, const PaStreamParameters* input, const PaStreamParameters* output,
                      double sampleRate, unsigned long framesPerBuffer, PaStreamFlags flags,
                      PaStreamCallback* callback, void* userData) {
    state().inputParameters = *input;
    state().hasOutput = output != nullptr;
    state().sampleRate = sampleRate;
    state().framesPerBuffer = framesPerBuffer;
    state().flags = flags;
    state().callback = callback;
    state().userData = userData;
    // The pointer is not valid after a failure, but it need not be null.
    *stream = &fakeportaudio::theStream;
    if (state().opening) {
        state().opening();
    }
    return noted("Pa_OpenStream", state().openError);
}

PaError Pa_StartStream(PaStream*) {
    return noted("Pa_StartStream", state().startError);
}

PaError Pa_StopStream(PaStream*) {
    return noted("Pa_StopStream", state().stopError);
}

PaError Pa_AbortStream(PaStream*) {
    return noted("Pa_AbortStream", paNoError);
}

PaError Pa_CloseStream(PaStream*) {
    return noted("Pa_CloseStream", state().closeError);
}

const char* Pa_GetErrorText(PaError error) {
    static std::string text;
    text = fakeportaudio::textOf(error);
    return text.c_str();
}

}  // extern "C"
