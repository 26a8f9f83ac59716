// recordCallback runs on PortAudio's real-time thread. It must not allocate, lock, print, throw, or wait for
// anything: its whole work is one copy of a shared pointer and one RingBuffer::append. A block that does not
// fit is dropped in silence, because nobody on that thread may be told.

#include "audio/PortAudioInput.h"

#include <iostream>

#include "audio/RingBuffer.h"

namespace {

/// Also keeps the end of the store at the end of a block, so that no block is ever dropped.
constexpr unsigned int blocksKept = 20;

/// Prints one line for a failed call and gives the result of the operation that made it.
bool fail(char const* message, PaError error) {
    std::cerr << message << ":" << Pa_GetErrorText(error) << std::endl;
    return false;
}

}  // namespace

boost::shared_ptr<AudioInput> AudioInput::New() {
    return boost::shared_ptr<AudioInput>(new PortAudioInput);
}

PortAudioInput::PortAudioInput() {
    Pa_Initialize();
    device = Pa_GetDefaultInputDevice();
}

PortAudioInput::~PortAudioInput() {
    if (PortAudioInput::isRecording()) {
        PortAudioInput::stopRecording();
    }
    Pa_Terminate();
}

bool PortAudioInput::isRecording() {
    return stream != nullptr;
}

bool PortAudioInput::startRecording() {
    if (stream != nullptr) {
        return false;
    }
    // Null for paNoDevice too, which is how a machine without a microphone shows.
    PaDeviceInfo const* const info = Pa_GetDeviceInfo(device);
    if (info == nullptr) {
        return fail("Open stream failed", paInvalidDevice);
    }
    PaStreamParameters const inputParameters{device, stereo ? 2 : 1, paFloat32, info->defaultLowInputLatency,
                                             nullptr};
    // Before the stream is opened, so that the callback never meets an empty pointer.
    ringBuffer.reset(new RingBuffer(framesPerBuffer * blocksKept));

    if (PaError const error = Pa_OpenStream(&stream, &inputParameters, nullptr, sampleRate, framesPerBuffer,
                                            paClipOff | paDitherOff, recordCallback, this);
        error != paNoError) {
        stream = nullptr;
        return fail("Open stream failed", error);
    }
    if (PaError const error = Pa_StartStream(stream); error != paNoError) {
        return fail("Start stream failed", error);
    }
    return true;
}

bool PortAudioInput::stopRecording() {
    if (stream == nullptr) {
        return false;
    }
    if (PaError const error = Pa_StopStream(stream); error != paNoError) {
        return fail("Stop stream failed", error);
    }
    PaError const error = Pa_CloseStream(stream);
    stream = nullptr;
    // A failed close deliberately speaks with the words of a failed start.
    return error == paNoError || fail("Start stream failed", error);
}

int PortAudioInput::recordCallback(void const* input, void* /*output*/, unsigned long frameCount,
                                   PaStreamCallbackTimeInfo const* /*timeInfo*/,
                                   unsigned long /*statusFlags*/, void* userData) noexcept {
    boost::shared_ptr<RingBuffer> const ring = static_cast<PortAudioInput*>(userData)->ringBuffer;
    if (input != nullptr) {
        ring->append(static_cast<float const*>(input), static_cast<int>(frameCount));
    }
    return paContinue;
}
