#include "tools/zanto-song/SheetMusic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/MidiBytes.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// "pitch@start+length" of each note, in hundredths of a quarter note.
std::vector<std::string> notesOf(SheetVoice const& voice) {
    std::vector<std::string> notes;
    for (SheetNote const& note : voice.notes) {
        notes.push_back(std::to_string(note.pitch) + "@" + std::to_string(std::lround(note.start * 100)) +
                        "+" + std::to_string(std::lround(note.length * 100)));
    }
    return notes;
}

class SheetMusicTest : public testing::Test {
protected:
    SheetMusic midi(std::string const& bytes) {
        return expect(readMidi(folder.write("a.mid", bytes), problem));
    }
    SheetMusic abc(std::string const& text) {
        return expect(readAbc(folder.write("a.abc", text), {}, problem));
    }
    SheetMusic xml(std::string const& measures, std::string const& more = "") {
        return expect(readMusicXml(folder.write("a.musicxml", document(measures, more)), problem));
    }
    static std::string document(std::string const& measures, std::string const& more = "") {
        return "<?xml version=\"1.0\"?><score-partwise><part-list><score-part "
               "id=\"P1\"><part-name>Flute</part-name>"
               "</score-part></part-list><part id=\"P1\">" +
               measures + "</part>" + more + "</score-partwise>";
    }
    SheetMusic expect(std::optional<SheetMusic> sheet) {
        EXPECT_TRUE(sheet) << problem;
        return sheet.value_or(SheetMusic{});
    }

    TemporaryFolder folder;
    std::string problem;
};

// A note of MusicXML, with further elements.
std::string note(std::string const& step, int duration, std::string const& more = "", int octave = 5) {
    return "<note>" + more + "<pitch><step>" + step + "</step><octave>" + std::to_string(octave) +
           "</octave></pitch><duration>" + std::to_string(duration) + "</duration><voice>1</voice></note>";
}

std::string measure(int number, std::string const& content) {
    return "<measure number=\"" + std::to_string(number) + "\">" + content + "</measure>";
}

constexpr char const* halves = "<attributes><divisions>2</divisions></attributes>";  // of a quarter note

}  // namespace

TEST_F(SheetMusicTest, midiNotesTempoAndPlaces) {
    MidiBytes bytes(480);
    bytes.track().name("Flute").tempo(500000).timeSignature(3, 2);
    bytes.track().on(0, 0, 72).off(480, 0, 72).on(0, 0, 74).off(960, 0, 74).on(480, 0, 76).off(240, 0, 76);
    SheetMusic const sheet = midi(bytes.file());
    ASSERT_EQ(sheet.voices.size(), 1u);
    EXPECT_EQ(sheet.voices[0].name, "track 2");
    EXPECT_THAT(notesOf(sheet.voices[0]), ElementsAre("72@0+100", "74@100+200", "76@400+50"));
    EXPECT_EQ(sheet.voices[0].notes[2].place, "bar 2, beat 2");
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 120.0);
    EXPECT_FALSE(sheet.lengthsAreExact);
    EXPECT_THAT(sheet.lost, IsEmpty());
}

TEST_F(SheetMusicTest, midiVoicesAreTracksAndTheirChannels) {
    MidiBytes bytes(96);
    bytes.track().name("Two hands").on(0, 0, 60).on(0, 1, 48).off(96, 0, 60).off(0, 1, 48);
    bytes.track().on(0, 2, 62).off(96, 2, 62);
    SheetMusic const sheet = midi(bytes.file());
    ASSERT_EQ(sheet.voices.size(), 3u);
    EXPECT_EQ(sheet.voices[0].name, "Two hands, channel 1");
    EXPECT_EQ(sheet.voices[1].name, "Two hands, channel 2");
    EXPECT_EQ(sheet.voices[2].name, "track 2");
}

TEST_F(SheetMusicTest, midiThatCannotBeKeptIsCounted) {
    MidiBytes bytes(96);
    bytes.track().tempo(600000).on(0, 0, 60).on(0, 9, 38).off(96, 0, 60).off(0, 9, 38).tempo(500000).bend(0,
                                                                                                          0);
    SheetMusic const sheet = midi(bytes.file());
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 100.0);
    EXPECT_THAT(sheet.lost, ElementsAre("1 drum beat", "1 pitch bend", "1 tempo change"));
}

TEST_F(SheetMusicTest, midiNotesWithoutAnEndEndWithTheirTrack) {
    MidiBytes bytes(96);
    bytes.track().on(0, 0, 60).on(96, 0, 62).off(96, 0, 62);
    EXPECT_THAT(notesOf(midi(bytes.file()).voices.at(0)), ElementsAre("60@0+200", "62@100+100"));
}

TEST_F(SheetMusicTest, midiNotesStruckAgainEndTheOneBefore) {
    MidiBytes bytes(96);
    bytes.track().on(0, 0, 60).on(96, 0, 60).off(96, 0, 60);
    EXPECT_THAT(notesOf(midi(bytes.file()).voices.at(0)), ElementsAre("60@0+100", "60@100+100"));
}

