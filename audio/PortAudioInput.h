#pragma once

#include <portaudio.h>

#include "audio/AudioInput.h"
#include "audio/StreamWatch.h"

/// The default input device, through PortAudio, or the one that the environment variable ZANTO_INPUT names. A
/// name that fits no input, or several, is told on standard error.
///
/// One instance holds one PortAudio session from construction to destruction. Its callback runs on
/// PortAudio's thread and touches nothing but the ring buffer.
///
/// What sound systems print about themselves is dropped unless the environment variable ZANTO_AUDIO_LOG is 1.
class PortAudioInput : public AudioInput {
public:
    PortAudioInput();

    /// True from a stream's opening to its closing, also when the opened stream could not be started.
    bool isRecording() override;
    bool startRecording() override;
    bool stopRecording() override;
    ~PortAudioInput() override;

    /// Opens the device again when no block has arrived for two seconds, and every three seconds from then on
    /// until blocks arrive: a sound server may have been restarted. Until then the ring buffer holds silence.
    /// Says on standard error when the sound is lost and when it is back. A device that comes back under
    /// another number is not found.
    void tend(double nowSeconds) override;

    /// A PaStreamCallback whose `userData` is the PortAudioInput. Appends the first `frameCount` floats of
    /// `input`, whatever the channel count, and always gives paContinue. A null `input` appends nothing.
    static int recordCallback(const void* input, void* output, unsigned long frameCount,
                              const PaStreamCallbackTimeInfo* timeInfo, unsigned long statusFlags,
                              void* userData) noexcept;

    /// Of the start or stop that failed last; paNoError before.
    PaError lastError() const { return failure; }

private:
    bool fail(const char* message, PaError error);
    PaError openStream();
    PaError startStream();
    void abandonStream();

    /// Null while idle.
    PaStream* stream = nullptr;
    PaDeviceIndex device = 0;
    StreamWatch watch;
    bool lost = false;    ///< from the first reopening to the next block
    const bool showsLog;  ///< what the sound systems print
    PaError failure = paNoError;
};
