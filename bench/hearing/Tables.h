#pragma once

#include <map>
#include <string>
#include <vector>

#include "bench/hearing/Judge.h"
#include "bench/hearing/Recording.h"

/// A note table that was tried.
struct Candidate {
    std::string name;
    std::string what;
    std::string text;  ///< as a notes.txt
};

/// The tables that need no training: by rule, and the model of zanto-notes with its constants moved.
std::vector<Candidate> ruledCandidates();

/// From a spectral line (bin) to a note, 0 to 6.
using BinMap = std::map<int, int>;

std::string tableText(BinMap const& map);

/// Looks for the bin map that hears some takes best, to know what the rules of the game allow at most.
///
/// Climbs from a given map, one bin at a time, to where no single change gains anything. What it gains is the
/// share of right frames minus `wrongWeight` times the share of wrong ones.
class BinMapSearch {
public:
    /// Adds the frames of a single note.
    void add(Take const& take, Recording const& recording);

    BinMap best(BinMap const& start, double wrongWeight) const;

private:
    struct Sight {
        int note;  ///< 0 to 6; -1 for a sharp
        std::vector<int> bins;
    };

    double gain(std::vector<std::pair<Sight, double>> const& sights, std::vector<std::size_t> const& which,
                BinMap const& map, double wrongWeight) const;

    /// How many frames showed these peaks for that note.
    std::map<std::pair<int, std::vector<int>>, double> frames;
};

/// The bins that a table lists.
BinMap binMapOf(std::string const& tableText);
