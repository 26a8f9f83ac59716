#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "analysis/NoteEstimation.h"
#include "tools/zanto-notes/TableModel.h"

namespace {

std::string textOf(TableModel const& model) {
    std::ostringstream text;
    writeTable(text, tableRows(model));
    return text.str();
}

Notes tableOf(TableModel const& model) {
    Notes notes;
    std::istringstream in(textOf(model));
    notes.load(in);
    return notes;
}

NoteEstimation const& estimation() {
    static NoteEstimation const made;
    return made;
}

/// Where `frequencyHz` lies among the lines of the game's spectrum.
double lineOf(double frequencyHz) {
    return frequencyHz / static_cast<double>(estimation().indexToFrequency(1));
}

/// The note that the game hears in a sine: its peak is reported at the nearest line.
Notes::NoteID heardAt(Notes const& notes, double frequencyHz) {
    return notes.getKey(estimation().indexToFrequency(static_cast<int>(std::lround(lineOf(frequencyHz)))));
}

constexpr int pitchOfC3 = 48;
constexpr int pitchOfB5 = 83;

int naturalOf(int pitch) {
    static std::map<int, int> const naturals = {{0, 0}, {2, 1}, {4, 2}, {5, 3}, {7, 4}, {9, 5}, {11, 6}};
    auto const found = naturals.find(pitch % 12);
    return found == naturals.end() ? -1 : found->second;
}

}  // namespace

TEST(NotesTable, theShippedTableIsTheDefaultOneByteForByte) {
    std::ifstream in("notes.txt", std::ios::binary);
    std::ostringstream shipped;
    shipped << in.rdbuf();
    EXPECT_EQ(shipped.str(), textOf(TableModel()));
}

TEST(NotesTable, everyNaturalInTuneIsHeardAsItself) {
    Notes const notes = tableOf(TableModel());
    for (int pitch = pitchOfC3; pitch <= pitchOfB5; ++pitch) {
        if (naturalOf(pitch) != -1) {
            EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, pitch)), naturalOf(pitch)) << pitch;
        }
    }
}

TEST(NotesTable, everyNaturalAFifthOfASemitoneOutOfTuneIsHeardAsItselfFromG3On) {
    Notes const notes = tableOf(TableModel());
    for (int pitch = pitchOfC3 + 7; pitch <= pitchOfB5; ++pitch) {
        for (double const cents : {-20.0, 20.0}) {
            if (naturalOf(pitch) != -1) {
                double const playedHz = pitchFrequencyHz(440.0, pitch) * std::exp2(cents / 1200.0);
                EXPECT_EQ(heardAt(notes, playedHz), naturalOf(pitch)) << pitch << " " << cents;
            }
        }
    }
}

TEST(NotesTable, sharpsFromC4OnAreHeardAsNoNoteWhenTheyAreInTune) {
    Notes const notes = tableOf(TableModel());
    for (int pitch = pitchOfC3 + 12; pitch <= pitchOfB5; ++pitch) {
        if (naturalOf(pitch) == -1) {
            EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, pitch)), -1) << pitch;
        }
    }
}

TEST(NotesTable, listsNothingButCentresOfScannedLines) {
    for (TableRow const& row : tableRows(TableModel())) {
        for (double const frequencyHz : row.frequenciesHz) {
            double const line = lineOf(frequencyHz);
            EXPECT_NEAR(line, std::round(line), 1e-9);
            EXPECT_GE(line, 10.0);
            EXPECT_LE(line, 2046.0);
        }
    }
}

TEST(NotesTable, secondHarmonicsOfTheTopOctaveStandForTheirNote) {
    Notes const notes = tableOf(TableModel());
    for (int pitch = pitchOfB5 - 6; pitch <= pitchOfB5; ++pitch) {
        if (naturalOf(pitch) != -1) {
            EXPECT_EQ(heardAt(notes, 2.0 * pitchFrequencyHz(440.0, pitch)), naturalOf(pitch)) << pitch;
        }
    }
}

TEST(NotesTable, followsTheTuning) {
    TableModel baroque;
    baroque.a4Hz = 415.0;
    Notes const notes = tableOf(baroque);
    EXPECT_EQ(heardAt(notes, 415.0), 5);
    EXPECT_EQ(heardAt(notes, 2.0 * 415.0), 5);
    EXPECT_NE(heardAt(notes, 440.0), 5);
}

TEST(NotesTable, aTransposedTableHearsWhatIsReadNotWhatSounds) {
    TableModel clarinet;
    clarinet.transposeSemitones = -2;
    Notes const notes = tableOf(clarinet);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 70)), 0);   // sounding B flat 4, written C
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 72)), 1);   // sounding C5, written D
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 71)), -1);  // sounding B4, written C sharp
}

TEST(NotesTable, octavesOfTranspositionChangeNothing) {
    TableModel up;
    up.transposeSemitones = 12;
    EXPECT_EQ(textOf(up), textOf(TableModel()));
    up.transposeSemitones = -24;
    EXPECT_EQ(textOf(up), textOf(TableModel()));
}

TEST(NotesTable, keepsToTheRange) {
    TableModel fifth;
    fifth.lowestPitch = 72;
    fifth.highestPitch = 79;
    Notes const notes = tableOf(fifth);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 79)), 4);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 81)), -1);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 71)), -1);
}

TEST(NotesTable, aRangeAboveTheScansEndListsTheNotesThemselves) {
    TableModel piccolo;
    piccolo.lowestPitch = 96;
    piccolo.highestPitch = 107;
    Notes const notes = tableOf(piccolo);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 105)), 5);
    EXPECT_EQ(heardAt(notes, pitchFrequencyHz(440.0, 81)), -1);
}

TEST(NotesTable, aRangeOfOneSharpIsEmpty) {
    TableModel sharp;
    sharp.lowestPitch = sharp.highestPitch = 73;
    EXPECT_EQ(textOf(sharp), "");
}
