#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "audio/QuietDescriptor.h"

namespace {

/// Opens `name` as the stream, if the program was started without it.
void fill(std::FILE* stream, const char* name, const char* mode) {
    if (_fileno(stream) < 0 || _get_osfhandle(_fileno(stream)) < 0) {
        static_cast<void>(std::freopen(name, mode, stream));
    }
}

}  // namespace

// A program with a window is not given the terminal that it is started from, and has to ask for it.
void fillStandardDescriptors() {
    const bool hasTerminal = AttachConsole(ATTACH_PARENT_PROCESS) != 0;
    const char* const screen = hasTerminal ? "CONOUT$" : "NUL";
    fill(stdin, "NUL", "r");
    fill(stdout, screen, "w");
    fill(stderr, screen, "w");
    // This C library has no buffer of a line, and a line is to be seen when it is printed.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::setvbuf(stderr, nullptr, _IONBF, 0);
}

int QuietDescriptor::openNowhere() {
    return _open("NUL", _O_WRONLY | _O_NOINHERIT);
}

int QuietDescriptor::copyOf(int descriptor) {
    return _dup(descriptor);
}
