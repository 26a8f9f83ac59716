#include <algorithm>
#include <cctype>
#include <cstring>
#include <deque>
#include <map>
#include <utility>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/AbcBook.h"
#include "tools/zanto-song/AbcMusic.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/WrittenScore.h"

namespace {

constexpr std::size_t mostRemarks = 100;
constexpr std::size_t mostVoices = 200;
constexpr int mostTranspose = 48;

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

// A field's letter, or '\0' for a line of notes. In the body "A:|" is a note before a bar line.
char fieldOf(const std::string& line, bool inHeader) {
    const bool isField = line.size() > 1 && line[1] == ':' &&
                         (std::isalpha(static_cast<unsigned char>(line[0])) != 0 || line[0] == '+');
    const bool isNote = !inHeader && line.size() > 2 && std::strchr("|:", line[2]) != nullptr &&
                        std::strchr("ABCDEFGabcdefgzx", line[0]) != nullptr;
    return isField && !isNote ? line[0] : '\0';
}

class AbcReader {
public:
    explicit AbcReader(AbcTune tune_);

    SheetMusic read();

private:
    void readLine(const AbcLine& line);
    void readField(char field, const std::string& text);
    void readKey(const std::string& text);
    void readVoice(const std::string& text);
    void readTempo(const std::string& text);
    void readMetre(const std::string& text);
    void readInstruction(const std::string& text);
    void endHeader();
    AbcVoice& voice();
    /// What a field is about: the voice that is being written, or what voices begin with.
    AbcVoice& target() { return inHeader && current == nullptr ? model : voice(); }
    void shape(AbcVoice& shaped, const std::string& text) const;
    void layOutVoices(SheetMusic& sheet);
    void remark(const std::string& text) {
        if (remarks.size() < mostRemarks) {
            remarks.push_back("line " + std::to_string(lineNumber) + ": " + text);
        }
    }

