#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "audio/PortAudioInput.h"
#include "tests/support/FakePortAudio.h"

using fakeportaudio::state;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

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
