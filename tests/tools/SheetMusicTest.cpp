#include "tools/zanto-song/SheetMusic.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <zip.h>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/MidiBytes.h"
#include "tests/tools/NotesOf.h"
#include "tests/tools/Outcome.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

SheetMusic xml(const std::string& measures, const std::string& more = "") {
    return readMusicXml(
        "<?xml version=\"1.0\"?><score-partwise><part-list><score-part id=\"P1\"><part-name>Flute</part-name>"
        "</score-part></part-list><part id=\"P1\">" +
        measures + "</part>" + more + "</score-partwise>");
}

// A note of MusicXML, with further elements.
std::string note(const std::string& step, int duration, const std::string& more = "", int octave = 5) {
    return "<note>" + more + "<pitch><step>" + step + "</step><octave>" + std::to_string(octave) +
           "</octave></pitch><duration>" + std::to_string(duration) + "</duration><voice>1</voice></note>";
}

std::string measure(int number, const std::string& content) {
    return "<measure number=\"" + std::to_string(number) + "\">" + content + "</measure>";
}

// A zip archive of files, by name and contents.
std::string zipOf(const std::vector<std::pair<std::string, std::string>>& files) {
    zip_error_t error;
    zip_source_t* const source = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_source_keep(source);
    zip_t* const archive = zip_open_from_source(source, ZIP_TRUNCATE, &error);
    for (const auto& [name, contents] : files) {
        zip_file_add(archive, name.c_str(), zip_source_buffer(archive, contents.data(), contents.size(), 0),
                     ZIP_FL_ENC_UTF_8);
    }
    zip_close(archive);
    zip_source_open(source);
    std::string bytes(1u << 20, '\0');
    const zip_int64_t size = zip_source_read(source, bytes.data(), bytes.size());
    bytes.resize(static_cast<std::size_t>(size));
    zip_source_free(source);
    return bytes;
}

const std::string halves = "<attributes><divisions>2</divisions></attributes>";  // of a quarter note

}  // namespace

TEST(MidiSheet, NotesTempoAndPlacesByTracksAndTheirChannels) {
    MidiBytes bytes(480);
    bytes.track().name("Flute").tempo(500000).timeSignature(3, 2);
    bytes.track().on(0, 0, 72).off(480, 0, 72).on(0, 0, 74).off(960, 0, 74).on(480, 0, 76).off(240, 0, 76);
    // A name in one line of UTF-8; a note that is struck again ends the one before.
    bytes.track().name("Fl\u00F6te\nTime=0\xFF").on(0, 0, 60).on(0, 1, 48).on(480, 0, 60);
    bytes.off(480, 0, 60).off(0, 1, 48);
    const SheetMusic sheet = readMidi(bytes.file());
    ASSERT_EQ(sheet.voices.size(), 3u);
    EXPECT_EQ(sheet.voices[0].name, "track 2");
    EXPECT_THAT(notesOf(sheet.voices[0]), ElementsAre("72@0+100", "74@100+200", "76@400+50"));
    EXPECT_EQ(sheet.voices[0].notes[2].place, "bar 2, beat 2");
    EXPECT_EQ(sheet.voices[1].name, "Fl\u00F6te Time=0\uFFFD, channel 1");
    EXPECT_THAT(notesOf(sheet.voices[1]), ElementsAre("60@0+100", "60@100+100"));
    EXPECT_EQ(sheet.voices[2].name, "Fl\u00F6te Time=0\uFFFD, channel 2");
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 120.0);
    EXPECT_FALSE(sheet.lengthsAreExact);
    EXPECT_THAT(sheet.lost, IsEmpty());
}

TEST(MidiSheet, WhatCannotBeKeptIsCounted) {
    MidiBytes bytes(96);
    bytes.track().tempo(600000).tempo(600000).on(0, 0, 60).on(0, 9, 38).off(96, 0, 60).off(0, 9, 38);
    bytes.tempo(600000).bend(0, 0).on(0, 0, 60).on(96, 0, 62).tempo(500000).off(96, 0, 62);
    std::string file = bytes.file();
    const SheetMusic sheet = readMidi(file);
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 100.0);
    EXPECT_THAT(sheet.lost, ElementsAre("1 drum beat", "1 pitch bend", "1 tempo change",
                                        "1 end of a note, which its track ended"));
    EXPECT_THAT(notesOf(sheet.voices.at(0)), ElementsAre("60@0+100", "60@100+200", "62@200+100"));
    file.at(9) = 2;
    EXPECT_THAT(readMidi(file).lost, testing::Contains(HasSubstr("pieces of their own (MIDI format 2)")));
}

