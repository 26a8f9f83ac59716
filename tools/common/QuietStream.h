#pragma once

#include <iosfwd>
#include <sstream>
#include <string>

/// Keeps what the game's classes print away from a tool's own output, for as long as it lives. One at a time,
/// on one thread.

/// Takes what is written to std::cerr.
class QuietErrors {
public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

    /// What was written so far, without the last line's end.
    std::string text() const;

private:
    std::ostringstream written;
    std::streambuf* before;
};
