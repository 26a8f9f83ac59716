#pragma once

#include <cstdlib>

/// What tests call that the C library of Windows has under other names. Comes with the headers that all tests
/// are compiled with.
inline int setenv(const char* variable, const char* value, int) {
    return _putenv_s(variable, value);
}

inline int unsetenv(const char* variable) {
    return _putenv_s(variable, "");
}
