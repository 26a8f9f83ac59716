#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Where the game's data is: a folder with a "notes.txt" in it. The one that is `asked` for, else the first
/// of the working folder, its "data", the "data" of a folder above the program (as in a build of the
/// sources), and "share/games/zanto" beside the program's folder (as installed). None when there is no
/// notes.txt.
std::optional<std::filesystem::path> findDataFolder(std::optional<std::string> const& asked);

/// The same, with the place of the program itself given.
std::optional<std::filesystem::path> findDataFolder(std::optional<std::string> const& asked,
                                                    std::filesystem::path const& program);

/// Makes a folder the working one for as long as this lives: the game's classes read their data from there.
class WorkingFolder {
public:
    explicit WorkingFolder(std::filesystem::path const& folder);
    ~WorkingFolder();
    WorkingFolder(WorkingFolder const&) = delete;
    WorkingFolder& operator=(WorkingFolder const&) = delete;

private:
    std::filesystem::path before;
};
