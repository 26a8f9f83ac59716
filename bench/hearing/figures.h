#pragma once

#include <string>
#include <vector>

#include "bench/hearing/Results.h"

/// What the bench found out, as CSV files in a folder. Shares are 0 to 1. `ear` names who listened: the
/// game's ears are "plain" and "fine", aubio's pitch tracker is "yinfft".

/// notes.csv: single notes, by player and octave. conditions.csv: notes out of tune, too quiet or in noise,
/// and chords, all instruments together. silence.csv: notes heard in a minute in which nobody plays.
void writeNoteFigures(const Archive& archive, const std::string& shippedTable, const std::string& folder);

/// songs.csv: what each performance earned, on the beat and 0.08 s ahead. timing.csv: means over all
/// instruments, for every fifth song, by how far ahead of the beat they play.
void writeSongFigures(const Archive& archive, const std::string& shippedTable,
                      const std::vector<ShippedSong>& songs, const std::string& folder);

/// tables.csv: other note tables. best-maps.csv: the best tables that a search finds for the notes they are
/// judged on. best-maps-songs.csv: what melodies in the top octave earn with those.
void writeTableFigures(const Archive& archive, const std::string& shippedTable,
                       const std::vector<ShippedSong>& songs, const std::string& folder);
