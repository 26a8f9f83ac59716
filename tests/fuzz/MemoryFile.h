#pragma once

#include <string>

/// A file without a disk under it, to be opened by its path like any other.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /// Replaces the contents.
    void write(const std::string& contents) const;
    const char* path() const { return name.c_str(); }

private:
    int descriptor;
    std::string name;
};
