#include "tools/zanto-mic/GameMicrophone.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

#include "audio/RingBuffer.h"
#include "tests/support/FakePortAudio.h"

namespace {

using fakeportaudio::state;
using testing::HasSubstr;

class GameMicrophoneTest : public testing::Test {
protected:
    GameMicrophoneTest() { fakeportaudio::reset(); }

    std::string refusal() {
        GameMicrophone microphone;
        std::string problem;
        EXPECT_FALSE(microphone.start(problem));
        return problem;
    }
};

}  // namespace

TEST_F(GameMicrophoneTest, recordsAsTheGameDoes) {
    GameMicrophone microphone;
    std::string problem;
    EXPECT_FALSE(microphone.samples());
    ASSERT_TRUE(microphone.start(problem)) << problem;
    EXPECT_EQ(state().sampleRate, 48000.0);
    EXPECT_EQ(state().inputParameters.channelCount, 1);
    std::vector<float> const block(1024, 0.5f);
    fakeportaudio::deliver(block.data(), 1024);
    std::vector<float> newest(4);
    microphone.samples()->copyLatest(newest);
    EXPECT_EQ(newest, std::vector<float>(4, 0.5f));
}

TEST_F(GameMicrophoneTest, listsInputDevices) {
    GameMicrophone microphone;
    std::vector<InputDevice> devices = microphone.devices();
    ASSERT_EQ(devices.size(), 1u);
    EXPECT_EQ(devices[0].number, 3);
    EXPECT_EQ(devices[0].name, "fake microphone");
    EXPECT_EQ(devices[0].host, "fake host");
    EXPECT_EQ(devices[0].channels, 2);
    EXPECT_EQ(devices[0].usualRate, 44100.0);
    EXPECT_EQ(devices[0].atGameRate, "");
    EXPECT_TRUE(devices[0].isDefault);
    state().formatError = paInvalidSampleRate;
    EXPECT_EQ(microphone.devices().at(0).atGameRate, fakeportaudio::textOf(paInvalidSampleRate));
}

TEST_F(GameMicrophoneTest, noDeviceSaysSo) {
    state().defaultInputDevice = paNoDevice;
    EXPECT_TRUE(GameMicrophone().devices().empty());
    EXPECT_THAT(refusal(), HasSubstr("There is no microphone here."));
}

TEST_F(GameMicrophoneTest, aRefusedRateSaysSo) {
    state().formatError = paInvalidSampleRate;
    EXPECT_THAT(refusal(), HasSubstr("refuses 48000 samples a second"));
}

TEST_F(GameMicrophoneTest, aBusyDeviceSaysSoHoweverLateItShows) {
    state().formatError = paDeviceUnavailable;
    EXPECT_THAT(refusal(), HasSubstr("The microphone is busy"));
    state().formatError = paNoError;
    state().openError = paDeviceUnavailable;
    EXPECT_THAT(refusal(), HasSubstr("The microphone is busy"));
    state().openError = paNoError;
    state().startError = paDeviceUnavailable;
    EXPECT_THAT(refusal(), HasSubstr("The microphone is busy"));
}

TEST_F(GameMicrophoneTest, otherErrorsAreGivenInPortAudiosWords) {
    state().openError = paInsufficientMemory;
    EXPECT_THAT(refusal(), HasSubstr("could not start recording"));
    state().formatError = paInternalError;
    EXPECT_THAT(refusal(), HasSubstr(fakeportaudio::textOf(paInternalError)));
}

TEST_F(GameMicrophoneTest, everySessionIsClosed) {
    {
        GameMicrophone microphone;
        std::string problem;
        microphone.start(problem);
        EXPECT_EQ(state().sessions, 2);
    }
    EXPECT_EQ(state().sessions, 0);
}
