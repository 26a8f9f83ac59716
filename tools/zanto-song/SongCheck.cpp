#include "tools/zanto-song/SongCheck.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <tuple>
#include <utility>

#include "analysis/Notes.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SongLines.h"

namespace {

constexpr std::int64_t longestJudged = 5;  // slots: the game looks back over four

struct Mark {
    std::size_t column;
    Notes::NoteID note;
    int length;  // slots
};

class SongChecker {
public:
    explicit SongChecker(const std::string& contents_) : contents(contents_) {}

    std::vector<Problem> check() {
        const SongLines lines = readSongLines(contents);
        if (lines.headerFault == HeaderFault::none) {
            checkWhole(lines);
        } else {
            reportHeader(lines);
            checkSlots(readSlotsAfter(contents, headerLinesOfFaulty(lines)));
        }
        std::stable_sort(problems.begin(), problems.end(), [](const Problem& left, const Problem& right) {
            return std::tie(left.line, left.column) < std::tie(right.line, right.column);
        });
        return std::move(problems);
    }

private:
    void checkWhole(const SongLines& lines) {
        checkHeaderRest(lines);
        checkSlots(lines.slots);
        if (lines.headerCut || (!lines.slots.empty() && lines.slots.back().cut)) {
            const std::string others =
                lines.unread == 0 ? ""
                                  : ", and nothing of the " + counted(lines.unread, "line") + " after it";
            warn(lines.headerCut ? lines.headerEnd : lines.slots.back().number, longestSongLine + 1,
                 "line-long",
                 "the game reads no more than " + std::to_string(longestSongLine) + " bytes of a line" +
                     others,
                 "shorten the line; no slot needs more than seven notes");
        }
        if (problems.empty() && noteCount == 0) {
            warn(1, 1, "no-notes", "there is no note in this song",
                 "after the header, write one line for each half second, with the notes that begin there");
        }
    }

    void error(std::size_t line, std::size_t column, std::string code, std::string text, std::string hint) {
        problems.push_back(
            {line, column, Problem::Severity::error, std::move(code), std::move(text), std::move(hint)});
    }
    void warn(std::size_t line, std::size_t column, std::string code, std::string text, std::string hint) {
        problems.push_back(
            {line, column, Problem::Severity::warning, std::move(code), std::move(text), std::move(hint)});
    }

    void reportHeader(const SongLines& lines);
    std::size_t headerLinesOfFaulty(const SongLines& lines) const;
    void checkHeaderRest(const SongLines& lines);
    void checkSlots(const std::vector<SongLine>& slots);
    void checkLine(const SongLine& line, std::size_t slot);
    void checkTrailingBlanks(const SongLine& line, std::size_t tokenCount);
    bool readMark(const SongToken& token, std::size_t line, Mark& mark);
    void reportName(const SongToken& token, std::size_t line);
    void checkLength(const SongToken& token, std::size_t line, int length);
    void checkNeighbours(const Mark& mark, std::size_t line, std::size_t slot);
    void checkEnd(const Mark& mark, std::size_t line, std::size_t slot);

    struct Sounding {
        std::size_t line;
        std::int64_t end;  // the slot in which it no longer sounds
    };

