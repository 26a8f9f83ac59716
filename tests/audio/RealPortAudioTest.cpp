#include <gtest/gtest.h>
#include <portaudio.h>

#include <iostream>
#include <sstream>

#include "audio/PortAudioInput.h"

TEST(RealPortAudio, MachineWithoutAMicrophoneGivesTheLibrarysOwnText) {
    PortAudioInput input;
    if (Pa_GetDefaultInputDevice() != paNoDevice) {
        GTEST_SKIP() << "this machine has a microphone";
    }
    // Not the whole of standard error: the library's back-ends write there about the devices they miss.
    std::ostringstream said;
    std::streambuf* const old = std::cerr.rdbuf(said.rdbuf());
    bool const started = input.startRecording();
    std::cerr.rdbuf(old);

    EXPECT_FALSE(started);
    EXPECT_FALSE(input.isRecording());
    EXPECT_EQ(said.str(), "Open stream failed:Invalid device\n");
}
