#include "analysis/Notes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

Notes table(std::string const& text) {
    Notes notes;
    std::istringstream in(text);
    EXPECT_TRUE(notes.load(in));
    return notes;
}

}  // namespace

TEST(NoteID, BehavesAsItsInteger) {
    Notes::NoteID const none;
    EXPECT_EQ(none, -1);
    Notes::NoteID const g = 4;
    EXPECT_EQ(g, 4);
    EXPECT_EQ(2.0 * g / 7.0, 8.0 / 7.0);
    EXPECT_LT(none, Notes::NoteID(0));
    EXPECT_EQ(*std::set<Notes::NoteID>({6, g, none, 2}).begin(), -1);
    EXPECT_EQ(std::set<Notes::NoteID>({3, 3, 3}).size(), 1u);
    EXPECT_EQ(sizeof(Notes::NoteID), 4u);
}

TEST(Notes, NamesGiveIdsAndIdsGiveNames) {
    std::string const names = "CDEFGAB";
    for (int id = 0; id < 7; ++id) {
        std::string const name(1, names[static_cast<std::size_t>(id)]);
        EXPECT_EQ(Notes::nameToId(name), id);
        EXPECT_EQ(Notes::idToName(id), name);
    }
}

TEST(Notes, LowerCaseAndAccidentalsAndOtherStringsAreNoNames) {
    for (char const* const name : {"c", "C#", "", "H", "CC", " C", "C4"}) {
        EXPECT_EQ(Notes::nameToId(name), -1) << name;
    }
    EXPECT_EQ(Notes::nameToId(std::string("C\0", 2)), -1);
}

