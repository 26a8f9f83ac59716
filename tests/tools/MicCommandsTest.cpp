#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "tests/support/DocumentedExample.h"
#include "tests/support/ScriptedMicrophone.h"
#include "tests/tools/Outcome.h"
#include "tools/zanto-mic/Command.h"

namespace {

using testing::HasSubstr;

constexpr double c5Hz = 523.25;
constexpr double cSharp5Hz = 554.37;

using MicCommand = int (*)(MicArguments const&, Microphone&);

Outcome run(MicCommand command, MicArguments arguments, Microphone& microphone) {
    if (command != micListCommand) {
        arguments.insert(arguments.end(), {"--data", ZANTO_DATA_FOLDER});
    }
    return outcomeOf([&] { return command(arguments, microphone); });
}

// Noise of so much amplitude, and a sine that sets in when the quiet is over.
std::function<double(double)> noteAfterQuiet(double noise, double frequencyHz, double amplitude) {
    auto random = std::make_shared<std::mt19937>(7);
    return [=](double t) {
        double const hiss = noise * (static_cast<double>((*random)()) / 2147483648.0 - 1.0);
        double const tone = t < 6.0 ? 0.0 : amplitude * std::sin(6.283185307179586 * frequencyHz * t);
        return std::clamp(hiss + tone, -1.0, 1.0);
    };
}

}  // namespace

TEST(MicList, showsTheDevicesAndWhichOneTheGameTakes) {
    ScriptedMicrophone microphone([](double) { return 0.0; });
    microphone.listed = {{0, "hw:0,0", "ALSA", 2, 44100.0, "Invalid sample rate", false},
                         {3, "default", "ALSA", 32, 48000.0, "", true}};
    Outcome const outcome = run(micListCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "    #  device   system  channels  usual rate  48000 Hz\n"
              "    0  hw:0,0   ALSA           2       44100  Invalid sample rate\n"
              "*   3  default  ALSA          32       48000  yes\n");
}

TEST(MicList, noDeviceAndNoDefaultAreProblems) {
    ScriptedMicrophone microphone([](double) { return 0.0; });
    Outcome const none = run(micListCommand, {}, microphone);
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.out, HasSubstr("There is no input device."));
    microphone.listed = {{0, "hw:0,0", "ALSA", 2, 44100.0, "", false}};
    Outcome const noDefault = run(micListCommand, {}, microphone);
    EXPECT_EQ(noDefault.status, 1);
    EXPECT_THAT(noDefault.out, HasSubstr("None of them is the default input."));
}

TEST(MicLevel, showsPeakNoiseAndNotesOncePerSecond) {
    ScriptedMicrophone microphone([](double t) { return 0.1 * std::sin(6.283185307179586 * c5Hz * t); });
    Outcome const outcome = run(micLevelCommand, {"--seconds", "3"}, microphone);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 3);
    EXPECT_THAT(outcome.out, testing::ContainsRegex("peak  -2[01]\\.[0-9] dB  noise"));
    EXPECT_THAT(outcome.out, HasSubstr("]  C\n"));
}

TEST(MicLevel, theBarReachesTheLevelAndMarksTheLeastOne) {
    ScriptedMicrophone silent([](double) { return 0.0; });
    EXPECT_EQ(run(micLevelCommand, {"--seconds", "1"}, silent).out,
              "peak silent dB  noise silent dB  [..............|.........................]\n");
    ScriptedMicrophone loud(
        [](double t) { return std::sin(6.283185307179586 * c5Hz * t) > 0.0 ? 1.0 : -1.0; });
    EXPECT_THAT(run(micLevelCommand, {"--seconds", "1"}, loud).out,
                HasSubstr("[##############|#########################] CLIPS"));
}

TEST(MicLevel, theExampleOfTheDocumentationIsWhatItPrints) {
    auto const sounding = noteAfterQuiet(0.002, c5Hz, 0.1);
    ScriptedMicrophone microphone([&](double t) { return sounding(t + 6.0); });
    EXPECT_EQ(run(micLevelCommand, {"--seconds", "1"}, microphone).out,
              documentedOutput(ZANTO_DOCS_FOLDER "/zanto-mic.md", "zanto-mic level --seconds 1"));
}

