// Files and what is printed have the same bytes in every program as on other systems.
#include <fcntl.h>
#include <io.h>

#include <cstdio>

#undef _fmode

extern "C" {
int _fmode = _O_BINARY;  // the C library of Windows looks at it when a program starts
}

namespace {

[[maybe_unused]] const bool areBinary =
    _setmode(_fileno(stdout), _O_BINARY) != -1 && _setmode(_fileno(stderr), _O_BINARY) != -1;

}  // namespace
