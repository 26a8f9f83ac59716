#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "tools/common/Arguments.h"
#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/WrittenScore.h"

namespace {

constexpr double mostTempo = 10000.0;
constexpr double mostTimes = 1000.0;
constexpr double mostAlter = 4.0;
constexpr double highestOctave = 9.0;
constexpr double mostTranspose = 48.0;
constexpr double leastDivisions = 1.0 / 1024.0;
constexpr double mostDivisions = 1e6;

int semitonesOf(char step) {
    constexpr const char* steps = "C D EF G A B";
    const char* const found = std::strchr(steps, step);
    return found == nullptr || step == ' ' || step == '\0' ? -1 : static_cast<int>(found - steps);
}

// The text of an element or attribute as a number from `least` to `most`; none for any other text.
double numberIn(const char* text, double least, double most, const char* what, const ScoreMeasure& measure) {
    constexpr const char* blanks = " \t\r\n";
    std::string digits = text;
    digits.erase(digits.find_last_not_of(blanks) + 1);
    digits.erase(0, digits.find_first_not_of(blanks));
    if (!digits.empty() && digits.front() == '+') {
        digits.erase(0, 1);
    }
    const std::optional<double> number = parseNumber(digits, least, most);
    if (!number) {
        throw Failure("bar " + measure.number + ": " + quoted(text) + " is no " + what);
    }
    return *number;
}

class MusicXmlReader {
public:
    SheetMusic read(const pugi::xml_node& score);

private:
    ScorePart readPart(const pugi::xml_node& part, std::string name);
    ScoreMeasure readMeasure(const pugi::xml_node& measure);
    void readNote(const pugi::xml_node& note, ScoreMeasure& measure);
    void readTempo(double tempo);
    void readSound(const pugi::xml_node& sound, ScoreMeasure& measure);
    void readMetronome(const pugi::xml_node& metronome);
    void readDirection(const pugi::xml_node& direction, ScoreMeasure& measure);
    void readAttributes(const pugi::xml_node& attributes, const ScoreMeasure& measure);
    int transposition(const std::string& staff) const;
    static void readBarline(const pugi::xml_node& barline, ScoreMeasure& measure);
    double durationOf(const pugi::xml_node& node, const ScoreMeasure& measure) const;
    void lose(const std::string& what) { ++lost[what]; }

