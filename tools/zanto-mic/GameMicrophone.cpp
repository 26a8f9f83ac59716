#include "tools/zanto-mic/GameMicrophone.h"

#include <chrono>
#include <thread>

#include "audio/RingBuffer.h"
#include "tools/common/QuietStream.h"

namespace {

constexpr int standardError = 2;

// Whether the device can record as the game's input does; the error when not.
PaError tryGameFormat(PaDeviceIndex device) {
    PaDeviceInfo const* const info = Pa_GetDeviceInfo(device);
    if (info == nullptr) {
        return paInvalidDevice;
    }
    PaStreamParameters const parameters{device, 1, paFloat32, info->defaultLowInputLatency, nullptr};
    return Pa_IsFormatSupported(&parameters, nullptr, Microphone::gameRate);
}

// The input prints its error as words only; which one that is decides on the advice.
PaError errorIn(std::string const& printed) {
    for (PaError const error :
         {paDeviceUnavailable, paInvalidSampleRate, paInvalidChannelCount, paInvalidDevice}) {
        if (printed.find(Pa_GetErrorText(error)) != std::string::npos) {
            return error;
        }
    }
    return paUnanticipatedHostError;
}

}  // namespace

std::string adviceFor(PaError error) {
    switch (error) {
        case paInvalidDevice:
            return "There is no microphone here. Plug one in, or choose an input in the system's sound "
                   "settings;\n"
                   "zanto-mic list shows what there is.";
        case paDeviceUnavailable:
            return "The microphone is busy: another program holds it. Close that one, or let a sound server\n"
                   "(PulseAudio or PipeWire) share the microphone between programs.";
        case paInvalidSampleRate:
            return "The microphone refuses 48000 samples a second, which the game needs. Let a sound server\n"
                   "(PulseAudio or PipeWire) convert its rate, or choose another input in the sound "
                   "settings.";
        case paInvalidChannelCount:
            return "The microphone does not record on a single channel. Let a sound server (PulseAudio or "
                   "PipeWire)\n"
                   "mix its channels, or choose another input in the sound settings.";
        default:
            return std::string("The sound system could not start recording: ") + Pa_GetErrorText(error) +
                   ".\nLook at the input in the system's sound settings, and try again.";
    }
}

GameMicrophone::GameMicrophone() {
    QuietDescriptor const quiet(standardError);
    isSessionOpen = Pa_Initialize() == paNoError;
}

GameMicrophone::~GameMicrophone() {
    QuietDescriptor const quiet(standardError);
    input.reset();
    if (isSessionOpen) {
        Pa_Terminate();
    }
}

std::vector<InputDevice> GameMicrophone::devices() {
    QuietDescriptor const quiet(standardError);
    std::vector<InputDevice> found;
    for (PaDeviceIndex device = 0; isSessionOpen && device < Pa_GetDeviceCount(); ++device) {
        PaDeviceInfo const* const info = Pa_GetDeviceInfo(device);
        if (info == nullptr || info->maxInputChannels < 1) {
            continue;
        }
        PaHostApiInfo const* const host = Pa_GetHostApiInfo(info->hostApi);
        PaError const error = tryGameFormat(device);
        found.push_back({device, info->name, host == nullptr ? "" : host->name, info->maxInputChannels,
                         info->defaultSampleRate, error == paNoError ? "" : Pa_GetErrorText(error),
                         device == Pa_GetDefaultInputDevice()});
    }
    return found;
}

bool GameMicrophone::start(std::string& problem) {
    QuietDescriptor const quiet(standardError);
    PaDeviceIndex const device = isSessionOpen ? Pa_GetDefaultInputDevice() : paNoDevice;
    if (PaError const error = tryGameFormat(device); error != paNoError) {
        problem = adviceFor(error);
        return false;
    }
    QuietErrors const printed;
    input = AudioInput::New();
    if (!input->startRecording()) {
        problem = adviceFor(errorIn(printed.text()));
        return false;
    }
    return true;
}

boost::shared_ptr<RingBuffer const> GameMicrophone::samples() {
    return input ? input->getRingBuffer() : boost::shared_ptr<RingBuffer const>();
}

void GameMicrophone::wait(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
