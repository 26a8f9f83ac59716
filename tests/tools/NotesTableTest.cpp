#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "analysis/NoteEstimation.h"
#include "tools/zanto-notes/TableModel.h"

namespace {

std::string textOf(const TableModel& model) {
    std::ostringstream text;
    writeTable(text, tableRows(model));
    return text.str();
}

Notes tableOf(const TableModel& model) {
    Notes notes;
    std::istringstream in(textOf(model));
    notes.load(in);
    return notes;
}

/// How far apart the lines of the game's spectrum are.
double lineHz() {
    static const NoteEstimation estimation;
    return static_cast<double>(estimation.indexToFrequency(1));
}

/// The note that the game hears in a sine: its peak is reported at the nearest line.
Notes::NoteID heardAt(const Notes& notes, double frequencyHz) {
    return notes.getKey(static_cast<float>(lineHz() * std::round(frequencyHz / lineHz())));
}

constexpr int pitchOfC3 = 48;
constexpr int pitchOfB5 = 83;

}  // namespace

// What a transposed table hears is shown by the example of the documentation.

TEST(NotesTable, TheShippedTableIsTheDefaultOneAndListsNothingButCentresOfScannedLines) {
    std::ifstream in("notes.txt", std::ios::binary);
    std::ostringstream shipped;
    shipped << in.rdbuf();
    EXPECT_EQ(shipped.str(), textOf(TableModel()));
    for (const TableRow& row : tableRows(TableModel())) {
        for (const double frequencyHz : row.frequenciesHz) {
            const double line = frequencyHz / lineHz();
            EXPECT_NEAR(line, std::round(line), 1e-9);
            EXPECT_GE(line, 10.0);
            EXPECT_LE(line, 2046.0);
        }
    }
}

TEST(NotesTable, NaturalsAreHeardAsThemselvesAndSharpsAsNoNote) {
    const Notes notes = tableOf(TableModel());
    for (int pitch = pitchOfC3; pitch <= pitchOfB5; ++pitch) {
        const bool isNatural = Notes::ofSemitone(pitch) != -1;
        for (const double cents : {-20.0, 0.0, 20.0}) {
            const bool isOutOfTune = cents != 0.0;
            // The lowest notes are too close together for that.
            if (isNatural ? isOutOfTune && pitch < pitchOfC3 + 7 : isOutOfTune || pitch < pitchOfC3 + 12) {
                continue;
            }
            const double playedHz = pitchFrequencyHz(440.0, pitch) * std::exp2(cents / 1200.0);
            EXPECT_EQ(heardAt(notes, playedHz), Notes::ofSemitone(pitch)) << pitch << " " << cents;
        }
        if (isNatural && pitch >= pitchOfB5 - 6) {  // its second harmonic stands for it
            EXPECT_EQ(heardAt(notes, 2.0 * pitchFrequencyHz(440.0, pitch)), Notes::ofSemitone(pitch))
                << pitch;
        }
    }
}

TEST(NotesTable, FollowsTheTuningAndKeepsToTheRangeAboveTheScansEndToo) {
    TableModel baroque;
    baroque.a4Hz = 415.0;
    const Notes notes = tableOf(baroque);
    EXPECT_EQ(heardAt(notes, 415.0), 5);
    EXPECT_EQ(heardAt(notes, 2.0 * 415.0), 5);
    EXPECT_NE(heardAt(notes, 440.0), 5);
    for (const int semitones : {12, -24}) {  // octaves of transposition change nothing
        TableModel octaves;
        octaves.transposeSemitones = semitones;
        EXPECT_EQ(textOf(octaves), textOf(TableModel()));
    }
    const auto ranging = [](int lowest, int highest) {
        TableModel model;
        model.lowestPitch = lowest;
        model.highestPitch = highest;
        return model;
    };
    const Notes fifth = tableOf(ranging(72, 79));
    EXPECT_EQ(heardAt(fifth, pitchFrequencyHz(440.0, 79)), 4);
    EXPECT_EQ(heardAt(fifth, pitchFrequencyHz(440.0, 81)), -1);
    EXPECT_EQ(heardAt(fifth, pitchFrequencyHz(440.0, 71)), -1);
    const Notes piccolo = tableOf(ranging(96, 107));
    EXPECT_EQ(heardAt(piccolo, pitchFrequencyHz(440.0, 105)), 5);
    EXPECT_EQ(heardAt(piccolo, pitchFrequencyHz(440.0, 81)), -1);
    EXPECT_EQ(textOf(ranging(73, 73)), "");  // a sharp alone
}
