#pragma once

/// Opens /dev/null for standard input, output or error if the program was started without it.
/// Otherwise the next file, or the sound device, would get its number and all that is printed. Call it
/// first.
void fillStandardDescriptors();

/// Drops all that is written to a file descriptor, by other libraries too: 1 is standard output,
/// 2 is standard error. If that fails, nothing is dropped; nor is it for -1.
class QuietDescriptor {
public:
    explicit QuietDescriptor(int descriptor);
    ~QuietDescriptor();
    QuietDescriptor(const QuietDescriptor&) = delete;
    QuietDescriptor& operator=(const QuietDescriptor&) = delete;

private:
    // -1 when they fail.
    static int openNowhere();
    static int copyOf(int descriptor);

    int descriptor;
    int kept = -1;  ///< a copy of the original descriptor, -1 without one
};
