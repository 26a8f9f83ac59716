#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A file in memory, on Windows a temporary one. It goes when this or the program ends.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Its name, for this program and those that it runs.
    const std::string& path() const { return name; }

    int getDescriptor() const { return descriptor; }
    std::string contents() const;

private:
    int descriptor;
    std::string name;
};

/// The file of the program that runs; empty when it cannot be told.
std::filesystem::path thisProgram();

/// What a program left behind.
struct ProgramResult {
    int status;  ///< its exit status; 128 and more when a signal ended it
    std::string out;
    std::string errors;
};

/// Runs a program of the search path with these arguments, without a shell and without input, to its end.
/// None when it cannot be started, which mostly means that it is not installed.
std::optional<ProgramResult> runProgram(const std::vector<std::string>& command);
