#include "tools/zanto-song/AbcMusic.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>
#include <utility>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"

namespace {

constexpr int mostOctave = 10;
constexpr int mostVoicesInChord = 64;

bool isOneOf(char letter, const char* letters) {
    return letter != '\0' && std::strchr(letters, letter) != nullptr;
}

// The rounds of "1,3" or "2-4".
std::set<int> roundsOf(const std::string& list) {
    std::set<int> rounds;
    int from = 0;
    int number = 0;
    for (const char letter : list + ",") {
        if (std::isdigit(static_cast<unsigned char>(letter)) != 0) {
            number = std::min(10 * number + (letter - '0'), 100);
        } else if (letter == '-') {
            from = std::exchange(number, 0);
        } else if (number > 0) {
            for (int round = from > 0 ? from : number; round <= number; ++round) {
                rounds.insert(round);
            }
            from = number = 0;
        }
    }
    return rounds;
}

}  // namespace

std::optional<AbcNote> AbcMusic::note() {
    const std::size_t before = cursor.position();
    AbcNote read{0, 4, false, 0, 1.0};
    double semitones = 0.0;
    for (; isOneOf(peek(), "^_="); cursor.move()) {
        read.hasAccidental = true;
        semitones += peek() == '^' ? 1.0 : peek() == '_' ? -1.0 : 0.0;
    }
    if (read.hasAccidental && (peek() == '/' || cursor.isAtDigit())) {
        semitones *= cursor.length();
    }
    read.step = abcStep(peek());
    if (read.step == -1) {
        cursor.moveTo(before);
        return std::nullopt;
    }
    read.octave += std::islower(static_cast<unsigned char>(peek())) != 0 ? 1 : 0;
    for (cursor.move(); peek() == '\'' || peek() == ','; cursor.move()) {
        read.octave = std::clamp(read.octave + (peek() == ',' ? -1 : 1), 0, mostOctave);
    }
    read.semitones = static_cast<int>(std::clamp(std::round(semitones), -4.0, 4.0));
    read.units = cursor.length();
    if (semitones != std::round(semitones)) {
        ++counts[QuarterTones];
        read.step = -1;
    }
    return read;
}

void AbcMusic::add(const std::vector<AbcNote>& notes, double factor) {
    AbcVoice& voice = calls.voice();
    const bool isRest = voice.isPercussion || notes.front().step == -1;
    counts[Unpitched] += voice.isPercussion ? notes.size() : 0;
    if (isRest) {
        voice.rest(notes.front().units * factor);
    } else {
        voice.chord(notes, factor);
    }
}

void AbcMusic::readNote() {
    const std::optional<AbcNote> read = note();
    if (read) {
        add({*read}, 1.0);
    } else {
        unknown(peek());
        cursor.move();
    }
}

void AbcMusic::readRest(char letter) {
    cursor.move();
    if (letter == 'Z' || letter == 'X') {
        calls.voice().restBars(cursor.number(1));
    } else if (const double units = cursor.length(); letter != 'y') {
        calls.voice().rest(units);
    }
}

void AbcMusic::readChord(char end) {
    std::vector<AbcNote> notes;
    std::set<std::size_t> ties;
    while (!cursor.isAtEnd() && !cursor.skip(end)) {
        if (cursor.skip('-') && !notes.empty()) {
            ties.insert(notes.size() - 1);
        } else if (isOneOf(peek(), "\"!+")) {
            readOne();
        } else if (const std::optional<AbcNote> read = note()) {
            if (read->step != -1 && notes.size() < mostVoicesInChord) {
                notes.push_back(*read);
            }
        } else {
            cursor.move();
        }
    }
    const double factor = cursor.length();
    if (notes.empty()) {
        return;
    }
    add(notes, factor);
    for (const std::size_t index : ties) {
        if (!calls.voice().isPercussion) {
            calls.voice().tie(index);
        }
    }
}

