#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <vector>

/// What the bar lines of a measure say about its repetition.
struct MeasureSigns {
    bool repeatBegins = false;  ///< at its left
    int timesPlayed = 0;  ///< at its right: how often the repeat that ends here is played, 0 for no repeat
    std::set<int> endingBegins;  ///< an ending begins at its left, for these rounds of the repeat
    bool endingEnds = false;     ///< an ending ends at its right
};

/// The indices of measures in the order in which they are played, repeats and endings written out. None for
/// one of more than a hundred thousand.
std::optional<std::vector<std::size_t>> playingOrder(const std::vector<MeasureSigns>& measures);
