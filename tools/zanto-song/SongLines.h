#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A song's contents cut up the way in which the game reads them, with the place of every piece.
struct SongToken {
    std::size_t column;  ///< from 1, in characters
    std::string text;    ///< without blanks, at least one byte
};

struct SongLine {
    std::size_t number;  ///< from 1
    std::string text;    ///< what the game reads of it: at most 1023 bytes, and none from a NUL byte on
    bool cut;            ///< longer than the game reads: its last line then
    bool hasNul;

    std::vector<SongToken> tokens() const;

    /// Blanks, tabs and carriage returns behind the last token, empty when there are none.
    std::string trailingBlanks() const;
};

enum class HeaderFault {
    none,
    ended,  ///< the file ends before a number, or right after the second one
    noNumber,
    tooLarge
};

/// How the game reads a song file's header, and the lines that it then takes for slots.
struct SongLines {
    HeaderFault headerFault = HeaderFault::none;
    std::size_t faultLine = 1;  ///< where the fault is
    std::size_t faultColumn = 1;
    std::string faultWord;        ///< what stands there in place of a number
    std::size_t headerEnd = 1;    ///< number of the line that the header's second number stands on
    std::size_t restColumn = 1;   ///< where the text behind that number begins
    std::string headerRest;       ///< that text
    bool headerCut = false;       ///< longer than the game reads: no slot is read then
    std::vector<SongLine> slots;  ///< none with a faulty header
    std::size_t unread = 0;       ///< lines behind one that was cut
};

constexpr const char* songBlanks = " \t\n\v\f\r";
constexpr std::size_t longestSongLine = 1023;  ///< bytes

/// Reads `contents` with the very operations of the standard library that the game reads a file with.
SongLines readSongLines(const std::string& contents);

/// The same, for contents whose first `headerLines` lines are to be passed over as a header whatever they
/// are.
std::vector<SongLine> readSlotsAfter(const std::string& contents, std::size_t headerLines);
