#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "audio/AudioInput.h"
#include "tests/app/WinFixture.h"

namespace {

constexpr double aHz = 445.3125;  // in the middle of a bin that the test's table calls an A
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr int black = 0;
constexpr int white = 0xffffff;

/// What a broken device may deliver in place of sound: nothing is heard in it, the frames go on, and what
/// comes after it is heard as ever.
class SampleFaults : public WinFixture {
protected:
    /// The microphone's ring buffer holds nothing but these samples, again and again.
    void deliver(const std::vector<float>& pattern) {
        std::vector<float> samples(24576);  // more than the ring buffer holds
        std::size_t next = 0;
        std::generate(samples.begin(), samples.end(), [&] { return pattern[next++ % pattern.size()]; });
        scriptedaudio::speak(*audio, samples);
    }

    /// A song of one A at time 0, played into until just before its slot.
    void playUntilTheSlotOpens() {
        win->playSong("short.txt");
        frames(20);
        EXPECT_EQ(analyses(), 0) << printed;
        fakeclock::advance(1.5);
    }

    /// Whether the song's A is drawn as hit once its slot is over.
    bool hitInItsSlot() {
        constexpr double aHeight = 10.0 / 7.0;
        frames(45);
        const int colour = worldPixel(-0.2, aHeight);
        EXPECT_TRUE(colour == black || colour == white) << std::hex << colour;
        return colour == black;
    }
};

TEST_F(SampleFaults, WhatIsNoSoundIsNotHeardAndLeavesNothingBehind) {
    constexpr float largest = std::numeric_limits<float>::max();
    for (const std::vector<float>& pattern :
         {std::vector<float>{notANumber}, {infinity, -infinity, 0.5f}, {largest, -largest, 1e30f}}) {
        deliver(pattern);
        playUntilTheSlotOpens();
        sound(aHz, 0.5);
        EXPECT_TRUE(hitInItsSlot());
    }
}

TEST_F(SampleFaults, OneBadSampleSpoilsNoMoreThanTheAnalysesThatHoldIt) {
    auto samples = scriptedaudio::tone(aHz, 0.5, 0.5);
    samples[samples.size() / 2] = notANumber;
    scriptedaudio::speak(*audio, samples);
    win->playSong("short.txt");
    frame();
    fakeclock::advance(1.5);
    sound(aHz, 0.5);
    EXPECT_TRUE(hitInItsSlot());
}

TEST_F(SampleFaults, AllZeroSamplesHitNothing) {
    deliver({0.0f});
    playUntilTheSlotOpens();
    EXPECT_FALSE(hitInItsSlot());
}

TEST_F(SampleFaults, AClippedToneIsTheNoteThatItIs) {
    auto samples = scriptedaudio::tone(aHz, 20.0, 0.5);
    for (float& sample : samples) {
        sample = std::clamp(sample, -1.0f, 1.0f);
    }
    scriptedaudio::speak(*audio, samples);
    win->playSong("short.txt");
    fakeclock::advance(1.7);
    EXPECT_TRUE(hitInItsSlot());
}

}  // namespace
