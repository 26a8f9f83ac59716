#include "tools/zanto-song/SongFix.h"

#include <algorithm>
#include <utility>

#include "tools/zanto-song/SongLines.h"

namespace {

constexpr const char* byteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t byteOrderMarkSize = 3;

void note(SongChange& change, const std::string& what) {
    change.what += (change.what.empty() ? "" : ", ") + what;
}

void dropByteOrderMark(SongChange& change) {
    // Some programs add a mark to a file that has one.
    bool any = false;
    for (; change.after.rfind(byteOrderMark, 0) == 0; any = true) {
        change.after.erase(0, byteOrderMarkSize);
    }
    if (any) {
        note(change, "byte-order mark");
    }
}

void dropTrailingBlanks(SongChange& change) {
    std::string& text = change.after;
    const std::size_t kept = text.find_last_not_of(songBlanks) + 1;
    const std::string blanks = text.substr(kept);
    if (blanks.empty()) {
        return;
    }
    text.erase(kept);
    const bool hasReturn = blanks.back() == '\r';
    if (hasReturn) {
        note(change, "carriage return");
    }
    if (blanks.size() > (hasReturn ? 1u : 0u)) {
        note(change, "blanks at the end");
    }
}

// A letter c to g alone, or with nothing but a length behind it, can only be meant for the capital one.
bool isLowerCaseNote(const std::string& token) {
    return token.front() >= 'a' && token.front() <= 'g' &&
           token.find_first_not_of("0123456789", 1) == std::string::npos;
}

void raiseCase(SongChange& change) {
    std::string& text = change.after;
    bool raised = false;
    std::size_t at = text.find_first_not_of(songBlanks);
    while (at != std::string::npos) {
        const std::size_t end = text.find_first_of(songBlanks, at);
        if (isLowerCaseNote(text.substr(at, end - at))) {
            text[at] = static_cast<char>(text[at] - 'a' + 'A');
            raised = true;
        }
        at = text.find_first_not_of(songBlanks, end);
    }
    if (raised) {
        note(change, "capital letters");
    }
}

// Files from old Macs have a carriage return at the end of each line, and no line feed.
bool endsLinesInReturns(const std::string& contents) {
    return contents.find('\n') == std::string::npos && contents.find('\r') != std::string::npos;
}

bool headerEnds(const std::string& contents) {
    return readSongLines(contents).headerFault == HeaderFault::none;
}

}  // namespace

MendedSong mendSong(const std::string& contents) {
    const bool oldLineEnds = endsLinesInReturns(contents);
    const char lineEnd = oldLineEnds ? '\r' : '\n';
    MendedSong mended;
    std::size_t start = 0;
    for (std::size_t number = 1; start <= contents.size(); ++number) {
        const std::size_t end = std::min(contents.find(lineEnd, start), contents.size());
        SongChange change{number, contents.substr(start, end - start), "", ""};
        change.after = change.before;
        if (number == 1) {
            dropByteOrderMark(change);
        }
        dropTrailingBlanks(change);
        if (number > 1) {
            raiseCase(change);
        }
        const bool hasEnd = end < contents.size();
        if (oldLineEnds && hasEnd) {
            note(change, "line end");
        }
        mended.contents += change.after + (hasEnd ? "\n" : "");
        if (!change.what.empty()) {
            mended.changes.push_back(std::move(change));
        }
        start = end + 1;
    }
    // The header needs a line end or a blank behind it, even when nothing else follows.
    if (headerEnds(contents) && !headerEnds(mended.contents)) {
        mended.contents += "\n";
    }
    return mended;
}