void AbcMusic::readBar() {
    const std::size_t begin = cursor.position();
    AbcBar bar;
    int lines = 0;
    int colons = 0;
    for (; isOneOf(peek(), "|:]") || (peek() == '[' && peek(1) == '|'); cursor.move()) {
        if (peek() == ':') {
            ++colons;
            continue;
        }
        // Colons before the first line end a repeat; colons after the last line begin one.
        if (colons > 0 && lines == 0) {
            bar.timesPlayed = colons + 1;
        }
        colons = 0;
        lines += peek() == '|' ? 1 : 0;
        bar.isDouble = bar.isDouble || peek() != '|' || lines > 1;
    }
    if (cursor.since(begin) == "[|]") {
        bar.isDouble = false;  // an invisible line
    }
    if (lines == 0 && colons < 2) {
        return;  // a dotted line, which is none of the metre's
    }
    bar.repeatBegins = colons > 0;
    if (lines == 0) {
        bar.timesPlayed = 2;
    }
    calls.voice().barLine(bar);
    lineIsLatest = true;
    if (cursor.isAtDigit()) {
        readEnding();
    }
}

void AbcMusic::readEnding() {
    const std::size_t begin = cursor.position();
    while (cursor.isAtDigit() || (isOneOf(peek(), ",-") && cursor.isAtDigit(1))) {
        cursor.move();
    }
    calls.voice().ending(roundsOf(cursor.since(begin)));
}

// A field, an ending, a bar line or a chord.
void AbcMusic::readBracket() {
    if (std::isalpha(static_cast<unsigned char>(peek(1))) != 0 && peek(2) == ':') {
        const char field = peek(1);
        cursor.move(3);
        const std::optional<std::string> content = cursor.upTo(']');
        if (!content) {
            calls.remark("a field between notes has no end (])");
            cursor.moveToEnd();
            return;
        }
        calls.field(field, *content);
    } else if (peek(1) == '|') {
        readBar();
    } else if (cursor.isAtDigit(1)) {
        cursor.move();
        readEnding();
    } else if (peek(1) == '"' && lineIsLatest) {
        cursor.move(2);
        const std::string name = cursor.upTo('"').value_or("");
        const std::set<int> rounds = roundsOf(name);
        if (rounds.empty()) {
            calls.remark("the ending " + quoted(name) + " has no number");
        } else {
            calls.voice().ending(rounds);
        }
    } else {
        cursor.move();
        readChord(']');
    }
}

void AbcMusic::readTuplet() {
    if (!cursor.isAtDigit(1)) {
        cursor.move();  // a slur
        return;
    }
    cursor.move();
    const int p = cursor.number(1);
    int q = 0;
    int count = 0;
    if (cursor.skip(':')) {
        q = cursor.number(0);
        if (cursor.skip(':')) {
            count = cursor.number(0);
        }
    }
    if (p < 2) {
        calls.remark("a group of " + std::to_string(p) + " notes is none");
    } else {
        calls.voice().tuplet(p, q, count);
    }
}

void AbcMusic::readQuoted() {
    cursor.move();
    const std::optional<std::string> content = cursor.upTo('"');
    if (!content) {
        calls.remark("a text between the notes has no end (\"); the rest of the line is not read");
        cursor.moveToEnd();
    } else if (const bool isText = !content->empty() && isOneOf(content->front(), "^_<>@");
               !calls.voice().sign(isText ? content->substr(1) : *content)) {
        counts[ChordSymbols] += isText ? 0 : 1;
    }
}

void AbcMusic::readDecoration(const std::string& name) {
    static const std::set<std::string> ornaments = {
        "roll",         "trill", "trill(", "trill)",       "lowermordent",  "uppermordent", "mordent",
        "pralltriller", "turn",  "turnx",  "invertedturn", "invertedturnx", "slide",        "arpeggio"};
    if (name == "nil" || calls.voice().sign(name)) {
        return;
    }
    ++counts[name == "staccato" ? Staccato : ornaments.count(name) != 0 ? Ornaments : OtherSigns];
}

