#include "tools/zanto-mic/GameMicrophone.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "audio/RingBuffer.h"
#include "tests/support/FakePortAudio.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"

namespace {

using fakeportaudio::state;
using testing::HasSubstr;

std::string refusal() {
    return failureOf([] { GameMicrophone().start(); });
}

}  // namespace

TEST(GameMicrophone, RecordsAsTheGameDoesAndClosesEverySession) {
    fakeportaudio::reset();
    {
        GameMicrophone microphone;
        EXPECT_FALSE(microphone.samples());
        microphone.start();
        EXPECT_EQ(state().sessions, 2);
        EXPECT_EQ(state().sampleRate, 48000.0);
        EXPECT_EQ(state().inputParameters.channelCount, 1);
        const std::vector<float> block(1024, 0.5f);
        fakeportaudio::deliver(block.data(), 1024);
        std::vector<float> newest(4);
        microphone.samples()->copyLatest(newest);
        EXPECT_EQ(newest, std::vector<float>(4, 0.5f));
    }
    EXPECT_EQ(state().sessions, 0);
}

TEST(GameMicrophone, ListsInputDevices) {
    fakeportaudio::reset();
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

TEST(GameMicrophone, ListsAndRecordsTheInputThatThePlayerNamed) {
    fakeportaudio::reset();
    state().inputs = {"Webcam", "USB Audio", "Line", "default"};
    for (const auto& [name, device] : std::vector<std::pair<const char*, int>>{{"usb", 1}, {"piano", 3}}) {
        SCOPED_TRACE(name);
        setenv("ZANTO_INPUT", name, 1);
        testing::internal::CaptureStderr();
        GameMicrophone microphone;
        EXPECT_TRUE(microphone.devices().at(static_cast<std::size_t>(device)).isDefault);
        const std::string toldByList = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        microphone.start();
        EXPECT_EQ(state().inputParameters.device, device);
        for (const std::string& told : {toldByList, testing::internal::GetCapturedStderr()}) {
            EXPECT_EQ(told.find("no input is called") != std::string::npos, device == 3) << told;
        }
        unsetenv("ZANTO_INPUT");
    }
}

TEST(GameMicrophone, KnowsAMonitorByItsNameOrFromTheSoundServer) {
    fakeportaudio::reset();
    state().inputs = {"Monitor of Speakers", "USB Audio", "Line", "default"};
    const TemporaryFolder folder;
    const std::string searchPath = std::getenv("PATH");
    setenv("PATH", folder.path().c_str(), 1);
    struct Case {
        const char* input;
        const char* program;  // the one that is installed, and what it prints
        const char* prints;
        bool isMonitor;
    };
    for (const auto& [input, program, prints, isMonitor] : std::vector<Case>{
             {"speakers", "none", "", true},
             {"usb", "pactl", "alsa_output.pci.monitor", false},
             {"", "none", "", false},
             {"", "pactl", "alsa_output.pci.monitor", true},
             {"", "pactl", "alsa_input.usb", false},
             {"", "wpctl", "  * media.class = \"Audio/Sink\"", true},
             {"", "wpctl", "  * media.class = \"Audio/Source\"", false},
         }) {
        SCOPED_TRACE(std::string(input) + "|" + prints);
        setenv("ZANTO_INPUT", input, 1);
        const std::string file = folder.write(program, std::string("#!/bin/sh\necho '") + prints + "'\n");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        EXPECT_EQ(GameMicrophone().isMonitor(), isMonitor);
        std::filesystem::remove(file);
    }
    unsetenv("ZANTO_INPUT");
    setenv("PATH", searchPath.c_str(), 1);
}

TEST(GameMicrophone, WhatKeepsItFromStartingIsNamedHoweverLateItShows) {
    fakeportaudio::reset();
    state().defaultInputDevice = paNoDevice;
    EXPECT_TRUE(GameMicrophone().devices().empty());
    EXPECT_THAT(refusal(), HasSubstr("There is no microphone here."));
    fakeportaudio::reset();
    state().formatError = paInvalidSampleRate;
    EXPECT_THAT(refusal(), HasSubstr("refuses 48000 samples a second"));
    for (PaError* const error : {&state().formatError, &state().openError, &state().startError}) {
        fakeportaudio::reset();
        *error = paDeviceUnavailable;
        EXPECT_THAT(refusal(), HasSubstr("The microphone is busy"));
    }
    fakeportaudio::reset();
    state().openError = paInsufficientMemory;
    EXPECT_THAT(refusal(),
                HasSubstr("could not start recording: " + fakeportaudio::textOf(paInsufficientMemory)));
    state().formatError = paInternalError;
    EXPECT_THAT(refusal(), HasSubstr(fakeportaudio::textOf(paInternalError)));
}
