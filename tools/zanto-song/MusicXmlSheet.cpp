#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <pugixml.hpp>
#include <sstream>
#include <utility>

#include "tools/common/Text.h"
#include "tools/zanto-song/MeasureOrder.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

// One note of a measure; start in quarter notes from the measure's beginning.
struct WrittenNote {
    std::string voice;
    double start;
    double length;
    int pitch;
    bool continues;  // the end of a tie
};

struct Measure {
    std::string number;
    double length = 0.0;  // quarter notes
    std::vector<WrittenNote> notes;
    MeasureSigns signs;
};

struct Part {
    std::string name;
    std::vector<Measure> measures;
};

int semitonesOf(char step) {
    constexpr char const* steps = "C D EF G A B";
    char const* const found = std::strchr(steps, step);
    return found == nullptr || step == ' ' || step == '\0' ? -1 : static_cast<int>(found - steps);
}

class MusicXmlReader {
public:
    std::optional<SheetMusic> read(pugi::xml_node const& score, std::string& problem);

private:
    Part readPart(pugi::xml_node const& part, std::string name);
    Measure readMeasure(pugi::xml_node const& measure);
    void readNote(pugi::xml_node const& note, Measure& measure);
    void readSound(pugi::xml_node const& sound, Measure& measure);
    static void readBarline(pugi::xml_node const& barline, MeasureSigns& signs);
    void addVoices(Part const& part, std::vector<std::size_t> const& order,
                   std::vector<double> const& lengths);
    void lose(std::string const& what) { ++lost[what]; }

    SheetMusic sheet;
    std::map<std::string, std::size_t> lost;  // with how often
    bool tempoKnown = false;
    double divisions = 1.0;  // of a quarter note, until the file says otherwise
    double position = 0.0;   // quarter notes into the measure
    double chordStart = 0.0;
};

void MusicXmlReader::readSound(pugi::xml_node const& sound, Measure& measure) {
    double const tempo = sound.attribute("tempo").as_double();
    if (tempo > 0.0 && tempoKnown && tempo != sheet.quartersPerMinute) {
        lose("tempo change");
    } else if (tempo > 0.0) {
        sheet.quartersPerMinute = tempo;
        tempoKnown = true;
    }
    for (char const* const jump : {"dacapo", "dalsegno", "tocoda", "fine"}) {
        if (sound.attribute(jump)) {
            lose("jump (" + std::string(jump) + ") in bar " + measure.number);
        }
    }
}

