#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/zanto-song/Problem.h"

/// Everything that is hardly meant in the contents of a song listing. The game refuses no listing, so there
/// are only warnings. `songState` says of a file name whether there is such a song and whether it loads.
enum class SongState { missing, faulty, fine };
std::vector<Problem> checkListing(const std::string& contents,
                                  const std::function<SongState(const std::string& fileName)>& songState);
