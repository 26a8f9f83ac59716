#pragma once

#include <filesystem>
#include <string>

/// An empty folder that is the working directory as long as this lives, and is removed with all its contents
/// afterwards.
///
///     TemporaryFolder folder;
///     folder.write("Songs/listing.txt", "Scale scale.txt\n");
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Writes a file, and the folders above it; returns its absolute path.
    std::string write(const std::string& name, const std::string& contents) const;

    const std::filesystem::path& path() const { return folder; }

private:
    std::filesystem::path before;
    std::filesystem::path folder;
};
