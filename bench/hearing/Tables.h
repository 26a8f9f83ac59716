#pragma once

#include <map>
#include <string>
#include <vector>

#include "bench/hearing/Judge.h"
#include "bench/hearing/Recording.h"

/// A note table that was tried.
struct Candidate {
    std::string name;
    std::string text;  ///< as a notes.txt
};

/// The tables that need no training. "pitches" lists the equal-tempered naturals A2 to C7; "nearest" gives
/// each line to its nearest semitone, up to C7; the others are the model of zanto-notes with one constant
/// changed.
std::vector<Candidate> ruledCandidates();

/// From a spectral line (bin) to a note, 0 to 6.
using BinMap = std::map<int, int>;

std::string tableText(const BinMap& map);

/// Looks for the bin map that hears some takes best. It shows what the rules of the game allow at most.
///
/// Starts at a given map and changes one bin at a time until no single change gains anything. The gain is the
/// share of right frames minus `wrongWeight` times the share of wrong ones.
class BinMapSearch {
public:
    /// Adds the frames of a single note.
    void add(const Take& take, const Recording& recording);

    BinMap best(const BinMap& start, double wrongWeight) const;

private:
    struct Sight {
        int note;  ///< 0 to 6; -1 for a sharp
        std::vector<int> bins;
    };

    double gain(const std::vector<std::pair<Sight, double>>& sights, const std::vector<std::size_t>& which,
                const BinMap& map, double wrongWeight) const;

    /// How many frames showed these peaks for that note.
    std::map<std::pair<int, std::vector<int>>, double> frames;
};

/// The bins that a table lists.
BinMap binMapOf(const std::string& tableText);
