#pragma once

#include <string>
#include <unordered_map>

namespace wt {

/// Things found by name.
struct wtSymbols {
    /// Fragment programs as GL program names. "solid_shader" fills with the polygon's colour and opacity.
    /// Without GL programs it is 0, the fixed function, which looks the same.
    static std::unordered_map<std::string, unsigned int> fragProgs;
};

/// Makes the fragment programs in the current GL context, or sets them to 0 if GL has no programs.
void loadFragmentPrograms();

}  // namespace wt
