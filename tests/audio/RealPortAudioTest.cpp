#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <portaudio.h>
#ifdef ZANTO_LEAKS_ARE_WATCHED
#include <sanitizer/lsan_interface.h>
#endif

#include <iostream>
#include <sstream>

#include "audio/PortAudioInput.h"

namespace {

/// The libraries of the sound servers that PortAudio looks for are unloaded with what they asked for still in
/// their hands. What the game itself asks for is watched where PortAudio is a double.
class LeaksOfOthers {
public:
    LeaksOfOthers() {
#ifdef ZANTO_LEAKS_ARE_WATCHED
        __lsan_disable();
#endif
    }
    ~LeaksOfOthers() {
#ifdef ZANTO_LEAKS_ARE_WATCHED
        __lsan_enable();
#endif
    }
    LeaksOfOthers(const LeaksOfOthers&) = delete;
    LeaksOfOthers& operator=(const LeaksOfOthers&) = delete;
};

}  // namespace

TEST(RealPortAudio, RecordsOrSaysWhyNotInTheLibrarysOwnText) {
    const LeaksOfOthers ignored;
    PortAudioInput input;
    const bool hasMicrophone = Pa_GetDefaultInputDevice() != paNoDevice;
    // Not the whole of standard error: the library's back-ends write there about the devices they miss.
    std::ostringstream said;
    std::streambuf* const old = std::cerr.rdbuf(said.rdbuf());
    const bool started = input.startRecording();
    std::cerr.rdbuf(old);

    if (!hasMicrophone) {
        EXPECT_FALSE(started);
        EXPECT_FALSE(input.isRecording());
        EXPECT_EQ(said.str(), "Open stream failed:Invalid device\n");
    } else if (started) {
        EXPECT_TRUE(input.isRecording());
        EXPECT_EQ(said.str(), "");
    } else {
        // Somebody else has it, or it has another rate.
        EXPECT_THAT(said.str(), testing::MatchesRegex("(Open|Start) stream failed:.+\n"));
    }
}
