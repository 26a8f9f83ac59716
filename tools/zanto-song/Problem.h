#pragma once

#include <cstddef>
#include <string>

/// One thing that is wrong with a song or a listing.
struct Problem {
    enum class Severity {
        error,   ///< the game refuses the song
        warning  ///< the game accepts it, and plays something that was hardly meant
    };

    std::size_t line;    ///< from 1
    std::size_t column;  ///< from 1, in characters
    Severity severity;
    std::string code;  ///< one word for programs, never changed once given
    std::string text;  ///< what is wrong
    std::string hint;  ///< how to mend it
};