TEST(MidiSheet, BarsAreCountedThroughChangesOfMetre) {
    MidiBytes bytes(96);
    // The second track's signatures hold for the first one too.
    bytes.track().on(0, 0, 60).off(96, 0, 60).on(9 * 96, 0, 62).off(96, 0, 62).on(5 * 96, 0, 64);
    bytes.off(96, 0, 64).track().timeSignature(4, 2).timeSignature(3, 2, 4 * 96);
    bytes.timeSignature(6, 3, 6 * 96).timeSignature(0, 2);
    const std::vector<SheetNote> notes = readMidi(bytes.file()).voices.at(0).notes;
    EXPECT_EQ(notes[0].place, "bar 1, beat 1");
    EXPECT_EQ(notes[1].place, "bar 4, beat 1");
    EXPECT_EQ(notes[2].place, "bar 6, beat 1");
}

TEST(MidiSheet, FilesThatCannotBeReadAreRefused) {
    MidiBytes bytes(96);
    bytes.track().on(0, 0, 60).off(96, 0, 60);
    const std::string whole = bytes.file();
    EXPECT_EQ(failureOf([&] { readMidi(whole.substr(0, whole.size() - 4)); }),
              "it is a damaged MIDI file: it ends in the middle");
    EXPECT_EQ(failureOf([] { readMidi("C D E\n"); }), "it is no MIDI file");
    MidiBytes film(0xE728);  // 25 frames a second
    film.track().on(0, 0, 60).off(96, 0, 60);
    EXPECT_THAT(failureOf([&] { readMidi(film.file()); }), HasSubstr("frames of a film"));
    MidiBytes drums(96);
    drums.track().on(0, 9, 38).off(96, 9, 38);
    EXPECT_EQ(failureOf([&] { readMidi(drums.file()); }), "there are only drums in it");
    MidiBytes years(1);
    years.track().on(0x0FFFFFFF, 0, 60).off(1, 0, 60);
    EXPECT_EQ(failureOf([&] { readMidi(years.file()); }),
              "it is longer than 100000 quarter notes or 200000 notes");
}

TEST(MusicXmlSheet, NotesChordsRestsTiesAndVoicesInMeasuresAsLongAsTheLongestPart) {
    const std::string secondVoice =
        "<backup><duration>8</duration></backup><forward><duration>2</duration></forward><note><pitch>"
        "<step>B</step><alter>-1</alter><octave>3</octave></pitch><duration>2</duration><voice>2</voice></"
        "note>";
    const SheetMusic sheet =
        xml(measure(1, halves + "<direction><sound tempo=\"80\"/></direction>" + note("C", 2) +
                           note("E", 2, "<chord/>") + "<note><rest/><duration>1</duration></note>" +
                           note("G", 5) + secondVoice) +
                measure(2, note("G", 2, "<tie type=\"stop\"/>") + note("A", 1)),
            "<part id=\"P2\">" + measure(1, halves + note("E", 2)) + measure(2, note("F", 2)) + "</part>");
    ASSERT_EQ(sheet.voices.size(), 3u);
    EXPECT_EQ(sheet.voices[0].name, "Flute, voice 1");
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 80.0);
    EXPECT_THAT(notesOf(sheet.voices[0]), ElementsAre("72@0+100", "76@0+100", "79@150+350", "81@500+50"));
    EXPECT_EQ(sheet.voices[0].notes[3].place, "bar 2");
    EXPECT_EQ(sheet.voices[1].name, "Flute, voice 2");
    EXPECT_THAT(notesOf(sheet.voices[1]), ElementsAre("58@100+100"));
    EXPECT_EQ(sheet.voices[2].name, "part 2");
    EXPECT_THAT(notesOf(sheet.voices[2]), ElementsAre("76@0+100", "77@400+100"));
}

TEST(MusicXmlSheet, RepeatsAreWrittenOut) {
    const std::string back = "<repeat direction=\"backward\"/>";
    const auto ending = [](const std::string& number, const std::string& type, const std::string& more = "") {
        return "<barline><ending number=\"" + number + "\" type=\"" + type + "\"/>" + more + "</barline>";
    };
    const SheetMusic sheet =
        xml(measure(1, halves + note("C", 2)) +
            measure(2, ending("1", "start") + note("D", 2) + ending("1", "stop", back)) +
            measure(3, ending("2", "start") + note("E", 2) + ending("2", "discontinue")) +
            measure(4, note("F", 2) + "<barline>" + back + "</barline>") +
            measure(5, note("G", 2) + "<barline><repeat direction=\"backward\" times=\"1\"/></barline>"));
    EXPECT_THAT(notesOf(sheet.voices.at(0)), ElementsAre("72@0+100", "74@100+100", "72@200+100", "76@300+100",
                                                         "77@400+100", "77@500+100", "79@600+100"));
}

