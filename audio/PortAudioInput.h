#pragma once

#include <portaudio.h>

#include "audio/AudioInput.h"

/// The default input device, through PortAudio.
///
/// One instance holds one PortAudio session from construction to destruction. Its callback runs on
/// PortAudio's thread and touches nothing but the ring buffer.
class PortAudioInput : public AudioInput {
public:
    PortAudioInput();

    /// True from a stream's opening to its closing, also when the opened stream could not be started.
    bool isRecording() override;
    bool startRecording() override;
    bool stopRecording() override;
    ~PortAudioInput() override;

    /// A PaStreamCallback whose `userData` is the PortAudioInput. Appends the first `frameCount` floats of
    /// `input`, whatever the channel count, and always gives paContinue. A null `input` appends nothing.
    static int recordCallback(void const* input, void* output, unsigned long frameCount,
                              PaStreamCallbackTimeInfo const* timeInfo, unsigned long statusFlags,
                              void* userData) noexcept;

private:
    /// Null while idle.
    PaStream* stream = nullptr;
    PaDeviceIndex device = 0;
};