TEST(MicLevel, endsWhenItIsInterrupted) {
    ScriptedMicrophone microphone([](double t) {
        micInterrupted = t > 1.5;
        return 0.0;
    });
    Outcome const outcome = run(micLevelCommand, {"--seconds", "1000"}, microphone);
    micInterrupted = false;
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
}

TEST(MicCheckCommand, aGoodMicrophoneNeedsNothing) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.00005, c5Hz, 0.2));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("It was taken for C in "));
    EXPECT_THAT(outcome.out, HasSubstr("The least level of -65 dB suits, nothing has to be set.\n"));
    EXPECT_THAT(outcome.out, testing::Not(HasSubstr("minDecibel")));  // what the game's classes print
}

TEST(MicCheckCommand, theExampleOfTheDocumentationIsWhatItPrints) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.03, c5Hz, 0.5));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, documentedOutput(ZANTO_DOCS_FOLDER "/zanto-mic.md", "zanto-mic check"));
}

TEST(MicCheckCommand, theSuggestedLevelServes) {
    ScriptedMicrophone noisy(noteAfterQuiet(0.03, c5Hz, 0.5));
    std::string const out = run(micCheckCommand, {}, noisy).out;
    std::size_t const at = out.find("ZANTO_MIN_DECIBEL=");
    ASSERT_NE(at, std::string::npos) << out;
    std::string const value = out.substr(at + 18, 3);
    setenv("ZANTO_MIN_DECIBEL", value.c_str(), 1);
    ScriptedMicrophone again(noteAfterQuiet(0.03, c5Hz, 0.5));
    Outcome const outcome = run(micCheckCommand, {}, again);
    unsetenv("ZANTO_MIN_DECIBEL");
    EXPECT_EQ(outcome.status, 0) << value << ": " << outcome.out;
}

TEST(MicCheckCommand, softNotesAreFoundAndALowerLevelIsSuggested) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.0000001, c5Hz, 0.0005));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("That is soft"));
    EXPECT_THAT(outcome.out, HasSubstr("ZANTO_MIN_DECIBEL=-77 ./play\n"));
}

TEST(MicCheckCommand, aSoundBetweenTheNotesIsNamed) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.00005, cSharp5Hz, 0.2));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("but it was taken for no note"));
    EXPECT_THAT(outcome.out, HasSubstr("Is the instrument in tune?"));
}

TEST(MicCheckCommand, clippingIsNamed) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.00005, c5Hz, 3.0));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("The microphone clips"));
}

TEST(MicCheckCommand, nothingButNoise) {
    ScriptedMicrophone microphone(noteAfterQuiet(0.01, c5Hz, 0.0));
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("No note was heard"));
}

TEST(MicCheckCommand, aMutedMicrophone) {
    ScriptedMicrophone microphone([](double) { return 0.0; });
    Outcome const outcome = run(micCheckCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("delivers nothing at all"));
}

TEST(MicCheckCommand, aMicrophoneThatDoesNotStartSaysWhatToDo) {
    ScriptedMicrophone microphone([](double) { return 0.0; });
    microphone.refusal = "It is busy.";
    for (MicCommand const command : {micLevelCommand, micCheckCommand}) {
        Outcome const outcome = run(command, {}, microphone);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "It is busy.\n");
    }
}

TEST(MicCommands, wrongUseIsStatus2) {
    ScriptedMicrophone microphone([](double) { return 0.0; });
    EXPECT_EQ(run(micListCommand, {"x"}, microphone).status, 2);
    EXPECT_EQ(run(micLevelCommand, {"--seconds", "0"}, microphone).status, 2);
    EXPECT_EQ(run(micLevelCommand, {"x"}, microphone).status, 2);
    EXPECT_EQ(run(micCheckCommand, {"--loud"}, microphone).errors,
              "zanto-mic check: unknown option --loud\n");
}