    AbcTune tune;
    std::vector<std::string> remarks;
    AbcMusic music;
    std::size_t lineNumber = 0;
    bool inHeader = true;
    bool unitIsGiven = false;
    bool fieldGoesOn = false;  // in the next line
    AbcVoice model;
    std::deque<AbcVoice> voices;  // a deque does not move them
    std::map<std::string, AbcVoice*> voicesById;
    AbcVoice* current = nullptr;
    std::string headerTempo;
    double tempo = 0.0;  // quarter notes a minute, 0 before one is known
    std::string plan;
    std::size_t tempoChanges = 0;
    std::size_t instructions = 0;
};

AbcReader::AbcReader(AbcTune tune_)
    : tune(std::move(tune_)),
      remarks(tune.remarks),
      music({[this]() -> AbcVoice& { return voice(); },
             [this](char field, const std::string& text) { readField(field, text); },
             [this](const std::string& text) { remark(text); }}) {
    model.name = tune.title.empty() ? "tune " + tune.number : tune.title;
}

AbcVoice& AbcReader::voice() {
    if (current == nullptr) {
        voices.push_back(model);
        current = &voices.back();
    }
    return *current;
}

// What a key or a voice says about how its notes sound.
void AbcReader::shape(AbcVoice& shaped, const std::string& text) const {
    shaped.octaves = abcOctaves(text);
    std::string shift = abcValue(text, "transpose");
    if (shift.rfind('+', 0) == 0) {
        shift.erase(0, 1);
    }
    shaped.transpose = parseWhole(shift, -mostTranspose, mostTranspose).value_or(shaped.transpose);
    shaped.isPercussion = (" " + text).find(" perc") != std::string::npos || abcValue(text, "clef") == "perc";
}

void AbcReader::readKey(const std::string& text) {
    const std::string key = trimmed(text);
    const std::optional<AbcSignature> signature = abcSignature(key);
    const std::string first = key.substr(0, key.find(' '));
    if (signature) {
        target().signature = *signature;
    } else if (!key.empty() && !abcIsClef(first)) {
        remark("K:" + key + " is no key");
    }
    if (abcIsClef(key.substr(key.find_last_of(' ') + 1)) || abcIsClef(first)) {
        shape(target(), key);
    }
}

void AbcReader::readVoice(const std::string& text) {
    const std::string words = trimmed(text);
    const std::string id = words.substr(0, words.find_first_of(" \t"));
    AbcVoice*& known = voicesById[id];
    if (known == nullptr) {
        if (voices.size() >= mostVoices) {
            throw Failure("it has more than " + std::to_string(mostVoices) + " voices");
        }
        // Notes before the first V: make a separate voice.
        voices.push_back(model);
        known = &voices.back();
        known->name = "voice " + id;
    }
    current = known;
    for (const char* const word : {"nm", "name"}) {
        if (const std::string name = abcValue(words, word); !name.empty()) {
            current->name = name;
        }
    }
    if (id.size() < words.size()) {
        shape(*current, words.substr(id.size() + 1));
    }
}

void AbcReader::readTempo(const std::string& text) {
    const std::optional<double> read = abcTempo(text, target().unitQuarters);
    if (!read) {
        if (text.find_first_of("0123456789") != std::string::npos) {
            remark("Q:" + trimmed(text) + " is no tempo");
        }
    } else if (tempo == 0.0) {
        tempo = *read;
    } else if (tempo != *read) {
        ++tempoChanges;
    }
}

void AbcReader::readMetre(const std::string& text) {
    const std::optional<AbcMetre> metre = abcMetre(text);
    if (!metre) {
        remark("M:" + trimmed(text) + " is no metre");
        return;
    }
    target().metre = *metre;
    if (inHeader && !unitIsGiven) {
        target().unitQuarters = metre->quarters > 0.0 && metre->quarters < 3.0 ? 0.25 : 0.5;
    }
}

void AbcReader::readInstruction(const std::string& text) {
    std::string words = text;
    std::replace(words.begin(), words.end(), '=', ' ');
    const auto value = [&](const char* name) {
        const std::size_t length = std::strlen(name);
        return words.rfind(name, 0) == 0 ? trimmed(words.substr(length)) : "";
    };
    if (const std::string reach = value("propagate-accidentals "); !reach.empty()) {
        target().reach = reach == "not"      ? AbcVoice::Reach::Note
                         : reach == "octave" ? AbcVoice::Reach::Octave
                                             : AbcVoice::Reach::AllOctaves;
    } else if (const std::string program = value("MIDI program "); !program.empty()) {
        const std::string number = program.substr(program.find_last_of(' ') + 1);
        target().instrument = midiInstrument(parseWhole(number, 0, 127).value_or(-1));
    } else if (const std::string channel = value("MIDI channel "); !channel.empty()) {
        target().isPercussion = channel == "10";
    } else if (words.rfind("MIDI", 0) == 0) {
        ++instructions;
    }
}

void AbcReader::endHeader() {
    if (inHeader) {
        inHeader = false;
        current = voices.empty() ? nullptr : &voices.front();
        if (!headerTempo.empty()) {
            readTempo(headerTempo);
        }
    }
}

void AbcReader::readField(char field, const std::string& text) {
    switch (field) {
        case 'K':
            if (inHeader) {
                current = nullptr;
                readKey(text);
                for (AbcVoice& declared : voices) {
                    declared.signature = model.signature;
                    declared.metre = model.metre;
                    declared.unitQuarters = model.unitQuarters;
                }
                endHeader();
            } else {
                readKey(text);
            }
            break;
        case 'L':
            if (const std::optional<double> unit = abcFraction(text)) {
                target().unitQuarters = *unit;
                unitIsGiven = true;
            } else {
                remark("L:" + trimmed(text) + " is no length");
            }
            break;
        case 'M':
            readMetre(text);
            break;
        case 'Q':
            if (inHeader) {
                headerTempo = text;  // may count in the L: that follows
            } else {
                readTempo(text);
            }
            break;
        case 'V':
            readVoice(text);
            break;
        case 'P':
            if (inHeader) {
                const std::optional<std::string> parts = abcParts(trimmed(text));
                if (!parts) {
                    remark("P:" + trimmed(text) + " is no order of parts");
                }
                plan = parts.value_or("");
            } else {
                model.section = trimmed(text).empty() ? '\0' : trimmed(text)[0];
                for (AbcVoice& each : voices) {
                    each.beginSection(model.section);
                }
            }
            break;
        case 'U':
            music.define(text);
            break;
        case 'I':
            readInstruction(trimmed(text));
            break;
        case 'm':
            remark("the macro m:" + trimmed(text) + " is not carried out");
            break;
        default:
            if (std::strchr("+ABCDFGHNORSTWZdrsw", field) == nullptr) {
                remark(std::string("the field ") + field + ": is unknown");
            }
    }
}

void AbcReader::readLine(const AbcLine& line) {
    lineNumber = line.number;
    const bool continuesField = std::exchange(fieldGoesOn, false);
    if (line.text.rfind("%%", 0) == 0) {
        readInstruction(line.text.substr(2));
    } else if (const char field = fieldOf(line.text, inHeader); field != '\0') {
        readField(field, line.text.substr(2));
        fieldGoesOn = line.text.back() == '\\';
    } else if (!continuesField) {
        if (inHeader) {
            remark("the notes begin without a key (K:)");
            endHeader();
        }
        music.readLine(line.text);
    }
}

void AbcReader::layOutVoices(SheetMusic& sheet) {
    std::vector<ScorePart> parts;
    for (AbcVoice& each : voices) {
        if (each.isRepeating()) {
            remarks.push_back(each.name + ": a repeat that begins has no end (:|)");
        }
        ScorePart part = each.finish();
        if (each.lacksRepeat()) {
            remarks.push_back(each.name + ": an ending has no sign to go back (:|); it was taken as there");
        }
        if (each.hasNotes()) {
            parts.push_back(std::move(part));
        }
    }
    layOut(parts, plan, sheet);
}

SheetMusic AbcReader::read() {
    for (const AbcLine& line : tune.lines) {
        readLine(line);
    }
    SheetMusic sheet;
    if (tempo > 0.0) {
        sheet.quartersPerMinute = tempo;
    }
    sheet.lost = music.lost();
    for (const auto& [count, what] :
         {std::make_pair(instructions, "MIDI instruction"), std::make_pair(tempoChanges, "tempo change")}) {
        if (count > 0) {
            sheet.lost.push_back(counted(count, what));
        }
    }
    layOutVoices(sheet);
    sheet.remarks.insert(sheet.remarks.begin(), remarks.begin(), remarks.end());
    return sheet;
}

}  // namespace

SheetMusic readAbc(const std::string& contents, const std::string& tune) {
    return AbcReader(chooseTune(contents, tune)).read();
}