    const std::string& contents;
    std::vector<Problem> problems;
    std::map<std::int32_t, Sounding> last;  // by note, the latest one to end
    std::size_t noteCount = 0;
    std::size_t slotCount = 0;
};

bool isNoteName(char letter) {
    return Notes::nameToId(std::string(1, letter)) != -1;
}

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

bool looksLikeNotes(const std::string& text) {
    const SongLine line{1, text, false, false};
    const std::vector<SongToken> tokens = line.tokens();
    return !tokens.empty() && std::all_of(tokens.begin(), tokens.end(), [](const SongToken& token) {
        return isNoteName(token.text.front()) && (token.text.size() == 1 || isNumber(token.text.substr(1)));
    });
}

void SongChecker::reportHeader(const SongLines& lines) {
    constexpr const char* header = "begin the file with a line of two whole numbers, such as 120 4";
    switch (lines.headerFault) {
        case HeaderFault::ended:
            error(lines.faultLine, lines.faultColumn, "header-end",
                  "the file ends before the header's two numbers and the end of their line", header);
            break;
        case HeaderFault::tooLarge:
            error(lines.faultLine, lines.faultColumn, "header-range",
                  quoted(lines.faultWord) + " is too large a number for the header",
                  "any number from -2147483648 to 2147483647 will do, such as 120");
            break;
        case HeaderFault::noNumber:
        case HeaderFault::none:
            if (lines.faultWord.rfind("\xEF\xBB\xBF", 0) == 0) {
                error(lines.faultLine, lines.faultColumn, "byte-order-mark",
                      "the file begins with a byte-order mark, which is no number",
                      "save it as plain text, or let --fix take the mark away");
            } else {
                error(lines.faultLine, lines.faultColumn, "header-number",
                      quoted(lines.faultWord) + " stands where the header's two whole numbers should be",
                      header);
            }
            break;
    }
}

// With a faulty header nothing says where the slots begin. If notes stand where it should be they do at
// once, else after the first line.
std::size_t SongChecker::headerLinesOfFaulty(const SongLines& lines) const {
    if (lines.headerFault == HeaderFault::ended) {
        return SIZE_MAX;
    }
    const std::size_t firstBreak = std::min(contents.find('\n'), contents.size());
    return looksLikeNotes(contents.substr(0, firstBreak)) ? 0 : 1;
}

void SongChecker::checkHeaderRest(const SongLines& lines) {
    if (looksLikeNotes(lines.headerRest)) {
        const std::size_t blanks = lines.headerRest.find_first_not_of(songBlanks);
        warn(lines.headerEnd, lines.restColumn + blanks, "header-notes",
             "notes in the header's line are not played", "begin a new line for them");
    }
}

void SongChecker::checkSlots(const std::vector<SongLine>& slots) {
    slotCount = slots.size();
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        checkLine(slots[slot], slot);
    }
}

void SongChecker::checkLine(const SongLine& line, std::size_t slot) {
    const std::vector<SongToken> tokens = line.tokens();
    std::vector<Mark> marks;
    for (const SongToken& token : tokens) {
        Mark mark{};
        if (!readMark(token, line.number, mark)) {
            continue;
        }
        const auto isSame = [&](const Mark& other) { return other.note == mark.note; };
        if (std::any_of(marks.begin(), marks.end(), isSame)) {
            warn(line.number, token.column, "doubled",
                 Notes::idToName(mark.note) + " stands twice in this slot",
                 "leave one out: both are awarded for the same sound");
        } else {
            checkNeighbours(mark, line.number, slot);
        }
        checkEnd(mark, line.number, slot);
        marks.push_back(mark);
    }
    for (const Mark& mark : marks) {
        const std::int64_t end = static_cast<std::int64_t>(slot) + mark.length;
        const auto entry = last.try_emplace(mark.note, Sounding{line.number, end}).first;
        if (end >= entry->second.end) {
            entry->second = {line.number, end};
        }
    }
    noteCount += marks.size();
    checkTrailingBlanks(line, tokens.size());
    if (line.hasNul) {
        warn(line.number, characterCount(line.text) + 1, "nul",
             "the game reads this line only up to its zero byte", "remove that byte");
    }
}

void SongChecker::checkTrailingBlanks(const SongLine& line, std::size_t tokenCount) {
    const std::string blanks = line.trailingBlanks();
    if (blanks.empty()) {
        return;
    }
    const std::size_t column = characterCount(line.text) - blanks.size() + 1;
    constexpr const char* fix = "remove them, or let --fix do it";
    if (blanks == "\r") {
        error(line.number, column, "carriage-return", "the line ends in a carriage return",
              "save the file with line feeds alone (Unix line ends), or let --fix do it");
    } else if (tokenCount == 0) {
        error(line.number, column, "blank-line", "a rest is an empty line, and this one has blanks in it",
              fix);
    } else {
        error(line.number, column, "trailing-blank", "blanks stand behind the last note", fix);
    }
}

bool SongChecker::readMark(const SongToken& token, std::size_t line, Mark& mark) {
    mark.column = token.column;
    mark.note = Notes::nameToId(token.text.substr(0, 1));
    if (mark.note == -1) {
        reportName(token, line);
        return false;
    }
    if (token.text.size() == 1) {
        mark.length = 1;
        return true;
    }
    // As the game reads it, beyond an int as well.
    mark.length = static_cast<int>(std::strtoll(token.text.c_str() + 1, nullptr, 10));
    checkLength(token, line, mark.length);
    return true;
}

