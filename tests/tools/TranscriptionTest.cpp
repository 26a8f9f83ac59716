#include "tools/zanto-song/Transcription.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/Outcome.h"

namespace {

// A note from one hundredth of a second to another, as the ear hears it.
struct Sound {
    int note;
    std::size_t from;
    std::size_t to;
};

std::vector<ListenedFrame> framesOf(const std::vector<Sound>& sounds, std::size_t count = 2000) {
    std::vector<ListenedFrame> frames(count);
    for (const Sound& sound : sounds) {
        for (std::size_t frame = sound.from + 5; frame < sound.to + 5; ++frame) {
            frames[frame].notes |= static_cast<std::uint8_t>(1u << static_cast<unsigned>(sound.note));
        }
        frames[sound.from + 2].rise = 0.8f;
        for (std::size_t frame = sound.from + 2; frame < sound.to; ++frame) {
            frames[frame].levelsDb.at(static_cast<std::size_t>(sound.note)) = 20.0f;
        }
    }
    return frames;
}

// C C D2, a rest, and E with G, at so many frames a slot.
std::vector<Sound> tune(double slot) {
    const auto at = [&](double slots) { return static_cast<std::size_t>(100.0 + slots * slot); };
    return {{0, at(0), at(0.95)}, {0, at(1), at(1.9)},  {1, at(2), at(3.9)},  {2, at(5), at(5.9)},
            {4, at(5), at(6.9)},  {3, at(8), at(11.9)}, {5, at(12), at(12.9)}};
}

std::string songIn(const std::vector<ListenedFrame>& frames, const std::optional<double>& tempo = {}) {
    return songOf(transcribe(frames, tempo));
}

constexpr const char* tuneAsSong = "120 4\nC\nC\nD2\n\n\nE G2\n\n\nF4\n\n\n\nA\n";

}  // namespace

TEST(Transcription, FindsTheBeatAndWritesNotesRestsChordsAndWhatIsStruckAgain) {
    for (const double tempo : {80.0, 100.0, 120.0, 139.0}) {
        const double slot = 6000.0 / tempo;
        EXPECT_EQ(songIn(framesOf(tune(slot))), tuneAsSong) << tempo;
        EXPECT_NEAR(transcribe(framesOf(tune(slot)), {}).slotSeconds, slot / 100.0, 0.01);
    }
    EXPECT_EQ(songIn(framesOf(tune(30.0)), 200.0), tuneAsSong);
    EXPECT_EQ(songIn(framesOf(tune(60.0)), 200.0).substr(0, 20), "120 4\nC2\n\nC2\n\nD4\n\n\n\n");
}

TEST(Transcription, ANoteLastsUntilItsLevelFallsSteeplyWheneverTheEarLosesIt) {
    const auto level = [](ListenedFrame& frame, int note) -> float& {
        return frame.levelsDb.at(static_cast<std::size_t>(note));
    };
    const std::vector<Sound> sounds = tune(60.0);
    std::vector<ListenedFrame> frames = framesOf(sounds);
    const Sound& fading = sounds[5];
    for (std::size_t frame = fading.from + 2; frame < fading.to + 5; ++frame) {
        level(frames[frame], fading.note) = 20.0f - 0.2f * static_cast<float>(frame - fading.from);
        if (frame > fading.from + 110) {
            frames[frame].notes = 0;
        }
    }
    const Sound& ringing = sounds[2];
    for (std::size_t frame = ringing.to; frame < ringing.to + 50; ++frame) {
        level(frames[frame], ringing.note) = 20.0f - 0.9f * static_cast<float>(frame - ringing.to);
        frames[frame].notes = 1u << 1u;
    }
    EXPECT_EQ(songIn(frames), tuneAsSong);
}

TEST(Transcription, ANoteSoundsOnWhenTheEarMistakesItForAnotherThatNobodyStruck) {
    const std::vector<Sound> sounds = tune(60.0);
    std::vector<ListenedFrame> frames = framesOf(sounds);
    const Sound& beating = sounds[5];
    for (std::size_t frame = beating.from + 80; frame < beating.from + 110; ++frame) {
        frames[frame].notes = 1u << 6u;
    }
    EXPECT_NE(songIn(frames).find("\nF4\n"), std::string::npos) << songIn(frames);
}

TEST(Transcription, TwoNotesOffTheBeatSpeakAgainstATempoAndAMetreInThreesDoesNot) {
    std::vector<Sound> sounds;
    const double slot = 6000.0 / 95.0;
    int note = 0;
    int at = 0;
    for (const int length : {3, 3, 5, 3, 3, 5, 3, 2, 1, 5, 3, 2, 1, 5}) {
        const double from = 100.0 + at * slot;
        sounds.push_back({note++ % 7, static_cast<std::size_t>(from),
                          static_cast<std::size_t>(from + length * slot - 12.0)});
        at += length == 5 ? 6 : length;
    }
    EXPECT_NEAR(transcribe(framesOf(sounds, 4000), {}).slotSeconds, 60.0 / 95.0, 0.005);
}

TEST(Transcription, TellsWhatWasUnsure) {
    std::vector<Sound> sounds = tune(60.0);
    sounds[2].from += 23;
    sounds[5].to -= 84;
    const Transcription written = transcribe(framesOf(sounds), 100.0);
    ASSERT_EQ(written.notes.size(), 7u);
    for (std::size_t index = 0; index < written.notes.size(); ++index) {
        EXPECT_EQ(written.notes[index].isSureOfStart, index != 2) << index;
        EXPECT_EQ(written.notes[index].isSureOfLength, index != 2 && index != 5) << index;
    }
}

TEST(Transcription, RefusesWhatIsNoMelody) {
    EXPECT_EQ(failureOf([] { transcribe({}, {}); }), "it is no melody: 0 notes heard in it");
    const auto oneNote = [] { transcribe(framesOf({{0, 100, 150}}), {}); };
    EXPECT_EQ(failureOf(oneNote), "it is no melody: 1 note heard in it");
    std::vector<Sound> uneven;
    std::size_t at = 100;
    for (int index = 0; index < 30; ++index) {
        const auto length = static_cast<std::size_t>(20 + index * index * 37 % 71);
        uneven.push_back({index % 7, at, at + length});
        at += length;
    }
    EXPECT_EQ(failureOf([&] { transcribe(framesOf(uneven, 4000), {}); }),
              "it is no melody: its notes keep to no beat");
    EXPECT_THAT(failureOf([&] { transcribe(framesOf(uneven, 4000), 100.0); }),
                testing::EndsWith("no beat of that tempo"));
}