    SheetMusic sheet;
    std::map<std::string, std::size_t> lost;  // with how often
    bool tempoKnown = false;
    double divisions = 1.0;                       // of a quarter note, until the file says otherwise
    std::map<std::string, int> semitonesOfStaff;  // "" for all staves without their own
    MeasureSigns later;                           // for the next measure
    double position = 0.0;                        // quarter notes into the measure
    double chordStart = 0.0;
};

double MusicXmlReader::durationOf(const pugi::xml_node& node, const ScoreMeasure& measure) const {
    return numberIn(node.child_value("duration"), 0.0, mostQuarters * divisions, "duration", measure) /
           divisions;
}

void MusicXmlReader::readTempo(double tempo) {
    if (tempo > 0.0 && tempoKnown && std::abs(tempo - sheet.quartersPerMinute) > 0.5) {
        lose("tempo change");
    } else if (tempo > 0.0 && !tempoKnown) {
        sheet.quartersPerMinute = tempo;
        tempoKnown = true;
    }
}

void MusicXmlReader::readSound(const pugi::xml_node& sound, ScoreMeasure& measure) {
    readTempo(numberIn(sound.attribute("tempo").as_string("0"), 0.0, mostTempo, "tempo", measure));
    measure.signs.repeatBegins = measure.signs.repeatBegins || sound.attribute("forward-repeat");
    for (const char* const name : {"dacapo", "dalsegno", "tocoda", "fine", "segno", "coda"}) {
        if (const pugi::xml_attribute sign = sound.attribute(name);
            sign && std::strcmp(sign.value(), "no") != 0) {
            addSign(name, measure.signs);
        }
    }
}

// "quarter = 96", also with dots. Words in place of the number are no tempo.
void MusicXmlReader::readMetronome(const pugi::xml_node& metronome) {
    static const std::map<std::string, double> units = {{"breve", 8.0},   {"whole", 4.0},  {"half", 2.0},
                                                        {"quarter", 1.0}, {"eighth", 0.5}, {"16th", 0.25},
                                                        {"32nd", 0.125}};
    const auto unit = units.find(metronome.child_value("beat-unit"));
    const std::optional<double> count = parseNumber(metronome.child_value("per-minute"), 1.0, mostTempo);
    if (unit == units.end() || !count) {
        lose("tempo mark without a number");
        return;
    }
    double quarters = unit->second;
    double dot = quarters / 2.0;
    for ([[maybe_unused]] const pugi::xml_node& each : metronome.children("beat-unit-dot")) {
        quarters += dot;
        dot /= 2.0;
    }
    readTempo(quarters * *count);
}

// The signs over the notes. What a player program is told about them in `sound` says the same.
void MusicXmlReader::readDirection(const pugi::xml_node& direction, ScoreMeasure& measure) {
    const pugi::xml_node sound = direction.child("sound");
    if (sound) {
        readSound(sound, measure);
    }
    for (const pugi::xml_node& type : direction.children("direction-type")) {
        const bool saysTempo = sound.attribute("tempo");
        if (const pugi::xml_node metronome = type.child("metronome"); metronome && !saysTempo) {
            readMetronome(metronome);
        }
        std::string words;
        for (const pugi::xml_node& part : type.children("words")) {
            words += part.child_value();
        }
        addSign(words, measure.signs);
        if (type.child("segno")) {
            addSign("segno", measure.signs);
        }
        if (type.child("coda") && !sound.attribute("tocoda")) {
            // Behind notes it marks the end of its measure.
            addSign("coda", position > 0.0 ? later : measure.signs);
        }
    }
}

void MusicXmlReader::readAttributes(const pugi::xml_node& attributes, const ScoreMeasure& measure) {
    if (const pugi::xml_node given = attributes.child("divisions")) {
        divisions = numberIn(given.child_value(), leastDivisions, mostDivisions,
                             "number of divisions of a quarter note", measure);
    }
    for (const pugi::xml_node& transpose : attributes.children("transpose")) {
        const double semitones = numberIn(transpose.child("chromatic").text().as_string("0"), -mostTranspose,
                                          mostTranspose, "number of semitones", measure);
        const double octaves = numberIn(transpose.child("octave-change").text().as_string("0"),
                                        -highestOctave, highestOctave, "number of octaves", measure);
        if (semitones != std::round(semitones) || octaves != std::round(octaves)) {
            throw Failure("bar " + measure.number + ": it is transposed by less than a semitone");
        }
        const std::string staff = transpose.attribute("number").as_string();
        if (staff.empty()) {
            semitonesOfStaff.clear();
        }
        semitonesOfStaff[staff] = static_cast<int>(semitones) + 12 * static_cast<int>(octaves);
    }
}

// How much higher the notes of a staff sound than they are written.
int MusicXmlReader::transposition(const std::string& staff) const {
    const auto own = semitonesOfStaff.find(staff);
    const auto all = own == semitonesOfStaff.end() ? semitonesOfStaff.find("") : own;
    return all == semitonesOfStaff.end() ? 0 : all->second;
}

void MusicXmlReader::readBarline(const pugi::xml_node& barline, ScoreMeasure& measure) {
    MeasureSigns& signs = measure.signs;
    const pugi::xml_node repeat = barline.child("repeat");
    if (std::strcmp(repeat.attribute("direction").value(), "forward") == 0) {
        signs.repeatBegins = true;
    } else if (repeat) {
        const double times =
            numberIn(repeat.attribute("times").as_string("2"), 0.0, mostTimes, "number of times", measure);
        signs.timesPlayed = std::max(static_cast<int>(times), 1);
    }
    const pugi::xml_node ending = barline.child("ending");
    if (std::strcmp(ending.attribute("type").value(), "start") == 0) {
        std::string numbers = ending.attribute("number").value();
        std::replace(numbers.begin(), numbers.end(), ',', ' ');
        std::istringstream words(numbers);
        for (int number = 0; words >> number;) {
            signs.endingBegins.insert(number);
        }
    } else if (ending) {
        signs.endingEnds = true;
    }
}

void MusicXmlReader::readNote(const pugi::xml_node& note, ScoreMeasure& measure) {
    if (note.child("grace")) {
        lose("grace note");
        return;
    }
    const double length = durationOf(note, measure);
    const bool isChord = static_cast<bool>(note.child("chord"));
    const double start = isChord ? chordStart : position;
    if (!isChord) {
        chordStart = position;
        position += length;
    }
    measure.length = std::max(measure.length, position);
    if (note.child("rest")) {
        return;
    }
    const pugi::xml_node pitch = note.child("pitch");
    const int step = semitonesOf(pitch.child("step").text().as_string(" ")[0]);
    const double alter =
        numberIn(pitch.child("alter").text().as_string("0"), -mostAlter, mostAlter, "alteration", measure);
    if (note.child("cue")) {
        lose("cue note");
    } else if (!pitch || step == -1) {
        lose("unpitched note");
    } else if (alter != std::round(alter)) {
        lose("quarter tone");
    } else {
        const double octave = numberIn(pitch.child_value("octave"), 0.0, highestOctave, "octave", measure);
        const int semitones = 12 * (static_cast<int>(octave) + 1) + step + static_cast<int>(alter) +
                              transposition(note.child("staff").text().as_string("1"));
        const pugi::xml_node stop = note.find_child_by_attribute("tie", "type", "stop");
        measure.notes.push_back({note.child("voice").text().as_string("1"), start, length, semitones,
                                 "bar " + measure.number, static_cast<bool>(stop)});
    }
}

ScoreMeasure MusicXmlReader::readMeasure(const pugi::xml_node& node) {
    ScoreMeasure measure;
    measure.number = node.attribute("number").value();
    measure.signs = std::exchange(later, {});
    position = 0.0;
    for (const pugi::xml_node& child : node) {
        const std::string name = child.name();
        if (name == "attributes") {
            readAttributes(child, measure);
        } else if (name == "note") {
            readNote(child, measure);
        } else if (name == "backup") {
            position = std::max(position - durationOf(child, measure), 0.0);
        } else if (name == "forward") {
            position += durationOf(child, measure);
            measure.length = std::max(measure.length, position);
        } else if (name == "barline") {
            readBarline(child, measure);
        } else if (name == "direction") {
            readDirection(child, measure);
        } else if (name == "sound") {
            readSound(child, measure);
        }
    }
    return measure;
}

ScorePart MusicXmlReader::readPart(const pugi::xml_node& node, std::string name) {
    ScorePart part{std::move(name), {}, {}};
    divisions = 1.0;
    semitonesOfStaff.clear();
    later = {};
    for (const pugi::xml_node& measure : node.children("measure")) {
        part.measures.push_back(readMeasure(measure));
    }
    return part;
}

SheetMusic MusicXmlReader::read(const pugi::xml_node& score) {
    std::vector<ScorePart> parts;
    for (const pugi::xml_node& node : score.children("part")) {
        const char* const id = node.attribute("id").value();
        const pugi::xml_node entry = score.child("part-list").find_child_by_attribute("score-part", "id", id);
        const std::string name = entry.child("part-name").text().as_string();
        parts.push_back(readPart(node, name.empty() ? "part " + std::to_string(parts.size() + 1) : name));
        parts.back().instrument = entry.child("score-instrument").child_value("instrument-name");
        if (const pugi::xml_node program = entry.child("midi-instrument").child("midi-program")) {
            parts.back().instrument = midiInstrument(program.text().as_int() - 1);
        }
    }
    if (parts.empty()) {
        throw Failure("there is no part in it");
    }
    layOut(parts, "", sheet);
    for (const auto& [what, count] : lost) {
        sheet.lost.push_back(counted(count, what));
    }
    return std::move(sheet);
}

}  // namespace

SheetMusic readMusicXml(const std::string& contents) {
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(contents.data(), contents.size());
    if (!parsed) {
        throw Failure(std::string("it is damaged XML (") + parsed.description() + ")");
    }
    if (document.child("score-timewise")) {
        throw Failure(
            "it is written measure by measure; save it part by part (score-partwise), as most programs do");
    }
    const pugi::xml_node score = document.child("score-partwise");
    if (!score) {
        throw Failure("it is XML, but no MusicXML");
    }
    return MusicXmlReader().read(score);
}