void AbcMusic::unknown(char letter) {
    if (std::isspace(static_cast<unsigned char>(letter)) == 0) {
        calls.remark(quoted(std::string(1, letter)) + " means nothing here");
    }
}

void AbcMusic::readOne() {
    const char letter = peek();
    lineIsLatest = lineIsLatest && isOneOf(letter, " [");
    if (isOneOf(letter, "ABCDEFGabcdefg^_=")) {
        readNote();
    } else if (isOneOf(letter, "zxyZX")) {
        readRest(letter);
    } else if (isOneOf(letter, "|:") || (letter == ']' && peek(1) == '|')) {
        readBar();
    } else if (letter == '[') {
        readBracket();
        lineIsLatest = false;
    } else if (letter == '(') {
        readTuplet();
    } else if (letter == '"') {
        readQuoted();
    } else if (letter == '{') {
        ++counts[Graces];
        if (!cursor.upTo('}')) {
            calls.remark("a group of grace notes has no end (}); the rest of the line is not read");
            cursor.moveToEnd();
        }
    } else if (letter == '!' || letter == '+') {
        cursor.move();
        const std::size_t begin = cursor.position();
        const std::string name = cursor.upTo(letter).value_or("");
        const bool isName = !name.empty() && name.find_first_of(" |") == std::string::npos;
        const bool isOldChord = letter == '+' && isName && name.size() > 1 && name[0] != 'f' &&
                                name.find_first_not_of("ABCDEFGabcdefg^_=,'0123456789/") == std::string::npos;
        if (isName && !isOldChord) {
            readDecoration(name);
        } else {
            cursor.moveTo(begin);
            if (isOldChord) {
                readChord('+');
            }  // Else it is an old sign to begin a line.
        }
    } else if (letter == '<' || letter == '>') {
        int strength = 0;
        for (; peek() == letter; cursor.move()) {
            ++strength;
        }
        calls.voice().breakRhythm((letter == '>' ? 1 : -1) * std::min(strength, 3));
    } else if (letter == '-') {
        cursor.move();
        calls.voice().tieAll();
    } else if (letter == '&') {
        cursor.move();
        calls.voice().overlay();
    } else if (letter == '.' && isOneOf(peek(1), "|(-")) {
        cursor.move();  // a dotted line
    } else if (const auto sign = signs.find(letter); sign != signs.end()) {
        cursor.move();
        readDecoration(sign->second);
    } else {
        cursor.move();
        if (!isOneOf(letter, " \t)`$\\*")) {
            unknown(letter);
        }
    }
}

void AbcMusic::readLine(const std::string& line) {
    for (cursor = AbcCursor(line); !cursor.isAtEnd();) {
        readOne();
    }
}

void AbcMusic::define(const std::string& definition) {
    const std::size_t equals = definition.find('=');
    const std::size_t letter = definition.find_first_not_of(' ');
    if (equals == std::string::npos || letter >= equals) {
        calls.remark("a sign is defined as in U: T = !trill!");
        return;
    }
    std::string name = definition.substr(equals + 1);
    name.erase(std::remove_if(name.begin(), name.end(), [](char sign) { return isOneOf(sign, " !+"); }),
               name.end());
    signs[definition[letter]] = name;
}

std::vector<std::string> AbcMusic::lost() const {
    struct Name {
        const char* one;
        const char* rest;
    };
    constexpr std::array<Name, kindCount> names = {{{"ornament", ""},
                                                    {"staccato dot", ""},
                                                    {"group", " of grace notes"},
                                                    {"chord symbol", ""},
                                                    {"other sign", " over the notes"},
                                                    {"quarter tone", ""},
                                                    {"note", " of drums"}}};
    std::vector<std::string> lines;
    for (std::size_t kind = 0; kind < counts.size(); ++kind) {
        if (counts.at(kind) > 0) {
            lines.push_back(counted(counts.at(kind), names.at(kind).one) + names.at(kind).rest);
        }
    }
    return lines;
}
