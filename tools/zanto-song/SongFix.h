#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// One line that mending changed, as it was and as it is.
struct SongChange {
    std::size_t line;  ///< from 1
    std::string before;
    std::string after;
    std::string what;  ///< such as "blanks at the end"
};

struct MendedSong {
    std::string contents;
    std::vector<SongChange> changes;  ///< in the order of the lines; empty when nothing was to be mended
};

/// Mends what can be mended without guessing: line ends other than a line feed, blanks at the ends of lines,
/// lower-case note letters, and a byte-order mark. A song without any of these comes back byte for byte, and
/// so does one that was mended before.
MendedSong mendSong(const std::string& contents);
