#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// Where the game's data is: a folder with a "notes.txt" in it. The one that is `asked` for, else the first
/// of the working folder, its "data", the "data" of a folder above the program (as in a build of the
/// sources), and "share/games/zanto" beside the program's folder (as installed). None when there is no
/// notes.txt.
std::optional<std::filesystem::path> findDataFolder(const std::optional<std::string>& asked);

/// The same, or a Failure that names the option --data.
std::filesystem::path requireDataFolder(const std::optional<std::string>& asked);

/// The first one, with the place of the program itself given.
std::optional<std::filesystem::path> findDataFolder(const std::optional<std::string>& asked,
                                                    const std::filesystem::path& program);

/// Makes a folder the working one for as long as this lives: the game's classes read their data from there.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::filesystem::path& folder);
    ~WorkingFolder();
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    std::filesystem::path before;
};
