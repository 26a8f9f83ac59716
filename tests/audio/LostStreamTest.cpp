#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "audio/PortAudioInput.h"
#include "audio/RingBuffer.h"
#include "tests/support/FakePortAudio.h"

using fakeportaudio::deliver;
using fakeportaudio::state;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

const char* const lostLine = "No sound arrives from the microphone. The game tries to open it anew.\n";
const char* const backLine = "The microphone is heard again.\n";

/// An input that records, looked after a hundred times a second. Its clock does not begin at 0.
class LostStreamTest : public testing::Test {
protected:
    LostStreamTest() {
        fakeportaudio::reset();
        CaptureStderr();
        input.reset(new PortAudioInput);
        input->startRecording();
        pass(1.0, true);
    }

    void pass(double seconds, bool blocksArrive = false) {
        for (const double end = now + seconds; now < end; now += 0.01) {
            if (blocksArrive) {
                deliver(block.data(), block.size());
            }
            input->tend(now);
        }
    }

    long count(const char* call) { return std::count(state().calls.begin(), state().calls.end(), call); }

    double now = 12345.0;  ///< seconds
    const std::vector<float> block = std::vector<float>(1024, 0.5f);
    boost::shared_ptr<PortAudioInput> input;
};

}  // namespace

TEST_F(LostStreamTest, AShortSilenceOfTheDeviceIsBorne) {
    pass(1.9);
    pass(0.1, true);
    pass(1.9);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST_F(LostStreamTest, AfterTwoSecondsItIsAbandonedAndOpenedAnewWithSilence) {
    pass(2.1);
    EXPECT_THAT(state().calls,
                testing::ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream", "Pa_AbortStream",
                                     "Pa_CloseStream", "Pa_OpenStream", "Pa_StartStream"));
    std::vector<float> newest(4096, 1.0f);
    input->getRingBuffer()->copyLatest(newest);
    EXPECT_THAT(newest, testing::Each(0.0f));
    EXPECT_EQ(GetCapturedStderr(), lostLine);
}

TEST_F(LostStreamTest, EachChangeIsToldOnceHoweverLongItTakes) {
    state().openError = paDeviceUnavailable;
    pass(60.0);
    EXPECT_EQ(count("Pa_OpenStream"), 1 + 20);
    EXPECT_FALSE(input->isRecording());
    state().openError = paNoError;
    state().startError = paDeviceUnavailable;
    pass(6.0);
    EXPECT_FALSE(input->isRecording());
    state().startError = paNoError;
    pass(3.0);
    pass(1.0, true);
    EXPECT_TRUE(input->isRecording());
    EXPECT_EQ(GetCapturedStderr(), std::string(lostLine) + backLine);
}

TEST_F(LostStreamTest, ItsOwnPauseIsNotTakenForTheStreams) {
    now += 3600.0;
    pass(1.5);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST_F(LostStreamTest, WhatWasStoppedStaysStopped) {
    EXPECT_TRUE(input->stopRecording());
    pass(10.0);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST_F(LostStreamTest, ADeadStreamIsNotWaitedForAtTheEnd) {
    pass(0.5);
    input.reset();
    EXPECT_EQ(count("Pa_StopStream"), 0);
    EXPECT_EQ(count("Pa_AbortStream"), 1);
    EXPECT_EQ(state().calls.back(), "Pa_Terminate");
    EXPECT_EQ(GetCapturedStderr(), "");
}
