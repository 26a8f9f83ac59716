#include "analysis/Notes.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

Notes table(const std::string& text) {
    Notes notes;
    std::istringstream in(text);
    EXPECT_TRUE(notes.load(in));
    return notes;
}

}  // namespace

TEST(NoteID, BehavesAsItsInteger) {
    const Notes::NoteID none;
    EXPECT_EQ(none, -1);
    const Notes::NoteID g = 4;
    EXPECT_EQ(g, 4);
    EXPECT_EQ(2.0 * g / 7.0, 8.0 / 7.0);
    EXPECT_LT(none, Notes::NoteID(0));
    EXPECT_EQ(*std::set<Notes::NoteID>({6, g, none, 2}).begin(), -1);
    EXPECT_EQ(std::set<Notes::NoteID>({3, 3, 3}).size(), 1u);
    EXPECT_EQ(sizeof(Notes::NoteID), 4u);
}

TEST(Notes, NamesGiveIdsAndIdsGiveNames) {
    const std::string names = "CDEFGAB";
    for (int id = 0; id < 7; ++id) {
        const std::string name(1, names[static_cast<std::size_t>(id)]);
        EXPECT_EQ(Notes::nameToId(name), id);
        EXPECT_EQ(Notes::idToName(id), name);
    }
}

TEST(Notes, LowerCaseAndAccidentalsAndOtherStringsAreNoNames) {
    for (const char* const name : {"c", "C#", "", "H", "CC", " C", "C4"}) {
        EXPECT_EQ(Notes::nameToId(name), -1) << name;
    }
    EXPECT_EQ(Notes::nameToId(std::string("C\0", 2)), -1);
}

TEST(Notes, OtherIdsHaveNoName) {
    for (const int id : {7, -1, -2, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(Notes::idToName(id), "") << id;
    }
}

/// A note table, and what it makes of some frequencies in Hz.
struct Example {
    const char* name;
    const char* table;
    std::vector<std::pair<float, int>> keys;
};

class Table : public testing::TestWithParam<Example> {};

TEST_P(Table, GivesTheseNotes) {
    const Notes notes = table(GetParam().table);
    for (const auto& [frequencyHz, note] : GetParam().keys) {
        EXPECT_EQ(notes.getKey(frequencyHz), note) << frequencyHz << " Hz";
    }
}

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// Any other table is compared with a plain list by fuzz.note_table.
const Example examples[] = {
    {"TheNearestWithinFiveHertz", "C 1 261.63 D 1 293.66", {{263.0f, 0}, {290.0f, 1}, {277.0f, -1}}},
    {"HalfwayTheUpperOneWins", "C 1 100 D 1 108", {{104.0f, 1}, {103.9f, 0}, {104.1f, 1}}},
    {"FiveHertzAtEveryPitchAndNotFive",
     "A 3 20 440 14080",
     {{24.99f, 5}, {15.01f, 5}, {25.0f, -1}, {15.0f, -1}, {14084.99f, 5}, {14085.0f, -1}, {14075.0f, -1}}},
    {"WhatIsNoFrequency", "A 1 440 B 1 494", {{notANumber, -1}, {infinity, -1}, {-infinity, -1}}},
    {"ACountTooLarge", "A 99999999999 440", {{440.0f, -1}}},
    {"ALargeCount", "A 2000000000 440", {{440.0f, 5}}},
    {"AFrequencyTooLarge", "A 2 110 1e99", {{110.0f, 5}, {std::numeric_limits<float>::max(), -1}}},
};

INSTANTIATE_TEST_SUITE_P(Notes, Table, testing::ValuesIn(examples),
                         [](const auto& example) { return std::string(example.param.name); });

TEST(Notes, OfSemitoneIsTheWhiteKeyOrNoneWhateverTheOctave) {
    for (const int c : {-132, -12, 0, 60, 120}) {
        std::string octave;
        for (int semitone = 0; semitone < 12; ++semitone) {
            octave += Notes::idToName(Notes::ofSemitone(c + semitone)) + ".";
        }
        EXPECT_EQ(octave, "C..D..E.F..G..A..B.") << c;
    }
}

TEST(Notes, LoadAddsToWhatIsThere) {
    Notes notes = table("A 1 440");
    std::istringstream more("B\n1\n494\n");
    EXPECT_TRUE(notes.load(more));
    EXPECT_EQ(notes.getKey(440.0f), 5);
    EXPECT_EQ(notes.getKey(494.0f), 6);
}

TEST(Notes, MissingFileGivesAnEmptyTable) {
    Notes notes;
    std::istringstream in("A 1 440");
    in.setstate(std::ios::failbit);
    EXPECT_TRUE(notes.load(in));
    EXPECT_EQ(notes.getKey(440.0f), -1);
}
