#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A spectral peak as the game reported it.
struct HeardPeak {
    std::uint16_t bin;
    float levelDb;
};

/// What the game's analysis made of one sound: for every block of samples that the sound card delivers, the
/// peaks that the spectrum had once the block had arrived. Peaks more than 6 dB below the loudest are left
/// out: the game keeps none of them. Replaying the peaks gives the game the same notes as the sound itself,
/// for any note table, at a hundredth of the cost.
struct Recording {
    std::vector<std::vector<HeardPeak>> blocks;
    /// The peer's pitch in Hz, 0 for none, 100 times a second; empty where the peer did not listen.
    std::vector<float> peerHz;
};

constexpr int blockSamples = 1024;  ///< that the game's audio input delivers at a time

/// Plays `sound`, mono at 48000 Hz, through the game's ring buffer and note estimation with the threshold
/// `minDecibel`; with `peer`, to aubio's yinfft too. No note table is needed.
Recording listen(std::vector<float> const& sound, double minDecibel, bool peer);

/// Where the bench keeps its recordings. `read` gives an empty vector when there is no such file.
void writeRecordings(std::string const& path, std::vector<Recording> const& recordings);
std::vector<Recording> readRecordings(std::string const& path);
