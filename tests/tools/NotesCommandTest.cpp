#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/Outcome.h"
#include "tools/zanto-notes/Transposition.h"
#include "tools/zanto-notes/notesCommand.h"

namespace {

Outcome run(const std::vector<std::string>& arguments) {
    return outcomeOf("zanto-notes", [&] { return notesCommand(arguments); });
}

void expectRefused(const std::vector<std::string>& arguments, const std::string& error) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "zanto-notes: " + error + "\n");
}

}  // namespace

// Tables and their instruments are shown by the example of the documentation, and by NotesTableTest.

TEST(NotesCommand, HelpListsTheKnownInstrumentsAndOptionsComeInAnyOrder) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const Transposition& known : transpositions()) {
        EXPECT_NE(help.out.find(known.instrument), std::string::npos);
    }
    EXPECT_EQ(run({"--version"}).out.find("zanto-notes "), 0u);
    const std::string plain = run({}).out;
    EXPECT_EQ(run({"--a4", "440", "--transpose", "0", "--range", "C3", "B5"}).out, plain);
    const Outcome outcome = run({"--range", "F4", "G5", "--instrument", "alto-recorder", "--a4", "415"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, run({"--a4", "415", "--transpose", "5", "--range", "F4", "G5"}).out);
    EXPECT_NE(outcome.out, plain);
    // The range is judged in the tuning asked for.
    EXPECT_EQ(run({"--range", "A2", "B5", "--a4", "460"}).status, 0);
}

TEST(NotesCommand, RefusesWhatItCannotMakeATableOf) {
    for (const std::string tuning : {"379.9", "480.1", "nan", "inf", "-440", "440Hz"}) {
        expectRefused({"--a4", tuning}, "--a4: \"" + tuning + "\" is no tuning from 380 to 480 Hz");
    }
    for (const std::string semitones : {"1.5", "two", "37", "-37"}) {
        expectRefused({"--transpose", semitones},
                      "--transpose: \"" + semitones + "\" is no whole number from -36 to 36");
    }
    EXPECT_EQ(run({"--a4", "380"}).status, 0);
    EXPECT_EQ(run({"--a4", "480"}).status, 0);
    expectRefused({"--range", "C5", "B4"}, "--range: C5 is above B4");
    expectRefused({"--range", "C5"}, "--range: two notes are needed, such as C3 B5");
    expectRefused({"--range"}, "--range wants a value");
    expectRefused({"--range", "H3", "B5"}, "--range: \"H3\" is no note such as C4, F#3 or Bb5");
    expectRefused({"--range", "C3", "G#10"}, "--range: \"G#10\" is no note such as C4, F#3 or Bb5");
    expectRefused({"--range", "A2", "B5"},
                  "--range: A2 at 110.0 Hz is outside of what is scanned, 111.3 to 23982.4 Hz");
    expectRefused({"--", "--range", "C3", "B5"}, "\"--range\" is not an option");
    expectRefused({"--transpose", "2", "--instrument", "horn"},
                  "--instrument: not together with --transpose");
}

TEST(Transposition, KnowsInstrumentsAndReadsPitches) {
    EXPECT_EQ(transpositionOf("b-flat-clarinet"), -2);
    EXPECT_EQ(transpositionOf("alto-saxophone"), -9);
    EXPECT_EQ(transpositionOf("horn"), -7);
    EXPECT_EQ(transpositionOf("Horn"), std::nullopt);
    EXPECT_EQ(parsePitch("A4"), 69);
    EXPECT_EQ(parsePitch("B5"), 83);
    EXPECT_EQ(parsePitch("F#3"), 54);
    EXPECT_EQ(parsePitch("Bb5"), 82);
    for (const std::string text : {"", "C", "c4", "C#", "H4", "C44", "Cx4", "C-1", "C4 "}) {
        EXPECT_EQ(parsePitch(text), std::nullopt) << text;
    }
}
