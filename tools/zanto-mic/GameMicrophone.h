#pragma once

#include <portaudio.h>

#include "audio/AudioInput.h"
#include "audio/InputChoice.h"
#include "tools/zanto-mic/Microphone.h"

/// The real microphone: PortAudio's devices, and the game's own audio input. What sound systems print while
/// they look for devices is dropped unless ZANTO_AUDIO_LOG is 1.
class GameMicrophone : public Microphone {
public:
    GameMicrophone();
    ~GameMicrophone() override;

    std::vector<InputDevice> devices() override;
    bool isMonitor() override;
    void start() override;
    boost::shared_ptr<const RingBuffer> samples() override;
    void wait(double seconds) override;

private:
    InputChoice choice() const;

    int silenced;  ///< the descriptor that sound systems may not write to; -1 when they may
    boost::shared_ptr<AudioInput> input;
    bool isSessionOpen = false;  ///< a session of PortAudio's besides the input's own
};

/// What an error of PortAudio's means for a player, and what to do about it.
std::string adviceFor(PaError error);