TEST(Notes, OtherIdsHaveNoName) {
    for (int const id : {7, -1, -2, 100, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(Notes::idToName(id), "") << id;
    }
}

TEST(Notes, NearestEntryWithinFiveHertzIsFound) {
    Notes const notes = table("C 1 261.63 D 1 293.66");
    EXPECT_EQ(notes.getKey(263.0f), 0);
    EXPECT_EQ(notes.getKey(290.0f), 1);
    EXPECT_EQ(notes.getKey(277.0f), -1);
}

TEST(Notes, HalfwayBetweenTwoEntriesTheUpperOneWins) {
    Notes const notes = table("C 1 100 D 1 108");
    EXPECT_EQ(notes.getKey(104.0f), 1);
    EXPECT_EQ(notes.getKey(103.9f), 0);
    EXPECT_EQ(notes.getKey(104.1f), 1);
}

TEST(Notes, BelowTheLowestEntryOnlyThatOneCounts) {
    Notes const notes = table("E 1 100 F 1 104");
    EXPECT_EQ(notes.getKey(96.0f), 2);
    EXPECT_EQ(notes.getKey(95.0f), -1);
    EXPECT_EQ(notes.getKey(-100.0f), -1);
}

TEST(Notes, AboveTheHighestEntryOnlyThatOneCounts) {
    Notes const notes = table("E 1 100 F 1 104");
    EXPECT_EQ(notes.getKey(108.9f), 3);
    EXPECT_EQ(notes.getKey(109.0f), -1);
}

TEST(Notes, FrequencyOfTheTableItselfGivesItsNote) {
    Notes const notes = table("A 3 110 220 440 G 2 196 392 B 1 442");
    EXPECT_EQ(notes.getKey(110.0f), 5);
    EXPECT_EQ(notes.getKey(392.0f), 4);
    EXPECT_EQ(notes.getKey(440.0f), 5);
    EXPECT_EQ(notes.getKey(442.0f), 6);
}

TEST(Notes, ToleranceIsFiveHertzAtEveryPitchAndExcludesFive) {
    Notes const notes = table("A 3 20 440 14080");
    for (float const frequencyHz : {20.0f, 440.0f, 14080.0f}) {
        EXPECT_EQ(notes.getKey(frequencyHz + 4.99f), 5);
        EXPECT_EQ(notes.getKey(frequencyHz - 4.99f), 5);
        EXPECT_EQ(notes.getKey(frequencyHz + 5.0f), -1);
        EXPECT_EQ(notes.getKey(frequencyHz - 5.0f), -1);
    }
}

TEST(Notes, EmptyTableMatchesNothing) {
    Notes const notes;
    EXPECT_EQ(notes.getKey(440.0f), -1);
    EXPECT_EQ(notes.getKey(0.0f), -1);
}

TEST(Notes, WhatIsNoFrequencyMatchesNothing) {
    Notes const notes = table("A 1 440 B 1 494");
    EXPECT_EQ(notes.getKey(std::numeric_limits<float>::quiet_NaN()), -1);
    EXPECT_EQ(notes.getKey(std::numeric_limits<float>::infinity()), -1);
    EXPECT_EQ(notes.getKey(-std::numeric_limits<float>::infinity()), -1);
}

TEST(Notes, NegativeCountEndsTheTable) {
    Notes const notes = table("A 2 110 220 B -1 G 1 196");
    EXPECT_EQ(notes.getKey(110.0f), 5);
    EXPECT_EQ(notes.getKey(220.0f), 5);
    EXPECT_EQ(notes.getKey(196.0f), -1);
    EXPECT_EQ(notes.getKey(1.0f), -1);
}

TEST(Notes, CountOfZeroIsARecordWithoutFrequencies) {
    Notes const notes = table("A 0 G 1 196");
    EXPECT_EQ(notes.getKey(196.0f), 4);
}

TEST(Notes, LaterRecordTakesOverAnEqualFrequency) {
    Notes const notes = table("A 1 440 B 2 440 494");
    EXPECT_EQ(notes.getKey(440.0f), 6);
}

TEST(Notes, UnknownNameMakesItsFrequenciesMatchNoNote) {
    Notes const notes = table("A 2 435 440 X 1 438");
    EXPECT_EQ(notes.getKey(438.5f), -1);
    EXPECT_EQ(notes.getKey(440.0f), 5);
}

TEST(Notes, LoadAddsToWhatIsThere) {
    Notes notes = table("A 1 440");
    std::istringstream more("B\n1\n494\n");
    EXPECT_TRUE(notes.load(more));
    EXPECT_EQ(notes.getKey(440.0f), 5);
    EXPECT_EQ(notes.getKey(494.0f), 6);
}

TEST(Notes, NothingIsAddedForAReadThatFails) {
    // A table that ends, or goes wrong, before each of its words in turn.
    Notes const withoutCount = table("A 1 440 B");
    EXPECT_EQ(withoutCount.getKey(440.0f), 5);
    EXPECT_EQ(withoutCount.getKey(0.0f), -1);
    Notes const badCount = table("A many 440");
    EXPECT_EQ(badCount.getKey(440.0f), -1);
    EXPECT_EQ(badCount.getKey(0.0f), -1);
    Notes const withoutFrequency = table("A 3 110 220");
    EXPECT_EQ(withoutFrequency.getKey(110.0f), 5);
    EXPECT_EQ(withoutFrequency.getKey(220.0f), 5);
    EXPECT_EQ(withoutFrequency.getKey(0.0f), -1);
    Notes const badFrequency = table("A 3 110 high 440 B 1 494");
    EXPECT_EQ(badFrequency.getKey(110.0f), 5);
    EXPECT_EQ(badFrequency.getKey(0.0f), -1);
    EXPECT_EQ(badFrequency.getKey(440.0f), -1);
    EXPECT_EQ(badFrequency.getKey(494.0f), -1);
}

TEST(Notes, NumbersTooLargeToReadAddNothing) {
    Notes const hugeCount = table("A 99999999999 440");
    EXPECT_EQ(hugeCount.getKey(440.0f), -1);
    Notes const hugeFrequency = table("A 2 110 1e99");
    EXPECT_EQ(hugeFrequency.getKey(110.0f), 5);
    EXPECT_EQ(hugeFrequency.getKey(std::numeric_limits<float>::max()), -1);
    EXPECT_EQ(table("A 2000000000 440").getKey(440.0f), 5);
}

TEST(Notes, MissingFileGivesAnEmptyTable) {
    Notes notes;
    std::istringstream in("A 1 440");
    in.setstate(std::ios::failbit);
    EXPECT_TRUE(notes.load(in));
    EXPECT_EQ(notes.getKey(440.0f), -1);
}

TEST(Notes, KeyIsTheOneThatAWalkThroughTheWholeTableFinds) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        // On a grid of half a hertz, so that ties and distances of exactly 5 Hz are common.
        auto const frequency = [&random] { return static_cast<float>(random() % 400) * 0.5f; };
        std::vector<std::pair<float, int>> entries;
        std::ostringstream text;
        for (unsigned i = 1 + static_cast<unsigned>(random() % 12); i > 0; --i) {
            entries.emplace_back(frequency(), static_cast<int>(random() % 7));
            text << Notes::idToName(entries.back().second) << " 1 " << entries.back().first << "\n";
        }
        Notes const notes = table(text.str());
        for (int query = 0; query < 200; ++query) {
            float const asked = frequency();
            // The nearest wins; of two as near the higher one, and of two at one frequency the later one.
            std::pair<float, int> best(std::numeric_limits<float>::infinity(), -1);
            for (auto const& entry : entries) {
                float const distance = std::abs(entry.first - asked);
                float const bestDistance = std::abs(best.first - asked);
                if (distance < bestDistance || (distance == bestDistance && entry.first >= best.first)) {
                    best = entry;
                }
            }
            int const expected = std::abs(best.first - asked) < 5.0f ? best.second : -1;
            ASSERT_EQ(notes.getKey(asked), expected) << "at " << asked << " Hz in\n" << text.str();
        }
    }
}
