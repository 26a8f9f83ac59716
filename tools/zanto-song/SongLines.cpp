#include "tools/zanto-song/SongLines.h"

#include <algorithm>
#include <array>
#include <istream>
#include <sstream>

#include "tools/common/Text.h"

namespace {

std::size_t offsetOf(std::istream& in) {
    // Asked of the buffer: a stream that has failed no longer tells.
    return static_cast<std::size_t>(in.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
}

std::size_t linesIn(const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

struct Place {
    std::size_t line;
    std::size_t column;
};

Place placeOf(const std::string& contents, std::size_t offset) {
    const std::string before = contents.substr(0, offset);
    const std::size_t lineStart = before.rfind('\n') + 1;  // npos + 1 is the file's first byte
    return {linesIn(before) + 1, characterCount(before.substr(lineStart)) + 1};
}

struct ReadLine {
    std::string text;
    bool cut;
    bool hasNul;
};

ReadLine readLine(std::istream& in) {
    std::array<char, longestSongLine + 1> buffer{};
    in.getline(buffer.data(), buffer.size());
    const bool cut = in.fail() && !in.eof();
    auto count = static_cast<std::size_t>(in.gcount());
    // The line feed counts as read but is not stored.
    if (!in.fail() && !in.eof() && count > 0) {
        --count;
    }
    const std::string text = buffer.data();
    return {text, cut, text.size() < std::min(count, longestSongLine)};
}

std::vector<SongLine> readSlots(std::istream& in, std::size_t firstNumber) {
    std::vector<SongLine> slots;
    for (std::size_t number = firstNumber; in.good(); ++number) {
        ReadLine line = readLine(in);
        slots.push_back({number, std::move(line.text), line.cut, line.hasNul});
    }
    return slots;
}

// Where the number that could not be read should stand, and what stands there.
void describeFault(const std::string& contents, std::size_t begin, std::size_t stopped, SongLines& lines) {
    const std::size_t start = contents.find_first_not_of(songBlanks, begin);
    const Place place = placeOf(contents, std::min(start, contents.size()));
    lines.faultLine = place.line;
    lines.faultColumn = place.column;
    if (start == std::string::npos) {
        lines.headerFault = HeaderFault::ended;
        return;
    }
    lines.faultWord = contents.substr(start, contents.find_first_of(songBlanks, start) - start);
    const bool digitsWereRead =
        stopped > start && contents.find_first_of("0123456789", start) < std::min(stopped, contents.size());
    lines.headerFault = digitsWereRead ? HeaderFault::tooLarge : HeaderFault::noNumber;
}

}  // namespace

std::vector<SongToken> SongLine::tokens() const {
    std::vector<SongToken> found;
    std::size_t at = text.find_first_not_of(songBlanks);
    while (at != std::string::npos) {
        const std::size_t end = text.find_first_of(songBlanks, at);
        found.push_back({characterCount(text.substr(0, at)) + 1, text.substr(at, end - at)});
        at = text.find_first_not_of(songBlanks, end);
    }
    return found;
}

std::string SongLine::trailingBlanks() const {
    return text.substr(text.find_last_not_of(songBlanks) + 1);
}

SongLines readSongLines(const std::string& contents) {
    SongLines lines;
    std::istringstream in(contents);
    for (int numbers = 0; numbers < 2; ++numbers) {
        const std::size_t begin = offsetOf(in);
        int timing = 0;
        in >> timing;
        if (in.fail()) {
            describeFault(contents, begin, offsetOf(in), lines);
            return lines;
        }
    }
    const std::size_t headerEnd = offsetOf(in);
    const Place place = placeOf(contents, headerEnd);
    if (!in.good()) {
        lines.headerFault = HeaderFault::ended;
        lines.faultLine = place.line;
        lines.faultColumn = place.column;
        return lines;
    }
    lines.headerEnd = place.line;
    lines.restColumn = place.column;
    ReadLine rest = readLine(in);
    lines.headerRest = std::move(rest.text);
    lines.headerCut = rest.cut;
    lines.slots = readSlots(in, place.line + 1);
    if (rest.cut || (!lines.slots.empty() && lines.slots.back().cut)) {
        const std::size_t cutLine = rest.cut ? place.line : lines.slots.back().number;
        const std::size_t endsUnbroken = contents.back() == '\n' ? 0 : 1;
        lines.unread = linesIn(contents) + endsUnbroken - cutLine;
    }
    return lines;
}

std::vector<SongLine> readSlotsAfter(const std::string& contents, std::size_t headerLines) {
    std::size_t start = 0;
    for (std::size_t line = 0; line < headerLines; ++line) {
        const std::size_t end = contents.find('\n', start);
        if (end == std::string::npos) {
            return {};
        }
        start = end + 1;
    }
    std::istringstream in(contents.substr(start));
    return readSlots(in, headerLines + 1);
}