TEST_F(SheetMusicTest, midiFilesThatAreDamagedAreRefused) {
    MidiBytes bytes(96);
    bytes.track().on(0, 0, 60).off(96, 0, 60);
    std::string const whole = bytes.file();
    EXPECT_FALSE(readMidi(folder.write("cut.mid", whole.substr(0, whole.size() - 4)), problem));
    EXPECT_THAT(problem, HasSubstr("no sound MIDI file"));
    EXPECT_FALSE(readMidi(folder.write("text.mid", "C D E\n"), problem));
    EXPECT_FALSE(readMidi(folder.write("empty.mid", ""), problem));
    MidiBytes film(0xE728);  // 25 frames a second
    film.track().on(0, 0, 60).off(96, 0, 60);
    EXPECT_FALSE(readMidi(folder.write("film.mid", film.file()), problem));
}

TEST_F(SheetMusicTest, midiFilesDamagedAtRandomAreReadOrRefusedInOrder) {
    MidiBytes bytes(96);
    bytes.track().name("Flute").tempo(500000).timeSignature(4, 2);
    bytes.track().on(0, 0, 60).off(96, 0, 60).on(0, 0, 62).off(96, 0, 62);
    std::string const whole = bytes.file();
    std::mt19937 random(1);
    for (int round = 0; round < 60; ++round) {
        std::string damaged = whole;
        damaged.at(random() % damaged.size()) = static_cast<char>(random());
        problem.clear();
        std::optional<SheetMusic> const sheet = readMidi(folder.write("a.mid", damaged), problem);
        EXPECT_EQ(problem.empty(), sheet.has_value()) << "round " << round;
    }
}

TEST_F(SheetMusicTest, abcTunes) {
    SheetMusic const sheet = abc("X:1\nT:Tune\nM:4/4\nL:1/4\nQ:1/4=90\nK:G\nG2 A F | [Gd]4 :|\n");
    ASSERT_EQ(sheet.voices.size(), 1u);
    EXPECT_DOUBLE_EQ(std::round(sheet.quartersPerMinute), 90.0);
    EXPECT_TRUE(sheet.lengthsAreExact);
    std::vector<SheetNote> const& notes = sheet.voices[0].notes;
    ASSERT_EQ(notes.size(), 10u);   // with the repeat
    EXPECT_EQ(notes[2].pitch, 66);  // the key's F sharp
    EXPECT_NEAR(notes[1].start, 2.0, 0.025);
    EXPECT_NEAR(notes[4].start, 4.0, 0.025);
    EXPECT_EQ(notes[9].place, "bar 4, beat 1");
    EXPECT_THAT(sheet.lost, IsEmpty());
}

TEST_F(SheetMusicTest, abcThatCannotBeKeptIsNamed) {
    SheetMusic const sheet = abc("X:1\nM:4/4\nL:1/4\nK:C\n\"Am\"A {b}c {de}d e |]\n");
    EXPECT_EQ(sheet.voices.at(0).notes.size(), 4u);
    EXPECT_THAT(sheet.lost, ElementsAre("2 groups of grace notes", HasSubstr("chord symbols")));
}

TEST_F(SheetMusicTest, abcFaultsAreRefusedWithTheirPlace) {
    EXPECT_FALSE(readAbc(folder.write("a.abc", "X:1\nM:4/4\nL:1/4\nK:C\nC ? D\n"), {}, problem));
    EXPECT_THAT(problem, HasSubstr("Error in line-char 5-2"));
    EXPECT_FALSE(readAbc(folder.write("a.abc", "just text\n"), {}, problem));
    EXPECT_THAT(problem, HasSubstr("no tune in it"));
    EXPECT_FALSE(readAbc("none.abc", {}, problem));
    EXPECT_EQ(problem, "it cannot be read");
}

TEST_F(SheetMusicTest, abcOfSeveralTunesWantsAChoice) {
    std::string const book =
        folder.write("b.abc",
                     "X:1\nT:First\nM:4/4\nL:1/4\nK:C\n{e}C D\n\nX:2\nT:Second one\nM:4/4\n"
                     "L:1/4\nK:C\nE F G\n");
    EXPECT_FALSE(readAbc(book, {}, problem));
    EXPECT_THAT(problem,
                HasSubstr("choose one with --tune and its number:\n    1 (First)\n    2 (Second one)"));
    EXPECT_FALSE(readAbc(book, 3, problem));
    EXPECT_THAT(problem, HasSubstr("there is no tune 3"));
    SheetMusic const second = expect(readAbc(book, 2, problem));
    EXPECT_EQ(second.voices.at(0).notes.size(), 3u);
    EXPECT_THAT(second.lost, IsEmpty());  // the grace note is the first tune's
}