TEST(MusicXmlSheet, NotesAreAtSoundingPitch) {
    const std::string down = "<transpose><diatonic>-1</diatonic><chromatic>-2</chromatic></transpose>";
    const std::string octave =
        "<transpose number=\"2\"><chromatic>0</chromatic><octave-change>-1</octave-change></transpose>";
    const SheetMusic sheet = xml(measure(1, note("C", 1) + "<attributes>" + down + octave + "</attributes>" +
                                                note("D", 1) + note("E", 1, "<staff>2</staff>")),
                                 "<part id=\"P2\">" + measure(1, note("C", 1)) + "</part>");
    EXPECT_THAT(notesOf(sheet.voices.at(0)), ElementsAre("72@0+100", "72@100+100", "64@200+100"));
    EXPECT_THAT(notesOf(sheet.voices.at(1)), ElementsAre("72@0+100"));
}

TEST(MusicXmlSheet, TheTempoIsThatOfTheSoundOrOfTheMetronome) {
    const auto direction = [](const std::string& unit, const std::string& count,
                              const std::string& more = "") {
        return "<direction><direction-type><metronome><beat-unit>" + unit + "</beat-unit>" + more +
               "<per-minute>" + count + "</per-minute></metronome></direction-type></direction>";
    };
    EXPECT_DOUBLE_EQ(xml(measure(1, direction("eighth", "60") + note("C", 1))).quartersPerMinute, 30.0);
    EXPECT_DOUBLE_EQ(
        xml(measure(1, direction("quarter", "40", "<beat-unit-dot/>") + note("C", 1))).quartersPerMinute,
        60.0);
    const SheetMusic sheet = xml(measure(1, direction("quarter", "c. 90") + direction("half", "50") +
                                                direction("quarter", "70") + note("C", 1)));
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 100.0);
    EXPECT_THAT(sheet.lost, ElementsAre("1 tempo change", "1 tempo mark without a number"));
}

TEST(MusicXmlSheet, JumpsAreFollowedBySoundsAndByWhatIsWritten) {
    const auto words = [](const std::string& text) {
        return "<direction><direction-type><words>" + text + "</words></direction-type></direction>";
    };
    const std::string coda = "<direction><direction-type><coda/></direction-type></direction>";
    const auto played = [](const std::string& measures) {
        std::string steps;
        const SheetMusic sheet = xml(measures);
        for (const SheetNote& sounded : sheet.voices.at(0).notes) {
            steps += std::to_string(sounded.pitch) + " ";
        }
        return steps;
    };
    EXPECT_EQ(played(measure(1, note("C", 1) + "<sound fine=\"yes\"/>") +
                     measure(2, note("D", 1) + "<sound dacapo=\"yes\"/>")),
              "72 74 72 ");
    EXPECT_EQ(played(measure(1, note("C", 1)) + measure(2, words("Fine") + note("D", 1)) +
                     measure(3, note("E", 1) + words("D.C. al Fine"))),
              "72 74 76 72 74 ");
    EXPECT_EQ(played(measure(1, note("C", 1)) +
                     measure(2, "<direction><direction-type><segno/></direction-type></direction>" +
                                    note("D", 1) + coda) +
                     measure(3, note("E", 1) + words("D.S. al Coda")) + measure(4, coda + note("F", 1))),
              "72 74 76 74 77 ");
    EXPECT_EQ(failureOf([&] { played(measure(1, note("C", 1) + words("D.S."))); }),
              "it says \"dal segno\", and there is no segno before it");
}

