#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/game/SongFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::string_literals;

namespace {

const char* const badInput = "Song: input is not good.\n";
const char* const badTiming = "Error loading timing information.\n";
const char* const badNote = "Song: Got invalid note.\n";
const char* const nothing = "";

/// 2 * count - 1 characters.
std::string manyNotes(int count) {
    std::string line = "C";
    for (int i = 1; i < count; ++i) {
        line += " C";
    }
    return line;
}

const std::vector<std::string> manyC(512, "C/1");

/// A song file, what it reports (nothing when it is read whole) and the slots that it leaves.
struct Example {
    const char* name;
    std::string contents;
    const char* report;
    Words slots;
};

class SongLoadingTest : public SongFixture {};
class Loading : public SongFixture, public testing::WithParamInterface<Example> {};

TEST_P(Loading, GivesTheseSlotsAndReport) {
    load("1 1\nB");
    EXPECT_EQ(load(GetParam().contents), GetParam().report == std::string(nothing));
    EXPECT_EQ(errors, GetParam().report);
    EXPECT_EQ(slots(), GetParam().slots);
}

// Any other file is compared with a plain reading by fuzz.song_file.
const Example examples[] = {
    {"OneSlotPerLineAndOneForTheFinalLineBreak", "1 1\nC\nE2\n\n", nothing, {{"C/1"}, {"E/2"}, {}, {}}},
    {"ChordsRestsAndLengths", "120 4\nC E G\n\nD2\n", nothing, {{"C/1", "E/1", "G/1"}, {}, {"D/2"}, {}}},
    {"ALastLineWithoutALineBreak", "1 1\nC\nE2", nothing, {{"C/1"}, {"E/2"}}},
    {"AHeaderOfWords", "abc\nC\n", badTiming, {}},
    {"AHeaderBeyondAnInt", "99999999999 1\nC\n", badTiming, {}},
    {"AnInvalidNote", "1 1\nD\n\nC H\nE\n", badNote, {{"D/1"}, {}}},
    {"ATrailingBlank", "1 1\nD\nC \n", badNote, {{"D/1"}}},
    {"ACarriageReturn", "1 1\r\nC\r\n", badNote, {}},
    {"AnyWhitespaceBetween", "1 1\n  C \t E\v\f\rG2", nothing, {{"C/1", "E/1", "G/2"}}},
    {"LengthsAsAtoiReadsThem",
     "1 1\nG4 Gx G-2 C# G+3 G3x G007 G0x10",
     nothing,
     {{"G/4", "G/0", "G/-2", "C/0", "G/3", "G/3", "G/7", "G/0"}}},
    {"LengthsBeyondAnIntLoseTheirUpperBits",
     "1 1\nG2147483647 G2147483648 G-2147483649 G4294967297 G99999999999999999999 G-99999999999999999999",
     nothing,
     {{"G/2147483647", "G/-2147483648", "G/2147483647", "G/1", "G/-1", "G/0"}}},
    {"ANulByteEndsItsLine", "1 1\nC\0 H\nD\0\n\0C\nE"s, nothing, {{"C/1"}, {"D/1"}, {}, {"E/1"}}},
    {"ANulByteBehindABlank", "1 1\nC \0D\n"s, badNote, {}},
    {"ALineOf1023Characters", "1 1\n" + manyNotes(512) + "\nD", nothing, {manyC, {"D/1"}}},
    {"ALineOf1024EndsTheSong", "1 1\nE\n" + manyNotes(512) + "2\nD\nH\n", nothing, {{"E/1"}, manyC}},
    {"ALineOf1024AtTheEnd", "1 1\n" + manyNotes(512) + "2", nothing, {manyC}},
    {"ALineOf100000EndsTheSong", "1 1\n" + manyNotes(50000) + "\nD\n", nothing, {manyC}},
    {"ACutBehindABlank", "1 1\nE\n " + manyNotes(512) + "\n", badNote, {{"E/1"}}},
    {"ACutInsideALength",
     "1 1\n" + std::string(1000, ' ') + "G" + std::string(30, '0') + "9\nD\n",
     nothing,
     {{"G/0"}}},
    {"ALongHeaderLine", "1 1" + std::string(1023, ' ') + "\nC", nothing, {{"C/1"}}},
    {"AHeaderLineBeyondTheBuffer", "1 1" + std::string(1024, ' ') + "\nC", nothing, {}},
};

INSTANTIATE_TEST_SUITE_P(, Loading, testing::ValuesIn(examples),
                         [](const auto& example) { return std::string(example.param.name); });

TEST_F(SongLoadingTest, ANewSongAndWhatCannotBeOpenedHaveNoSlots) {
    EXPECT_THAT(slots(), IsEmpty());
    testing::internal::CaptureStderr();
    EXPECT_FALSE(song.load("nowhere/song.txt"));
    EXPECT_FALSE(song.load(""));
    std::ifstream in(folder.write("song.txt", "1 1\nC"));
    in.setstate(std::ios::failbit);
    EXPECT_FALSE(song.load(in));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string(badInput) + badInput + badInput);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, AFolderCanBeOpenedButHasNoTiming) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(song.load(folder.path().string().c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, LoadingAStreamAddsToTheSong) {
    ASSERT_TRUE(load("1 1\nD"));
    std::ifstream in(folder.write("more.txt", "1 1\nE"));
    EXPECT_TRUE(song.load(in));
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("D/1"), ElementsAre("E/1")));
}

TEST_F(SongLoadingTest, ReloadingClearsHitsAndPenalties) {
    ASSERT_TRUE(load("1 1\nC"));
    song.updateScore(score, 0.1, holding({noteC, noteD}, 0.5f));
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1!", "D/1x")));
    ASSERT_TRUE(load("1 1\nC"));
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
}

}  // namespace
