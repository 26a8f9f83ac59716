#pragma once

#include <string>

/// A file without a disk under it, to be opened by its path like any other.
class InputFile {
public:
    InputFile();
    ~InputFile();
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    /// Replaces the contents.
    void write(const std::string& contents) const;
    const char* path() const { return name.c_str(); }

private:
    int descriptor;
    std::string name;
};
