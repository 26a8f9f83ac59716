#include "audio/PortAudioInput.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <cstdlib>
#include <string>
#include <vector>

#include "audio/RingBuffer.h"
#include "tests/support/FakePortAudio.h"

using fakeportaudio::deliver;
using fakeportaudio::state;
using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

class PortAudioInputTest : public testing::Test {
protected:
    void SetUp() override {
        fakeportaudio::reset();
        CaptureStderr();
        input.reset(new PortAudioInput);
    }

    void TearDown() override {
        input.reset();
        EXPECT_EQ(GetCapturedStderr(), expectedLines);
        EXPECT_EQ(state().sessions, 0);
    }

    /// One line of failure, with what the library says for `error`.
    void expectLine(const std::string& message, PaError error) {
        expectedLines += message + ":" + fakeportaudio::textOf(error) + "\n";
    }

    std::vector<float> latest(std::size_t count) {
        std::vector<float> out(count, -99.0f);
        input->getRingBuffer()->copyLatest(out);
        return out;
    }

    boost::shared_ptr<PortAudioInput> input;
    /// All that the test may print on standard error.
    std::string expectedLines;
};

const char* const lostLine = "No sound arrives from the microphone. The game tries to open it anew.\n";
const char* const backLine = "The microphone is heard again.\n";

/// An input that records, looked after a hundred times a second. Its clock does not begin at 0.
class LostStreamTest : public PortAudioInputTest {
protected:
    void SetUp() override {
        PortAudioInputTest::SetUp();
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
};

struct Choice {
    const char* name;      ///< what ZANTO_INPUT says
    PaDeviceIndex device;  ///< what is opened
    std::string told;
};

/// What the game opens and says where there are four inputs, the last one the default.
class InputChoiceTest : public testing::TestWithParam<Choice> {
protected:
    void TearDown() override {
        unsetenv("ZANTO_INPUT");
        unsetenv("ZANTO_AUDIO_LOG");
    }
};

}  // namespace

TEST_F(PortAudioInputTest, StartsIdleAndOpensTheDefaultDeviceInMonoWithoutClippingOrDither) {
    EXPECT_FALSE(input->isRecording());
    EXPECT_EQ(input->getRingBuffer(), nullptr);
    EXPECT_EQ(input->getFramesPerBuffer(), 1024u);
    EXPECT_EQ(input->getSampleRate(), 48000u);
    bool ringSeen = false;
    state().opening = [this, &ringSeen] { ringSeen = input->getRingBuffer() != nullptr; };
    ASSERT_TRUE(input->startRecording());
    EXPECT_TRUE(ringSeen) << "the ring buffer is there before the stream is";
    EXPECT_TRUE(input->isRecording());
    EXPECT_EQ(state().inputParameters.device, state().defaultInputDevice);
    EXPECT_EQ(state().inputParameters.channelCount, 1);
    EXPECT_EQ(state().inputParameters.sampleFormat, paFloat32);
    EXPECT_EQ(state().inputParameters.suggestedLatency, state().defaultLowInputLatency);
    EXPECT_EQ(state().inputParameters.hostApiSpecificStreamInfo, nullptr);
    EXPECT_FALSE(state().hasOutput);
    EXPECT_EQ(state().sampleRate, 48000.0);
    EXPECT_EQ(state().framesPerBuffer, 1024u);
    EXPECT_EQ(state().flags, paClipOff | paDitherOff);
    EXPECT_EQ(state().userData, input.get());
    EXPECT_EQ(input->getRingBuffer()->capacity(), 20480u);
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream"));
}

TEST_F(PortAudioInputTest, SettingsChangedWhileIdleHoldFromTheNextStart) {
    EXPECT_TRUE(input->setSampleRate(44100));
    EXPECT_TRUE(input->setFramesPerBuffer(512));
    EXPECT_FALSE(input->setStereo(false)) << "it gives back the setting itself";
    EXPECT_TRUE(input->setStereo(true));
    ASSERT_TRUE(input->startRecording());
    EXPECT_EQ(state().sampleRate, 44100.0);
    EXPECT_EQ(state().framesPerBuffer, 512u);
    EXPECT_EQ(input->getRingBuffer()->capacity(), 10240u);
    EXPECT_EQ(state().inputParameters.channelCount, 2);
    EXPECT_EQ(input->getSampleRate(), 44100u);
    EXPECT_EQ(input->getFramesPerBuffer(), 512u);
    EXPECT_TRUE(input->getStereo());
}

