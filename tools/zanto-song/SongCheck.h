#pragma once

#include <string>
#include <vector>

#include "tools/zanto-song/Problem.h"

/// Everything that is wrong with the contents of a song file, in the order of its lines.
///
/// It contains an error exactly when Song::load refuses a file of these contents. Where the game stops
/// reading at the first fault, this goes on to the last one; where the game ignores the rest of a file, so
/// does this.
std::vector<Problem> checkSong(const std::string& contents);
