#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

/// What is written at a measure about the order in which the measures are played.
struct MeasureSigns {
    enum class Jump { None, DaCapo, DalSegno };

    bool repeatBegins = false;  ///< at its left
    int timesPlayed = 0;  ///< at its right: how often the repeat that ends here is played, 0 for no repeat
    std::set<int> endingBegins;  ///< an ending begins at its left, for these rounds of the repeat
    bool endingEnds = false;     ///< an ending ends at its right
    bool segno = false;          ///< at its left
    bool coda = false;           ///< at its left
    Jump jump = Jump::None;      ///< at its right, once, when all repeats that end here are played
    bool toCoda = false;         ///< at its right: after a jump the music goes on at the coda
    bool fine = false;           ///< at its right: after a jump the music ends
};

/// The indices of measures in the order in which they are played, repeats, endings and jumps written out.
/// After a jump each repeat is played once, with its last ending, until the coda. Where the sign
/// of the coda stands several times and nothing says "to coda", all but the last one say so. Throws a Failure
/// for a jump to a sign that is not there, and for more than a hundred thousand measures.
std::vector<std::size_t> playingOrder(std::vector<MeasureSigns> measures);

/// Adds what a text says: "D.C. al Fine", "dal segno", "To Coda", "Fine", "segno", "coda", in capital letters
/// or not. False for any other text.
bool addSign(const std::string& text, MeasureSigns& signs);
