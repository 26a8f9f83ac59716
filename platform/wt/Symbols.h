#pragma once

#include <string>
#include <unordered_map>

namespace wt {

/// Things looked up by name.
struct wtSymbols {
    /// Fragment programs, GL program names: "solid_shader" fills with the polygon's colour and opacity,
    /// "picture_shader" with the picture of unit 0 as it is. Where GL has no programs they are 0, the fixed
    /// function, which looks the same.
    static std::unordered_map<std::string, unsigned int> fragProgs;
};

/// Makes the fragment programs in the current GL context, or sets them to 0 where there is none.
void loadFragmentPrograms();

/// Whether the current GL context has programs at all.
bool haveFragmentPrograms();

/// Whether the current GL context has this extension.
bool haveExtension(const std::string& name);

}  // namespace wt
