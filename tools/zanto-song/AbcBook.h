#pragma once

#include <string>
#include <vector>

/// A line of a tune, without its comment.
struct AbcLine {
    std::size_t number;  ///< in the file, from 1
    std::string text;    ///< UTF-8
};

/// One tune of a file in ABC notation, before its notation is read.
struct AbcTune {
    std::string number;  ///< as "4", and as "4.2" if it is the second of several with this number
    std::string title;   ///< may be empty
    std::vector<AbcLine>
        lines;  ///< those of the file's header, then its own behind X:; instructions are kept ("%%")
    std::vector<std::string> remarks;
};

/// Takes a tune out of a file's contents: UTF-8, UTF-16 with a byte order mark, or Latin-1. A tune ends where
/// the standard says, at an empty line. `number` is the one to take, empty when nothing was asked for. Throws
/// a Failure that lists the tunes when it is not clear which one is meant.
AbcTune chooseTune(const std::string& contents, const std::string& number);
