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

/// Names the fragment programs in the current GL context, or sets them to 0 where there are none. Each is
/// compiled when it is first drawn with.
void loadFragmentPrograms();

/// What to give to glUseProgram for a program of a polygon: one of ours is ready then, 0 if GL refuses it;
/// any other stays what it is.
unsigned int linkedProgram(unsigned int program);

/// Whether the current GL context has programs at all.
bool haveFragmentPrograms();

/// Whether the current GL context has this extension.
bool haveExtension(const std::string& name);

}  // namespace wt
