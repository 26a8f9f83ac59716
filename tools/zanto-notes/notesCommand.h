#pragma once

#include <iosfwd>
#include <string>
#include <vector>

/// `zanto-notes`: writes the note table that its arguments ask for to `out`. Wrong arguments give one line on
/// `err` that names the option, nothing on `out`, and status 2; output that cannot be written, status 1.
int notesCommand(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err);
