// recordCallback runs on PortAudio's real-time thread. It must not allocate, lock, print, throw, or wait for
// anything: it copies one shared pointer and calls RingBuffer::append once. A block that does not fit is
// dropped without a message, because that thread must not print.

#include "audio/PortAudioInput.h"

#include <unistd.h>

#include <iostream>
#include <optional>

#include "audio/InputChoice.h"
#include "audio/QuietDescriptor.h"
#include "audio/RingBuffer.h"
#include "platform/settings/Settings.h"

namespace {

constexpr double patienceSeconds = 2.0;  // without a block, before the device is opened again
constexpr double retrySeconds = 3.0;     // between two such openings
// Without a block, a dozen of 1024 samples: stopping such a stream could take for ever.
constexpr double deadAfterSeconds = 0.25;

/// Drops what the sound systems below PortAudio print on standard error, while it lives.
class QuietBackEnd {
public:
    explicit QuietBackEnd(bool showsLog) {
        if (!showsLog) {
            quiet.emplace(STDERR_FILENO);
        }
    }

private:
    std::optional<QuietDescriptor> quiet;
};

}  // namespace

boost::shared_ptr<AudioInput> AudioInput::New() {
    return boost::shared_ptr<AudioInput>(new PortAudioInput);
}

PortAudioInput::PortAudioInput() : showsLog(settings::choice("ZANTO_AUDIO_LOG", {"0", "1"}) == 1) {
    {
        const QuietBackEnd quiet(showsLog);
        Pa_Initialize();
    }
    const InputChoice choice = InputChoice::make();
    if (!choice.complaint.empty()) {
        std::cerr << choice.complaint << std::endl;
    }
    device = choice.device;
}

PortAudioInput::~PortAudioInput() {
    // Stopping waits for the stream's thread, and the thread of a stream that died may wait for ever.
    if (watch.stillSeconds() > deadAfterSeconds) {
        abandonStream();
    }
    if (PortAudioInput::isRecording()) {
        PortAudioInput::stopRecording();
    }
    const QuietBackEnd quiet(showsLog);
    Pa_Terminate();
}

bool PortAudioInput::isRecording() {
    return stream != nullptr;
}

bool PortAudioInput::startRecording() {
    if (stream != nullptr) {
        return false;
    }
    if (const PaError error = openStream(); error != paNoError) {
        return fail("Open stream failed", error);
    }
    if (const PaError error = startStream(); error != paNoError) {
        return fail("Start stream failed", error);
    }
    return true;
}

// Prints one line for a failed call and gives the result of the operation that made it.
bool PortAudioInput::fail(const char* message, PaError error) {
    failure = error;
    std::cerr << message << ":" << Pa_GetErrorText(error) << std::endl;
    return false;
}

PaError PortAudioInput::openStream() {
    // Null for paNoDevice too, which is how a machine without a microphone shows.
    const PaDeviceInfo* const info = Pa_GetDeviceInfo(device);
    if (info == nullptr) {
        return paInvalidDevice;
    }
    const PaStreamParameters inputParameters{device, stereo ? 2 : 1, paFloat32, info->defaultLowInputLatency,
                                             nullptr};
    // Before the stream is opened, so that the callback never meets an empty pointer.
    ringBuffer.reset(new RingBuffer(framesPerBuffer * blocksKept));
    watch.restart(ringBuffer->position());

    const QuietBackEnd quiet(showsLog);
    const PaError error = Pa_OpenStream(&stream, &inputParameters, nullptr, sampleRate, framesPerBuffer,
                                        paClipOff | paDitherOff, recordCallback, this);
    if (error != paNoError) {
        stream = nullptr;
    }
    return error;
}

PaError PortAudioInput::startStream() {
    const QuietBackEnd quiet(showsLog);
    return Pa_StartStream(stream);
}

void PortAudioInput::abandonStream() {
    if (stream == nullptr) {
        return;
    }
    const QuietBackEnd quiet(showsLog);
    Pa_AbortStream(stream);
    Pa_CloseStream(stream);
    stream = nullptr;
}

void PortAudioInput::tend(double nowSeconds) {
    if (stream == nullptr && !lost) {
        return;
    }
    if (watch.observe(ringBuffer->position(), nowSeconds)) {
        if (lost) {
            std::cerr << "The microphone is heard again." << std::endl;
        }
        lost = false;
        return;
    }
    if (watch.stillSeconds() < (lost ? retrySeconds : patienceSeconds)) {
        return;
    }
    if (!lost) {
        std::cerr << "No sound arrives from the microphone. The game tries to open it anew." << std::endl;
    }
    lost = true;
    abandonStream();
    if (openStream() == paNoError && startStream() != paNoError) {
        abandonStream();
    }
}

bool PortAudioInput::stopRecording() {
    lost = false;
    if (stream == nullptr) {
        return false;
    }
    if (const PaError error = Pa_StopStream(stream); error != paNoError) {
        return fail("Stop stream failed", error);
    }
    const PaError error = Pa_CloseStream(stream);
    stream = nullptr;
    // A failed close is reported with the message of a failed start, on purpose.
    return error == paNoError || fail("Start stream failed", error);
}

int PortAudioInput::recordCallback(const void* input, void* /*output*/, unsigned long frameCount,
                                   const PaStreamCallbackTimeInfo* /*timeInfo*/,
                                   unsigned long /*statusFlags*/, void* userData) noexcept {
    const boost::shared_ptr<RingBuffer> ring = static_cast<PortAudioInput*>(userData)->ringBuffer;
    if (input != nullptr) {
        ring->append(static_cast<const float*>(input), static_cast<int>(frameCount));
    }
    return paContinue;
}
