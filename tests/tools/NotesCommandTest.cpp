#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tools/zanto-notes/Transposition.h"
#include "tools/zanto-notes/notesCommand.h"

namespace {

struct Outcome {
    int status;
    std::string out;
    std::string err;
};

Outcome run(std::vector<std::string> const& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    int const status = notesCommand(arguments, out, err);
    return {status, out.str(), err.str()};
}

void expectRefused(std::vector<std::string> const& arguments, std::string const& error) {
    Outcome const outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "zanto-notes: " + error + "\n");
}

}  // namespace

TEST(NotesCommand, writesATableAndNothingElse) {
    Outcome const outcome = run({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out.substr(0, 10), "C 1 128.9\n");
    EXPECT_EQ(outcome.err, "");
}

TEST(NotesCommand, givesTheSameTableForTheDefaultsSpeltOut) {
    EXPECT_EQ(run({"--a4", "440", "--transpose", "0", "--range", "C3", "B5"}).out, run({}).out);
    EXPECT_EQ(run({"--instrument", "concert-pitch"}).out, run({}).out);
}

TEST(NotesCommand, takesTheOptionsInAnyOrder) {
    Outcome const outcome = run({"--range", "F4", "G5", "--instrument", "alto-recorder", "--a4", "415"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, run({"--a4", "415", "--transpose", "5", "--range", "F4", "G5"}).out);
    EXPECT_NE(outcome.out, run({}).out);
}

TEST(NotesCommand, refusesATuningThatNobodyUses) {
    for (std::string const tuning : {"379.9", "480.1", "nan", "inf", "-440", "440Hz"}) {
        expectRefused({"--a4", tuning}, "--a4: \"" + tuning + "\" is no tuning from 380 to 480 Hz");
    }
    EXPECT_EQ(run({"--a4", "380"}).status, 0);
    EXPECT_EQ(run({"--a4", "480"}).status, 0);
}

TEST(NotesCommand, refusesATranspositionThatIsNoWholeNumberOfSemitones) {
    for (std::string const semitones : {"1.5", "two", "37", "-37"}) {
        expectRefused({"--transpose", semitones},
                      "--transpose: \"" + semitones + "\" is no whole number from -36 to 36");
    }
}

TEST(NotesCommand, refusesAnUnknownInstrumentAndListsTheKnownOnes) {
    Outcome const outcome = run({"--instrument", "kazoo"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.find("zanto-notes: --instrument: \"kazoo\" is not one of a-clarinet, "), 0u);
    for (Transposition const& known : transpositions()) {
        EXPECT_NE(outcome.err.find(known.instrument), std::string::npos);
    }
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
}

TEST(NotesCommand, refusesARangeThatIsReversedOrNoneOrOutOfReach) {
    expectRefused({"--range", "C5", "B4"}, "--range: C5 is above B4");
    expectRefused({"--range", "C5"}, "--range: two notes are needed, such as C3 B5");
    expectRefused({"--range"}, "--range wants a value");
    expectRefused({"--range", "H3", "B5"}, "--range: \"H3\" is no note such as C4, F#3 or Bb5");
    expectRefused({"--range", "C3", "B55"}, "--range: \"B55\" is no note such as C4, F#3 or Bb5");
    expectRefused({"--range", "A2", "B5"},
                  "--range: A2 at 110.0 Hz is outside of what is scanned, 111.3 to 23982.4 Hz");
    expectRefused({"--range", "C3", "G#10"}, "--range: \"G#10\" is no note such as C4, F#3 or Bb5");
}

TEST(NotesCommand, judgesTheRangeInTheTuningAskedFor) {
    EXPECT_EQ(run({"--range", "A2", "B5", "--a4", "460"}).status, 0);
    EXPECT_EQ(run({"--a4", "460", "--range", "A2", "B5"}).status, 0);
}

TEST(NotesCommand, refusesWhatItDoesNotKnowAndWhatContradictsItself) {
    expectRefused({"--a4"}, "--a4 wants a value");
    expectRefused({"--tuning", "440"}, "unknown option --tuning");
    expectRefused({"notes.txt"}, "\"notes.txt\" is none of its options");
    expectRefused({"--transpose", "2", "--instrument", "horn"},
                  "--instrument: not together with --transpose");
}

TEST(NotesCommand, tellsAboutItself) {
    Outcome const help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out.find("--a4 HZ"), std::string::npos);
    EXPECT_NE(help.out.find("alto-recorder"), std::string::npos);
    EXPECT_EQ(run({"--version"}).out.find("zanto-notes "), 0u);
}

TEST(NotesCommand, saysSoWhenTheTableCannotBeWritten) {
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(notesCommand({}, out, err), 1);
    EXPECT_EQ(err.str(), "zanto-notes: the table cannot be written\n");
}

TEST(Transposition, knowsWhatTheWrittenCOfAnInstrumentSounds) {
    EXPECT_EQ(transpositionOf("b-flat-clarinet"), -2);
    EXPECT_EQ(transpositionOf("alto-saxophone"), -9);
    EXPECT_EQ(transpositionOf("horn"), -7);
    EXPECT_EQ(transpositionOf("alto-recorder"), 5);
    EXPECT_EQ(transpositionOf("Horn"), std::nullopt);
}

TEST(Transposition, readsPitchesInScientificNotation) {
    EXPECT_EQ(parsePitch("C4"), 60);
    EXPECT_EQ(parsePitch("A4"), 69);
    EXPECT_EQ(parsePitch("B5"), 83);
    EXPECT_EQ(parsePitch("F#3"), 54);
    EXPECT_EQ(parsePitch("Bb5"), 82);
    for (std::string const text : {"", "C", "c4", "C#", "H4", "C44", "Cx4", "C-1", "C4 "}) {
        EXPECT_EQ(parsePitch(text), std::nullopt) << text;
    }
}