TEST(MusicXmlSheet, CompressedFilesAreReadByTheirContainer) {
    const auto container = [](const std::string& root) {
        return "<container><rootfiles><rootfile full-path=\"" + root + "\"/></rootfiles></container>";
    };
    const std::string score =
        "<score-partwise><part id=\"P1\">" + measure(1, note("C", 1)) + "</part></score-partwise>";
    const std::string whole = zipOf({{"META-INF/container.xml", container("a.xml")}, {"a.xml", score}});
    EXPECT_THAT(notesOf(readCompressedMusicXml(whole).voices.at(0)), ElementsAre("72@0+100"));
    const auto refused = [](const std::string& contents) {
        return failureOf([&] { readCompressedMusicXml(contents); });
    };
    EXPECT_EQ(refused(zipOf({{"META-INF/container.xml", container("../a.xml")}, {"a.xml", score}})),
              "there is no ../a.xml in the archive");
    EXPECT_EQ(refused(zipOf({{"META-INF/container.xml", "<container/>"}})),
              "META-INF/container.xml does not say which file is the score");
    EXPECT_EQ(refused(zipOf({{"a.xml", score}})), "there is no META-INF/container.xml in the archive");
    EXPECT_THAT(refused("PK, but no archive"), HasSubstr("it is a damaged archive"));
    EXPECT_THAT(refused(whole.substr(0, whole.size() / 2)), HasSubstr("it is a damaged archive"));
    // Eight thousand bytes that become nine million.
    const std::string bomb =
        zipOf({{"META-INF/container.xml", container("a.xml")}, {"a.xml", std::string(9u << 20, ' ')}});
    EXPECT_LT(bomb.size(), 20000u);
    EXPECT_EQ(refused(bomb), "a.xml is larger than 8 MiB when unpacked");
}

TEST(MusicXmlSheet, ThatCannotBeKeptIsCounted) {
    const SheetMusic sheet = xml(measure(
        1, halves + note("C", 2) + note("D", 0, "<grace/>") + note("D", 0, "<grace/>") +
               "<note><unpitched/><duration>2</duration></note><note><pitch><step>F</step><alter>0.5</"
               "alter><octave>4"
               "</octave></pitch><duration>2</duration></note><sound tempo=\"100\"/><sound "
               "tempo=\"90\"/>"));
    EXPECT_THAT(sheet.lost,
                ElementsAre("2 grace notes", "1 quarter tone", "1 tempo change", "1 unpitched note"));
    EXPECT_EQ(sheet.voices.at(0).notes.size(), 1u);
}

TEST(MusicXmlSheet, WhatIsNoScoreOrNoNumberIsRefusedAndNotGuessed) {
    const auto refused = [](const std::string& content) {
        return failureOf([&] { xml(measure(7, content)); });
    };
    const auto lasting = [](const std::string& duration) {
        return "<note><pitch><step>C</step><octave>4</octave></pitch><duration>" + duration +
               "</duration></note>";
    };
    EXPECT_EQ(refused(lasting(" +4\n")), "");
    for (const std::string duration : {"", "x", "-1", "nan", "inf", "1e300", "1000000000", "4 4"}) {
        EXPECT_EQ(refused(lasting(duration)), "bar 7: \"" + duration + "\" is no duration");
    }
    EXPECT_EQ(refused("<backup><duration>1e18</duration></backup>"), "bar 7: \"1e18\" is no duration");
    EXPECT_EQ(refused("<attributes><divisions>0</divisions></attributes>"),
              "bar 7: \"0\" is no number of divisions of a quarter note");
    EXPECT_EQ(refused("<sound tempo=\"fast\"/>"), "bar 7: \"fast\" is no tempo");
    EXPECT_EQ(refused(note("C", 1, "", 2147483647)), "bar 7: \"2147483647\" is no octave");
    EXPECT_EQ(refused("<barline><repeat direction=\"backward\" times=\"-9\"/></barline>"),
              "bar 7: \"-9\" is no number of times");
    std::string endless;
    for (int number = 1; number <= 101; ++number) {
        endless += measure(number, note("C", 1));
    }
    endless += measure(102, "<barline><repeat direction=\"backward\" times=\"1000\"/></barline>");
    EXPECT_EQ(failureOf([&] { xml(endless); }), "its repeats never come to an end");
    EXPECT_EQ(refused(note("C", 60000) + note("C", 60000) + note("C", 1)),
              "it is longer than 100000 quarter notes or 200000 notes");
    EXPECT_THAT(failureOf([] { readMusicXml("<score-partwise>"); }), HasSubstr("damaged XML"));
    EXPECT_EQ(failureOf([] { readMusicXml("<html/>"); }), "it is XML, but no MusicXML");
    EXPECT_THAT(failureOf([] { readMusicXml("<score-timewise/>"); }), HasSubstr("score-partwise"));
    EXPECT_EQ(failureOf([] { readMusicXml("<score-partwise/>"); }), "there is no part in it");
}
