// Start-up as a player starts it, with the audio input, the window and its main loop replaced: what is made,
// in which order, what is said and how it ends.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <string>
#include <vector>

#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/ScriptedAudioInput.h"

/// The program's entry, compiled under another name for this test.
int zantoMain(int argc, char** argv);

namespace {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

Outcome start(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "zanto");
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int status = zantoMain(static_cast<int>(arguments.size()), argv.data());
    return {status, testing::internal::GetCapturedStdout(), testing::internal::GetCapturedStderr()};
}

class StartUpTest : public testing::Test {
protected:
    void SetUp() override {
        fakeglut::reset(640, 480);
        scriptedaudio::reset();
        fakeglut::state().mainLoop = [] {
            fakeglut::state().display();
            fakeglut::shutDown();
        };
    }

    OffscreenGL gl{640, 480};
};

TEST_F(StartUpTest, NoArgumentOpensTheWindowAndEndsWithZero) {
    const Outcome outcome = start({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(scriptedaudio::script().alive, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "main::Creating AudioInput\n"
              "main::start recording.\n"
              "main::creating window\n"
              "NoteEstimation minDecibel is -65.000000\n"
              "Win::Win() initing wt\n");
}

TEST_F(StartUpTest, OnlyTheFirstArgumentIsUsedAndAMissingSongIsReportedAndPlayed) {
    const Outcome outcome = start({"no-such-song.txt", "second.txt", "--third"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(fakeglut::state().swaps, 1);
    EXPECT_EQ(outcome.err,
              "Song: input is not good.\n"
              "Cannot load song:Songs/no-such-song.txt\n");
}

TEST_F(StartUpTest, WithoutARecordingItEndsWithoutAWindow) {
    const std::string creating = "main::Creating AudioInput\n";
    const std::string starting = creating + "main::start recording.\n";
    const auto expectEnd = [](int status, const std::string& out, const std::string& err) {
        const Outcome outcome = start({});
        EXPECT_EQ(outcome.status & 0xff, status);
        EXPECT_EQ(outcome.out, out);
        EXPECT_EQ(outcome.err, err);
        EXPECT_FALSE(fakeglut::state().initialised);
    };
    scriptedaudio::script().hasRingBuffer = false;
    expectEnd(254, starting, "Cannot get pointer to audio buffer.\n");
    scriptedaudio::script().records = false;
    expectEnd(254, starting, "Cannot start recording.\n");
    EXPECT_EQ(scriptedaudio::script().created, 2);
    EXPECT_EQ(scriptedaudio::script().alive, 0);
    scriptedaudio::script().exists = false;
    expectEnd(255, creating, "Cannot create audioInput.\n");
}

}  // namespace
