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
    /// The notes that the fine ear hears, 100 times a second from the start on, one bit each, C the lowest.
    std::vector<std::uint8_t> fineNotes;
    /// The same of the peer.
    std::vector<std::uint8_t> peerNotes;
    float lateDb = 0.0f;  ///< of a take, what `lateLevelDb` says of its sound
};

constexpr int blockSamples = 1024;    ///< that the game's audio input delivers at a time
constexpr int framesPerSecond = 100;  ///< of the game

/// Plays `sound`, mono at 48000 Hz, through the game's ring buffer and note estimation, with either ear and
/// the threshold `minDecibel`, and to aubio's yinfft. No note table is needed.
Recording listen(const std::vector<float>& sound, double minDecibel);

/// Where the bench keeps its recordings. `read` gives an empty vector when there is no such file.
void writeRecordings(const std::string& path, const std::vector<Recording>& recordings);
std::vector<Recording> readRecordings(const std::string& path);