void MusicXmlReader::readBarline(pugi::xml_node const& barline, MeasureSigns& signs) {
    pugi::xml_node const repeat = barline.child("repeat");
    if (std::strcmp(repeat.attribute("direction").value(), "forward") == 0) {
        signs.repeatBegins = true;
    } else if (repeat) {
        signs.timesPlayed = std::max(repeat.attribute("times").as_int(2), 1);
    }
    pugi::xml_node const ending = barline.child("ending");
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

void MusicXmlReader::readNote(pugi::xml_node const& note, Measure& measure) {
    if (note.child("grace")) {
        lose("grace note");
        return;
    }
    double const length = note.child("duration").text().as_double() / divisions;
    bool const isChord = static_cast<bool>(note.child("chord"));
    double const start = isChord ? chordStart : position;
    if (!isChord) {
        chordStart = position;
        position += length;
    }
    measure.length = std::max(measure.length, position);
    if (note.child("rest")) {
        return;
    }
    pugi::xml_node const pitch = note.child("pitch");
    int const step = semitonesOf(pitch.child("step").text().as_string(" ")[0]);
    double const alter = pitch.child("alter").text().as_double();
    if (note.child("cue")) {
        lose("cue note");
    } else if (!pitch || step == -1) {
        lose("unpitched note");
    } else if (alter != std::round(alter)) {
        lose("quarter tone");
    } else {
        int const octave = pitch.child("octave").text().as_int();
        int const semitones = 12 * (octave + 1) + step + static_cast<int>(alter);
        pugi::xml_node const stop = note.find_child_by_attribute("tie", "type", "stop");
        measure.notes.push_back(
            {note.child("voice").text().as_string("1"), start, length, semitones, static_cast<bool>(stop)});
    }
}

Measure MusicXmlReader::readMeasure(pugi::xml_node const& node) {
    Measure measure;
    measure.number = node.attribute("number").value();
    position = 0.0;
    for (pugi::xml_node const& child : node) {
        std::string const name = child.name();
        if (name == "attributes") {
            divisions = std::max(child.child("divisions").text().as_double(divisions), 1.0 / 1024.0);
        } else if (name == "note") {
            readNote(child, measure);
        } else if (name == "backup") {
            position = std::max(position - child.child("duration").text().as_double() / divisions, 0.0);
        } else if (name == "forward") {
            position += child.child("duration").text().as_double() / divisions;
            measure.length = std::max(measure.length, position);
        } else if (name == "barline") {
            readBarline(child, measure.signs);
        } else if (name == "direction") {
            readSound(child.child("sound"), measure);
        } else if (name == "sound") {
            readSound(child, measure);
        }
    }
    return measure;
}

Part MusicXmlReader::readPart(pugi::xml_node const& node, std::string name) {
    Part part{std::move(name), {}};
    divisions = 1.0;
    for (pugi::xml_node const& measure : node.children("measure")) {
        part.measures.push_back(readMeasure(measure));
    }
    return part;
}

// Lays the measures one behind the other, joins ties, and parts the voices.
void MusicXmlReader::addVoices(Part const& part, std::vector<std::size_t> const& order,
                               std::vector<double> const& lengths) {
    std::map<std::string, SheetVoice> voices;
    double begin = 0.0;
    for (std::size_t const index : order) {
        if (index >= part.measures.size()) {
            continue;
        }
        Measure const& measure = part.measures[index];
        for (WrittenNote const& note : measure.notes) {
            std::vector<SheetNote>& notes = voices[note.voice].notes;
            double const start = begin + note.start;
            auto const before = std::find_if(notes.rbegin(), notes.rend(), [&](SheetNote const& earlier) {
                return earlier.pitch == note.pitch && std::abs(earlier.start + earlier.length - start) < 1e-6;
            });
            if (note.continues && before != notes.rend()) {
                before->length += note.length;
            } else {
                notes.push_back({start, note.length, note.pitch, "bar " + measure.number});
            }
        }
        begin += lengths[index];
    }
    for (auto& [number, voice] : voices) {
        std::stable_sort(
            voice.notes.begin(), voice.notes.end(), [](SheetNote const& left, SheetNote const& right) {
                return std::make_pair(left.start, left.pitch) < std::make_pair(right.start, right.pitch);
            });
        voice.name = voices.size() == 1 ? part.name : part.name + ", voice " + number;
        sheet.voices.push_back(std::move(voice));
    }
}

std::optional<SheetMusic> MusicXmlReader::read(pugi::xml_node const& score, std::string& problem) {
    std::vector<Part> parts;
    for (pugi::xml_node const& node : score.children("part")) {
        char const* const id = node.attribute("id").value();
        pugi::xml_node const entry = score.child("part-list").find_child_by_attribute("score-part", "id", id);
        std::string const name = entry.child("part-name").text().as_string();
        parts.push_back(readPart(node, name.empty() ? "part " + std::to_string(parts.size() + 1) : name));
    }
    if (parts.empty()) {
        problem = "there is no part in it";
        return std::nullopt;
    }
    std::vector<MeasureSigns> signs;
    for (Measure const& measure : parts.front().measures) {
        signs.push_back(measure.signs);
    }
    std::optional<std::vector<std::size_t>> const order = playingOrder(signs);
    if (!order) {
        problem = "its repeats never come to an end";
        return std::nullopt;
    }
    // A measure is as long as the part that says most about it.
    std::vector<double> lengths(signs.size(), 0.0);
    for (Part const& part : parts) {
        for (std::size_t index = 0; index < std::min(lengths.size(), part.measures.size()); ++index) {
            lengths[index] = std::max(lengths[index], part.measures[index].length);
        }
    }
    for (Part const& part : parts) {
        addVoices(part, *order, lengths);
    }
    for (auto const& [what, count] : lost) {
        sheet.lost.push_back(counted(count, what));
    }
    return std::move(sheet);
}

}  // namespace

std::optional<SheetMusic> readMusicXml(std::string const& path, std::string& problem) {
    pugi::xml_document document;
    pugi::xml_parse_result const parsed = document.load_file(path.c_str());
    if (!parsed) {
        problem = std::string("it is no sound XML file (") + parsed.description() + ")";
        return std::nullopt;
    }
    if (document.child("score-timewise")) {
        problem =
            "it is written measure by measure; save it part by part (score-partwise), as most programs do";
        return std::nullopt;
    }
    pugi::xml_node const score = document.child("score-partwise");
    if (!score) {
        problem = "it is XML, but no MusicXML";
        return std::nullopt;
    }
    return MusicXmlReader().read(score, problem);
}
