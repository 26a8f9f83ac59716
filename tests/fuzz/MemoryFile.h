#pragma once

#include <string>

/// A file without a disk under it, to be opened by its path like any other.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    /// Replaces the contents.
    void write(std::string const& contents) const;
    char const* path() const { return name.c_str(); }

private:
    int descriptor;
    std::string name;
};
