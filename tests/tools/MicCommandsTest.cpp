#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/DocumentedExample.h"
#include "tests/support/ScriptedMicrophone.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"
#include "tools/zanto-mic/commands.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr double c5Hz = 523.25;
constexpr double cSharp5Hz = 554.37;

using MicCommand = int (*)(const CommandArguments&, Microphone&);

Outcome run(MicCommand command, CommandArguments arguments, Microphone& microphone) {
    if (command != micListCommand) {
        arguments.insert(arguments.end(), {"--data", ZANTO_DATA_FOLDER});
    }
    return outcomeOf("zanto-mic", [&] { return command(arguments, microphone); });
}

// Noise of so much amplitude, and a sine that sets in when the quiet is over.
std::function<double(double)> noteAfterQuiet(double noise, double frequencyHz, double amplitude) {
    auto random = std::make_shared<std::mt19937>(7);
    return [=](double t) {
        const double hiss = noise * (static_cast<double>((*random)()) / 2147483648.0 - 1.0);
        const double tone = t < 6.0 ? 0.0 : amplitude * std::sin(6.283185307179586 * frequencyHz * t);
        return std::clamp(hiss + tone, -1.0, 1.0);
    };
}

double silence(double) {
    return 0.0;
}

Outcome run(MicCommand command, const CommandArguments& arguments,
            const std::function<double(double)>& sound) {
    ScriptedMicrophone microphone(sound);
    return run(command, arguments, microphone);
}

std::string outOf(MicCommand command, const CommandArguments& arguments,
                  const std::function<double(double)>& sound) {
    return run(command, arguments, sound).out;
}

}  // namespace

TEST(MicList, ShowsTheDevicesAndWhichOneTheGameTakes) {
    ScriptedMicrophone microphone(silence);
    const Outcome none = run(micListCommand, {}, microphone);
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.out, HasSubstr("There is no input device."));
    microphone.listed = {{0, "hw:0,0", "ALSA", 2, 44100.0, "Invalid sample rate", false}};
    const Outcome noDefault = run(micListCommand, {}, microphone);
    EXPECT_EQ(noDefault.status, 1);
    EXPECT_THAT(noDefault.out, HasSubstr("None of them is the default input."));
    microphone.listed.push_back({3, "default", "ALSA", 32, 48000.0, "", true});
    const Outcome outcome = run(micListCommand, {}, microphone);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "    #  device   system  channels  usual rate  48000 Hz\n"
              "    0  hw:0,0   ALSA           2       44100  Invalid sample rate\n"
              "*   3  default  ALSA          32       48000  yes\n");
}

TEST(MicCommands, AMonitorIsNamedAsOneAndSoIsTheCommandThatChoosesAnotherInput) {
    for (const bool isMonitor : {true, false}) {
        ScriptedMicrophone microphone(noteAfterQuiet(0.00005, c5Hz, 0.2));
        microphone.monitor = isMonitor;
        microphone.listed = {{3, "default", "ALSA", 32, 48000.0, "", true}};
        const Outcome list = run(micListCommand, {}, microphone);
        const Outcome check = run(micCheckCommand, {}, microphone);
        EXPECT_EQ(list.status, 0);
        EXPECT_EQ(check.status, isMonitor ? 1 : 0);
        for (const std::string& out : {list.out, check.out}) {
            EXPECT_EQ(out.find("The game records from a monitor") != std::string::npos, isMonitor);
            EXPECT_EQ(out.find("    ./play --input NAME ") != std::string::npos, isMonitor);
        }
    }
}

TEST(MicLevel, TheBarReachesTheLevelAndMarksTheLeastOne) {
    EXPECT_EQ(outOf(micLevelCommand, {"--seconds", "1"}, silence),
              "peak silent dB  noise silent dB  [..............|.........................]\n");
    const auto loud = [](double t) { return std::sin(6.283185307179586 * c5Hz * t) > 0.0 ? 1.0 : -1.0; };
    EXPECT_THAT(outOf(micLevelCommand, {"--seconds", "1"}, loud),
                HasSubstr("[##############|#########################] CLIPS"));
    const auto sounding = noteAfterQuiet(0.002, c5Hz, 0.1);
    EXPECT_EQ(outOf(micLevelCommand, {"--seconds", "1"}, [&](double t) { return sounding(t + 6.0); }),
              documentedOutput(ZANTO_DOCS_FOLDER "/zanto-mic.md", "zanto-mic level --seconds 1"));
}

