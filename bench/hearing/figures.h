#pragma once

#include <string>
#include <vector>

#include "bench/hearing/Results.h"

/// What the bench found out, as CSV files in a folder. Shares are 0 to 1. `ear` names who listened: the
/// game's ears are "plain" and "fine", aubio's pitch tracker is "yinfft".

/// notes.csv: single notes, by player and octave. conditions.csv: notes out of tune, too quiet, in noise or
/// among others, and chords. silence.csv: notes heard in a room in which nobody plays.
void writeNoteFigures(const Archive& archive, const std::string& shippedTable, const std::string& folder);

/// songs.csv: what each performance earned, 0.08 s ahead and detached, or on the beat and legato. timing.csv:
/// means over all instruments by how far ahead of the beat they play.
void writeSongFigures(const Archive& archive, const std::string& shippedTable,
                      const std::vector<ShippedSong>& songs, const std::string& folder);

/// tables.csv: other note tables, also the best that a search finds for the tuned half.
void writeTableFigures(const Archive& archive, const std::string& shippedTable,
                       const std::vector<ShippedSong>& songs, const std::string& folder);
