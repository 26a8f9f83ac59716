#include "tools/zanto-mic/GameMicrophone.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/make_shared.hpp>
#include <chrono>
#include <iostream>
#include <thread>

#include "audio/PortAudioInput.h"
#include "audio/QuietDescriptor.h"
#include "audio/RingBuffer.h"
#include "platform/settings/Settings.h"
#include "tools/common/Command.h"
#include "tools/common/QuietStream.h"
#include "tools/zanto-mic/DefaultSource.h"

namespace {

constexpr int standardError = 2;

// Whether the device can record as the game's input does; the error when not.
PaError tryGameFormat(PaDeviceIndex device) {
    const PaDeviceInfo* const info = Pa_GetDeviceInfo(device);
    if (info == nullptr) {
        return paInvalidDevice;
    }
    const PaStreamParameters parameters{device, 1, paFloat32, info->defaultLowInputLatency, nullptr};
    return Pa_IsFormatSupported(&parameters, nullptr, Microphone::gameRate);
}

// What the game says of an input that the player named and that is not there.
void tell(const std::string& words) {
    if (!words.empty()) {
        std::cerr << words << std::endl;
    }
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

GameMicrophone::GameMicrophone() : silenced(settings::text("ZANTO_AUDIO_LOG") == "1" ? -1 : standardError) {
    const QuietDescriptor quiet(silenced);
    isSessionOpen = Pa_Initialize() == paNoError;
}

GameMicrophone::~GameMicrophone() {
    const QuietDescriptor quiet(silenced);
    input.reset();
    if (isSessionOpen) {
        Pa_Terminate();
    }
}

InputChoice GameMicrophone::choice() const {
    return isSessionOpen ? InputChoice::make() : InputChoice{paNoDevice, ""};
}

std::vector<InputDevice> GameMicrophone::devices() {
    std::vector<InputDevice> found;
    const InputChoice wanted = choice();
    tell(wanted.complaint);
    const QuietDescriptor quiet(silenced);
    for (PaDeviceIndex device = 0; isSessionOpen && device < Pa_GetDeviceCount(); ++device) {
        const PaDeviceInfo* const info = Pa_GetDeviceInfo(device);
        if (info == nullptr || info->maxInputChannels < 1) {
            continue;
        }
        const PaHostApiInfo* const host = Pa_GetHostApiInfo(info->hostApi);
        const PaError error = tryGameFormat(device);
        found.push_back({device, info->name, host == nullptr ? "" : host->name, info->maxInputChannels,
                         info->defaultSampleRate, error == paNoError ? "" : Pa_GetErrorText(error),
                         device == wanted.device});
    }
    return found;
}

bool GameMicrophone::isMonitor() {
    const QuietDescriptor quiet(silenced);
    const PaDeviceInfo* const info = Pa_GetDeviceInfo(choice().device);
    if (info == nullptr) {
        return false;
    }
    const std::string name = info->name;
    // By these names ALSA knows whatever is the sound server's default.
    const bool isServers = name == "default" || name == "pulse" || name == "pipewire";
    return isServers ? isDefaultSourceAMonitor() : boost::icontains(name, "monitor");
}

void GameMicrophone::start() {
    std::string told;
    {
        const QuietDescriptor quiet(silenced);
        if (const PaError error = tryGameFormat(choice().device); error != paNoError) {
            throw Failure(adviceFor(error));
        }
        const QuietErrors printed;
        const auto opened = boost::make_shared<PortAudioInput>();
        input = opened;
        if (!opened->startRecording()) {
            throw Failure(adviceFor(opened->lastError()));
        }
        told = printed.text();
    }
    tell(told);
}

boost::shared_ptr<const RingBuffer> GameMicrophone::samples() {
    return input ? input->getRingBuffer() : boost::shared_ptr<const RingBuffer>();
}

void GameMicrophone::wait(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}
