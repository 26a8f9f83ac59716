#pragma once

#include <optional>
#include <string>
#include <vector>

/// What a program left behind.
struct ProgramResult {
    int status;  ///< its exit status; 128 and more when a signal ended it
    std::string out;
    std::string errors;
};

/// Runs a program of the search path with these arguments, without a shell and without input, to its end.
/// None when it cannot be started, which mostly means that it is not installed.
std::optional<ProgramResult> runProgram(std::vector<std::string> const& command);