TEST_F(PortAudioInputTest, SettingsAndASecondStartAreRefusedWhileRecording) {
    ASSERT_TRUE(input->startRecording());
    const boost::shared_ptr<RingBuffer> ring = input->getRingBuffer();
    EXPECT_FALSE(input->setSampleRate(44100));
    EXPECT_EQ(input->getSampleRate(), 48000u);
    EXPECT_FALSE(input->setFramesPerBuffer(512));
    EXPECT_EQ(input->getFramesPerBuffer(), 1024u);
    EXPECT_FALSE(input->setStereo(true));
    EXPECT_FALSE(input->getStereo());
    EXPECT_FALSE(input->startRecording());
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream"));
    EXPECT_EQ(input->getRingBuffer(), ring);
}

TEST_F(PortAudioInputTest, BlockThatDoesNotFitIsDroppedAndRecordingGoesOn) {
    ASSERT_TRUE(input->startRecording());
    const std::vector<float> block(20480, 1.0f);
    EXPECT_EQ(deliver(block.data(), 1000), paContinue);
    EXPECT_EQ(deliver(block.data(), 20000), paContinue);
    EXPECT_EQ(latest(1001).front(), 0.0f);
}

TEST_F(PortAudioInputTest, NullInputAppendsNothingAndContinues) {
    ASSERT_TRUE(input->startRecording());
    EXPECT_EQ(deliver(nullptr, 1024), 0);
    EXPECT_EQ(input->getRingBuffer()->position(), 0u);
}

TEST_F(PortAudioInputTest, StereoKeepsTheFirstHalfOfEachInterleavedBlock) {
    EXPECT_TRUE(input->setStereo(true));
    ASSERT_TRUE(input->startRecording());
    const std::vector<float> leftRight{1, -1, 2, -2, 3, -3, 4, -4};
    EXPECT_EQ(deliver(leftRight.data(), 4), 0);
    EXPECT_THAT(latest(5), ElementsAre(0, 1, -1, 2, -2));
}

TEST_F(PortAudioInputTest, StopKeepsWhatWasRecordedAndARestartBringsAFreshRingBuffer) {
    ASSERT_TRUE(input->startRecording());
    const float block[] = {1, 2};
    deliver(block, 2);
    EXPECT_TRUE(input->stopRecording());
    EXPECT_FALSE(input->isRecording());
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream",
                                           "Pa_StopStream", "Pa_CloseStream"));
    EXPECT_THAT(latest(2), ElementsAre(1, 2));
    EXPECT_TRUE(input->setSampleRate(44100));
    const boost::shared_ptr<RingBuffer> old = input->getRingBuffer();
    ASSERT_TRUE(input->startRecording());
    EXPECT_NE(input->getRingBuffer(), old);
    EXPECT_THAT(latest(2), ElementsAre(0, 0));
    std::vector<float> kept(2);
    old->copyLatest(kept);
    EXPECT_THAT(kept, ElementsAre(1, 2)) << "the old one is left to its holders";
}

TEST_F(PortAudioInputTest, WithoutADeviceOrWhereNothingIsKnownOfItItSaysSoAndOpensNothing) {
    for (const bool known : {true, false}) {
        state().deviceInfoKnown = known;
        state().defaultInputDevice = known ? paNoDevice : 0;
        expectLine("Open stream failed", paInvalidDevice);
        EXPECT_FALSE(input->startRecording());
        EXPECT_FALSE(input->isRecording());
        EXPECT_EQ(input->getRingBuffer(), nullptr);
    }
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize"));
}

TEST_F(PortAudioInputTest, FailureToOpenLeavesItIdle) {
    state().openError = paInvalidSampleRate;
    expectLine("Open stream failed", paInvalidSampleRate);
    EXPECT_FALSE(input->startRecording());
    EXPECT_FALSE(input->isRecording());
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_OpenStream"));
    EXPECT_NE(input->getRingBuffer(), nullptr);

    state().openError = paNoError;
    EXPECT_TRUE(input->startRecording());
}

TEST_F(PortAudioInputTest, FailureToStartKeepsTheOpenedStream) {
    state().startError = paDeviceUnavailable;
    expectLine("Start stream failed", paDeviceUnavailable);
    EXPECT_FALSE(input->startRecording());
    EXPECT_TRUE(input->isRecording());
    EXPECT_FALSE(input->setStereo(true));
    EXPECT_TRUE(input->stopRecording());
    EXPECT_FALSE(input->isRecording());
}

TEST_F(PortAudioInputTest, FailureToStopKeepsTheStream) {
    ASSERT_TRUE(input->startRecording());
    state().stopError = paStreamIsStopped;
    expectLine("Stop stream failed", paStreamIsStopped);
    EXPECT_FALSE(input->stopRecording());
    EXPECT_TRUE(input->isRecording());
    EXPECT_EQ(state().calls.back(), "Pa_StopStream");
    state().stopError = paNoError;
    EXPECT_TRUE(input->stopRecording());
}