TEST(MicLevel, EndsWhenItIsInterrupted) {
    const auto silenceUntilCtrlC = [](double t) {
        micInterrupted = t > 1.5;
        return 0.0;
    };
    const Outcome outcome = run(micLevelCommand, {"--seconds", "1000"}, silenceUntilCtrlC);
    micInterrupted = false;
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1);
}

TEST(MicCheckCommand, SaysThatAGoodMicrophoneNeedsNothingOrThatTheFineEarWouldServeBetter) {
    // A cello's C2: its fundamental lies below what the plain ear looks at.
    const auto cello = [](double t) {
        double sample = 0.0;
        for (int partial = 1; partial <= 8 && t >= 6.0; ++partial) {
            sample += 0.1 * std::sin(6.283185307179586 * 65.41 * partial * t);
        }
        return sample;
    };
    EXPECT_THAT(
        outOf(micCheckCommand, {}, cello),
        testing::AllOf(HasSubstr("The fine ear would serve you better: it heard C and nothing else in "),
                       HasSubstr("    ./play --ear fine\n")));
    EXPECT_THAT(outOf(micCheckCommand, {"--ear", "fine"}, cello),
                testing::AllOf(HasSubstr("It was taken for C in "), Not(HasSubstr("fine ear"))));
    const Outcome outcome = run(micCheckCommand, {"--ear", "plain"}, noteAfterQuiet(0.00005, c5Hz, 0.2));
    EXPECT_EQ(outcome.status, 0) << outcome.out;
    EXPECT_THAT(outcome.out, HasSubstr("It was taken for C in "));
    EXPECT_THAT(outcome.out, HasSubstr("The least level of -65 dB suits, nothing has to be set.\n"));
    // Nor what the game's classes print.
    EXPECT_THAT(outcome.out, Not(testing::AnyOf(HasSubstr("fine ear"), HasSubstr("minDecibel"))));
    unsetenv("ZANTO_EAR");
}

TEST(MicLevel, ListensWithTheEarThatIsChosen) {
    const auto low = [](double t) { return 0.1 * std::sin(6.283185307179586 * 87.31 * t); };  // F2
    EXPECT_THAT(outOf(micLevelCommand, {"--seconds", "1", "--ear", "fine"}, low), HasSubstr("]  F\n"));
    EXPECT_THAT(outOf(micLevelCommand, {"--seconds", "1", "--ear", "plain"}, low), Not(HasSubstr("]  F\n")));
    unsetenv("ZANTO_EAR");
    const Outcome wrong = run(micLevelCommand, {"--ear", "coarse"}, low);
    EXPECT_EQ(wrong.status, 2);
    EXPECT_THAT(wrong.errors, HasSubstr("--ear wants plain or fine, not \"coarse\""));
}

TEST(MicCheckCommand, TheExampleOfTheDocumentationIsWhatItPrintsAndTheLevelThereServes) {
    const Outcome before = run(micCheckCommand, {}, noteAfterQuiet(0.03, c5Hz, 0.5));
    EXPECT_EQ(before.status, 1);
    EXPECT_EQ(before.out, documentedOutput(ZANTO_DOCS_FOLDER "/zanto-mic.md", "zanto-mic check"));
    const std::size_t at = before.out.find("ZANTO_MIN_DECIBEL=");
    ASSERT_NE(at, std::string::npos);
    setenv("ZANTO_MIN_DECIBEL", before.out.substr(at + 18, 3).c_str(), 1);
    const Outcome after = run(micCheckCommand, {}, noteAfterQuiet(0.03, c5Hz, 0.5));
    unsetenv("ZANTO_MIN_DECIBEL");
    EXPECT_EQ(after.status, 0) << after.out;
}

