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
    QuietErrors(QuietErrors const&) = delete;
    QuietErrors& operator=(QuietErrors const&) = delete;

    /// What was written so far, without the last line's end.
    std::string text() const;

private:
    std::ostringstream written;
    std::streambuf* before;
};

/// Drops whatever goes to a file descriptor, C's printf and other libraries included: 1 is standard output,
/// 2 is standard error. Where that cannot be arranged, nothing is dropped.
class QuietDescriptor {
public:
    explicit QuietDescriptor(int descriptor);
    ~QuietDescriptor();
    QuietDescriptor(QuietDescriptor const&) = delete;
    QuietDescriptor& operator=(QuietDescriptor const&) = delete;

private:
    int descriptor;
    int kept;  ///< a copy of the descriptor as it was, -1 for none
};