TEST_F(PortAudioInputTest, FailureToCloseSpeaksOfStartingAndIsIdleAllTheSame) {
    ASSERT_TRUE(input->startRecording());
    state().closeError = paInternalError;
    expectLine("Start stream failed", paInternalError);
    EXPECT_FALSE(input->stopRecording());
    EXPECT_FALSE(input->isRecording());
    EXPECT_FALSE(input->stopRecording());
}

TEST_F(PortAudioInputTest, DestructionStopsARunningStreamBeforeItEndsTheSession) {
    input.reset();
    state().calls.clear();
    boost::shared_ptr<AudioInput> made = AudioInput::New();
    EXPECT_NE(dynamic_cast<PortAudioInput*>(made.get()), nullptr);
    ASSERT_TRUE(made->startRecording());
    made.reset();
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream",
                                           "Pa_StopStream", "Pa_CloseStream", "Pa_Terminate"));
}

TEST_F(PortAudioInputTest, StopWhenIdleIsRefusedAndDestructionThenOnlyEndsTheSession) {
    EXPECT_FALSE(input->stopRecording());
    input.reset();
    EXPECT_THAT(state().calls, ElementsAre("Pa_Initialize", "Pa_Terminate"));
}

TEST_F(LostStreamTest, AShortSilenceOfTheDeviceIsBorne) {
    pass(1.9);
    pass(0.1, true);
    pass(1.9);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
}

TEST_F(LostStreamTest, AfterTwoSecondsItIsAbandonedAndOpenedAnewWithSilence) {
    pass(2.1);
    EXPECT_THAT(state().calls,
                ElementsAre("Pa_Initialize", "Pa_OpenStream", "Pa_StartStream", "Pa_AbortStream",
                            "Pa_CloseStream", "Pa_OpenStream", "Pa_StartStream"));
    EXPECT_THAT(latest(4096), testing::Each(0.0f));
    expectedLines = lostLine;
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
    expectedLines = std::string(lostLine) + backLine;
}

TEST_F(LostStreamTest, ItsOwnPauseIsNotTakenForTheStreams) {
    now += 3600.0;
    pass(1.5);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
}

TEST_F(LostStreamTest, WhatWasStoppedStaysStopped) {
    EXPECT_TRUE(input->stopRecording());
    pass(10.0);
    EXPECT_EQ(count("Pa_OpenStream"), 1);
}

TEST_F(LostStreamTest, ADeadStreamIsNotWaitedForAtTheEnd) {
    pass(0.5);
    input.reset();
    EXPECT_EQ(count("Pa_StopStream"), 0);
    EXPECT_EQ(count("Pa_AbortStream"), 1);
    EXPECT_EQ(state().calls.back(), "Pa_Terminate");
}

TEST_P(InputChoiceTest, OpensTheNamedInputOrTheDefaultOne) {
    fakeportaudio::reset();
    state().inputs = {"USB Audio: front", "USB Audio", "Webcam", "default"};
    setenv("ZANTO_INPUT", GetParam().name, 1);
    CaptureStderr();
    PortAudioInput input;
    EXPECT_TRUE(input.startRecording());
    EXPECT_EQ(GetCapturedStderr(), GetParam().told);
    EXPECT_EQ(state().inputParameters.device, GetParam().device);
}

INSTANTIATE_TEST_SUITE_P(Names, InputChoiceTest,
                         testing::Values(Choice{"", 3, ""}, Choice{"Webcam", 2, ""}, Choice{"webc", 2, ""},
                                         Choice{"USB Audio", 1, ""}, Choice{"front", 0, ""},
                                         Choice{"usb", 3,
                                                "ZANTO_INPUT: several inputs are called \"usb\". The default "
                                                "input is used. Inputs: \"USB Audio: front\" "
                                                "\"USB Audio\"\n"},
                                         Choice{"piano", 3,
                                                "ZANTO_INPUT: no input is called \"piano\". The default "
                                                "input is used. Inputs: \"USB Audio: front\" "
                                                "\"USB Audio\" \"Webcam\" \"default\"\n"}));

TEST_F(InputChoiceTest, ALogThatIsNeitherOnNorOffIsRefused) {
    fakeportaudio::reset();
    setenv("ZANTO_AUDIO_LOG", "loud", 1);
    CaptureStderr();
    PortAudioInput input;
    EXPECT_EQ(GetCapturedStderr(), "ZANTO_AUDIO_LOG: \"loud\" is not one of 0 1. 0 is used.\n");
}