TEST(MicCheckCommand, WhatIsWrongIsNamed) {
    const std::vector<std::pair<std::function<double(double)>, std::vector<const char*>>> cases = {
        {noteAfterQuiet(0.0000001, c5Hz, 0.0005), {"That is soft", "ZANTO_MIN_DECIBEL=-77 ./play\n"}},
        {noteAfterQuiet(0.00005, cSharp5Hz, 0.2),
         {"but it was taken for no note", "Is the instrument in tune?"}},
        {noteAfterQuiet(0.00005, c5Hz, 3.0), {"The microphone clips"}},
        {noteAfterQuiet(0.01, c5Hz, 0.0), {"No note was heard"}},
        {silence, {"delivers nothing at all"}},
    };
    for (const auto& [sound, told] : cases) {
        const Outcome outcome = run(micCheckCommand, {}, sound);
        EXPECT_EQ(outcome.status, 1);
        for (const char* const words : told) {
            EXPECT_THAT(outcome.out, HasSubstr(words));
        }
    }
}

TEST(MicRecord, CountsInRecordsEverySampleAndEndsAfterSilence) {
    const TemporaryFolder folder;
    const auto note = [](double t) {
        return t > 2.5 && t < 4.0 ? 0.3 * std::sin(6.283185307179586 * c5Hz * t) : 0.0;
    };
    const Outcome outcome = run(micRecordCommand, {"a.wav", "--silence", "2"}, note);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.out,
              documentedOutput(ZANTO_DOCS_FOLDER "/zanto-mic.md", "zanto-mic record take.wav --silence 2"));
    SF_INFO format{};
    const std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open("a.wav", SFM_READ, &format), sf_close);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(format.samplerate, 48000);
    std::vector<float> samples(static_cast<std::size_t>(format.frames));
    sf_read_float(file.get(), samples.data(), format.frames);
    // Half a second is passed over first, in whole blocks.
    for (std::size_t index = 0; index < samples.size(); ++index) {
        ASSERT_NEAR(static_cast<double>(samples[index]), note(static_cast<double>(index + 23552) / 48000.0),
                    1e-4)
            << index;
    }
}

TEST(MicRecord, KeepsWhatWasRecordedWhenItIsInterruptedAndNothingWhenNothingWasHeard) {
    const TemporaryFolder folder;
    const auto soundUntilCtrlC = [](double t) {
        micInterrupted = t > 4.0;
        return 0.3 * std::sin(6.283185307179586 * c5Hz * t);
    };
    EXPECT_EQ(run(micRecordCommand, {"a.wav"}, soundUntilCtrlC).status, 0);
    micInterrupted = false;
    EXPECT_TRUE(std::filesystem::exists("a.wav"));
    const Outcome outcome = run(micRecordCommand, {"b.wav"}, silence);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "zanto-mic: nothing was heard; zanto-mic check says why\n");
    EXPECT_FALSE(std::filesystem::exists("b.wav"));
    EXPECT_EQ(run(micRecordCommand, {"a.wav"}, silence).errors,
              "zanto-mic: a.wav: there is such a file; --force replaces it\n");
    EXPECT_EQ(run(micRecordCommand, {"c.wav", "--silence", "0"}, silence).status, 2);
}

TEST(MicCommands, WrongUseAndAMicrophoneThatDoesNotStart) {
    ScriptedMicrophone microphone(silence);
    microphone.refusal = "It is busy.";
    for (const MicCommand command : {micListCommand, micLevelCommand, micCheckCommand}) {
        EXPECT_EQ(run(command, {"x"}, microphone).errors, "zanto-mic: \"x\" is not an option\n");
    }
    EXPECT_EQ(run(micLevelCommand, {"--seconds", "0"}, microphone).status, 2);
    for (const MicCommand command : {micLevelCommand, micCheckCommand}) {
        const Outcome outcome = run(command, {}, microphone);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errors, "zanto-mic: It is busy.\n");
    }
}
