#include <boost/shared_ptr.hpp>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <string>

#include "app/Win.h"
#include "audio/AudioInput.h"
#include "audio/QuietDescriptor.h"
#include "audio/RingBuffer.h"

namespace {
constexpr int statusNoAudioInput = -1;
constexpr int statusNotRecording = -2;
}  // namespace

/// Starts recording, opens the game window and plays until the window is closed.
/// The first argument, if any, names a song file to start with; the others are ignored.
/// Ends with 0, with 255 when there is no audio input, and with 254 when recording cannot start.
int main(int argc, char** argv) {
    fillStandardDescriptors();
    // The diagnostic lines may go to a pipe whose reader leaves; that must not end the game.
#ifdef SIGPIPE
    std::signal(SIGPIPE, SIG_IGN);
#endif

    std::puts("main::Creating AudioInput");
    const boost::shared_ptr<AudioInput> audioInput = AudioInput::New();
    if (!audioInput) {
        std::cerr << "Cannot create audioInput." << std::endl;
        return statusNoAudioInput;
    }

    std::puts("main::start recording.");
    if (!audioInput->startRecording()) {
        std::cerr << "Cannot start recording." << std::endl;
        return statusNotRecording;
    }

    const boost::shared_ptr<RingBuffer> ringBuffer = audioInput->getRingBuffer();
    if (!ringBuffer) {
        std::cerr << "Cannot get pointer to audio buffer." << std::endl;
        return statusNotRecording;
    }

    std::puts("main::creating window");
    Win window(audioInput);
    if (argc > 1) {
        window.playSong(std::string(argv[1]));
    }
    window.loop(true);
    return 0;
}