void SongChecker::reportName(const SongToken& token, std::size_t line) {
    const std::string text = quoted(token.text) + " is no note";
    const char name = token.text.front();
    std::string hint = "notes are C, D, E, F, G, A and B, with their length behind them if it is not 1";
    if (name >= 'a' && name <= 'g') {
        hint = "write " + std::string(1, static_cast<char>(name - 'a' + 'A')) +
               " as a capital letter, or let --fix do it";
    } else if (name == 'H' || name == 'h') {
        hint = "write B for the note that is called H in some countries";
    } else if (isNumber(token.text)) {
        hint = "write a length right behind its note, without a blank: C" + token.text;
    } else if (token.text == "-" || token.text == "_" || token.text == "." || name == 'R' || name == 'r' ||
               name == 'z') {
        hint = "write a rest as an empty line";
    }
    error(line, token.column, "note-name", text, hint);
}

void SongChecker::checkLength(const SongToken& token, std::size_t line, int length) {
    const std::string note = token.text.substr(0, 1);
    const std::string written = token.text.substr(1);
    const std::size_t column = token.column + 1;
    const std::string shown = quoted(token.text);
    const std::string plain = "write " + note + ", or " + note + " and a length from 2 to 5";
    std::string digits = written;
    if (digits.front() == '-' || digits.front() == '+') {
        digits.erase(0, 1);
    }
    const std::size_t digitCount = std::min(digits.find_first_not_of("0123456789"), digits.size());
    const bool isAccidental = written.front() == '#' || written.front() == 'b' ||
                              written.rfind("\u266F", 0) == 0 || written.rfind("\u266D", 0) == 0;
    if (digitCount == 0 && isAccidental) {
        warn(line, column, "accidental", shown + " is read as " + note + " with the length 0",
             "there are no sharps and flats: transpose the song until it has none");
    } else if (digitCount == 0) {
        warn(line, column, "length-text", shown + " is read as " + note + " with the length 0", plain);
    } else if (digitCount < digits.size()) {
        warn(line, column, "length-text", shown + " is read as " + note + std::to_string(length),
             "write nothing behind the length");
    } else if (digitCount > 9 && std::to_string(length) != written) {
        warn(line, column, "length-range", shown + " is read as " + note + std::to_string(length), plain);
    } else if (length == 0) {
        warn(line, column, "length-zero", "a note of no length is awarded without being played", plain);
    } else if (length < 0) {
        warn(line, column, "length-negative", "a note of negative length is awarded without being played",
             plain);
    } else if (length > longestJudged) {
        warn(line, column, "length-long",
             "a note of more than 5 slots can hardly be held long enough before the game stops judging it",
             "write two notes");
    }
}

// Nothing is judged after the last slot, so a note that outlasts it never gets its time.
void SongChecker::checkEnd(const Mark& mark, std::size_t line, std::size_t slot) {
    const auto left = static_cast<std::int64_t>(slotCount - slot);
    if (mark.length <= longestJudged && mark.length > left) {
        warn(line, mark.column, "song-end",
             "the song ends before this note does, so that it can hardly be held long enough",
             "add " + counted(static_cast<std::size_t>(mark.length - left), "empty line") + " at the end");
    }
}

void SongChecker::checkNeighbours(const Mark& mark, std::size_t line, std::size_t slot) {
    const auto before = last.find(mark.note);
    if (before == last.end()) {
        return;
    }
    const std::string name = Notes::idToName(mark.note);
    const auto start = static_cast<std::int64_t>(slot);
    if (before->second.end > start) {
        warn(line, mark.column, "overlap",
             name + " begins while the " + name + " of line " + std::to_string(before->second.line) +
                 " sounds",
             "shorten that one");
    } else if (before->second.end == start && mark.length > 1) {
        warn(line, mark.column, "repeat-long",
             "a long " + name + " straight after another " + name +
                 " is awarded at once and with no more than 100 points, for the time held before counts",
             "put a rest or another note between the two");
    }
}

}  // namespace

std::vector<Problem> checkSong(const std::string& contents) {
    return SongChecker(contents).check();
}