TEST_F(SheetMusicTest, musicXmlNotesChordsRestsAndTies) {
    SheetMusic const sheet = xml(
        measure(1, std::string(halves) + "<direction><sound tempo=\"80\"/></direction>" + note("C", 2) +
                       note("E", 2, "<chord/>") + "<note><rest/><duration>1</duration></note>" +
                       note("G", 5, "")) +
        measure(
            2,
            "<note><pitch><step>G</step><octave>5</octave></pitch><duration>2</duration><tie type=\"stop\"/>"
            "<voice>1</voice></note>" +
                note("A", 1)));
    ASSERT_EQ(sheet.voices.size(), 1u);
    EXPECT_EQ(sheet.voices[0].name, "Flute");
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 80.0);
    EXPECT_THAT(notesOf(sheet.voices[0]), ElementsAre("72@0+100", "76@0+100", "79@150+350", "81@500+50"));
    EXPECT_EQ(sheet.voices[0].notes[3].place, "bar 2");
}

TEST_F(SheetMusicTest, musicXmlVoicesAndAlterations) {
    SheetMusic const sheet =
        xml(measure(1, std::string(halves) + note("C", 4) +
                           "<backup><duration>4</duration></backup><forward><duration>2</duration>"
                           "</forward><note><pitch><step>B</step><alter>-1</alter><octave>3</octave></"
                           "pitch><duration>2</duration>"
                           "<voice>2</voice></note>"));
    ASSERT_EQ(sheet.voices.size(), 2u);
    EXPECT_EQ(sheet.voices[1].name, "Flute, voice 2");
    EXPECT_THAT(notesOf(sheet.voices[1]), ElementsAre("58@100+100"));
}

TEST_F(SheetMusicTest, musicXmlRepeatsAreWrittenOut) {
    std::string const back = "<barline location=\"right\"><repeat direction=\"backward\"/></barline>";
    auto const ending = [](char const* number, char const* type) {
        return std::string("<barline><ending number=\"") + number + "\" type=\"" + type + "\"/></barline>";
    };
    SheetMusic const sheet = xml(
        measure(1, std::string(halves) + note("C", 2)) +
        measure(
            2,
            ending("1", "start") + note("D", 2) +
                "<barline><ending number=\"1\" type=\"stop\"/><repeat direction=\"backward\"/></barline>") +
        measure(3, ending("2", "start") + note("E", 2) + ending("2", "discontinue")) +
        measure(4, note("F", 2) + back));
    EXPECT_THAT(notesOf(sheet.voices.at(0)), ElementsAre("72@0+100", "74@100+100", "72@200+100", "76@300+100",
                                                         "77@400+100", "77@500+100"));
}

TEST_F(SheetMusicTest, musicXmlThatCannotBeKeptIsCounted) {
    SheetMusic const sheet = xml(measure(
        1, std::string(halves) + note("C", 2) + note("D", 0, "<grace/>") + note("D", 0, "<grace/>") +
               "<note><unpitched/><duration>2</duration></note><note><pitch><step>F</step><alter>0.5</"
               "alter><octave>4"
               "</octave></pitch><duration>2</duration></note><sound dacapo=\"yes\" tempo=\"100\"/><sound "
               "tempo=\"90\"/>"));
    EXPECT_THAT(sheet.lost, ElementsAre("2 grace notes", "1 jump (dacapo) in bar 1", "1 quarter tone",
                                        "1 tempo change", "1 unpitched note"));
    EXPECT_EQ(sheet.voices.at(0).notes.size(), 1u);
}

TEST_F(SheetMusicTest, musicXmlMeasuresAreAsLongAsTheLongestPart) {
    SheetMusic const sheet = xml(measure(1, std::string(halves) + note("C", 8)) + measure(2, note("D", 2)),
                                 "<part id=\"P2\">" + measure(1, std::string(halves) + note("E", 2)) +
                                     measure(2, note("F", 2)) + "</part>");
    ASSERT_EQ(sheet.voices.size(), 2u);
    EXPECT_EQ(sheet.voices[1].name, "part 2");
    EXPECT_THAT(notesOf(sheet.voices[1]), ElementsAre("76@0+100", "77@400+100"));
}

TEST_F(SheetMusicTest, musicXmlThatIsNoneIsRefused) {
    EXPECT_FALSE(readMusicXml(folder.write("a.xml", "<score-partwise>"), problem));
    EXPECT_THAT(problem, HasSubstr("no sound XML"));
    EXPECT_FALSE(readMusicXml(folder.write("a.xml", "<html/>"), problem));
    EXPECT_EQ(problem, "it is XML, but no MusicXML");
    EXPECT_FALSE(readMusicXml(folder.write("a.xml", "<score-timewise/>"), problem));
    EXPECT_THAT(problem, HasSubstr("score-partwise"));
    EXPECT_FALSE(readMusicXml(folder.write("a.xml", "<score-partwise/>"), problem));
    EXPECT_EQ(problem, "there is no part in it");
}
