#pragma once

#include <filesystem>

/// A folder of copies that shows the game's data and a player's own songs at once, in the place of the
/// system's temporary folders. It goes with this; one that a broken launcher left behind goes when the next
/// one is made.
///
///     OwnSongs view(data, own);
///     play(view.folder());
class OwnSongs {
public:
    /// Whether a player has songs in `own`/Songs, or a table `own`/notes.txt.
    static bool areIn(const std::filesystem::path& own);

    /// Copies both; throws std::filesystem::filesystem_error where that cannot be done.
    OwnSongs(const std::filesystem::path& data, const std::filesystem::path& own);
    ~OwnSongs();
    OwnSongs(const OwnSongs&) = delete;
    OwnSongs& operator=(const OwnSongs&) = delete;

    const std::filesystem::path& folder() const { return view; }

private:
    std::filesystem::path view;
    void* inUse;  ///< an open file beside the folder, which Windows deletes however this program ends
};
