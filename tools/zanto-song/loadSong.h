#pragma once

#include <cstddef>
#include <string>

class Song;

/// The longest song: 11 hours. Rendered, it still fits a WAV file.
constexpr std::size_t mostSlots = 80000;

/// Loads the song at `path` as the game does, without what that prints. Throws a Failure that names the file.
void loadSong(const std::string& path, Song& song);

/// The name that the listing beside the song shows for it, else the file's own.
std::string titleOf(const std::string& path);
