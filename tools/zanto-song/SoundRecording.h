#pragma once

#include <optional>
#include <string>
#include <vector>

/// A sound file as the game's microphone would have delivered it: one channel at 48000 Hz.
struct SoundRecording {
    static constexpr int sampleRate = 48000;  ///< Hz

    std::vector<float> samples;  ///< nominally -1 to 1
    int fileRate = 0;            ///< Hz, of the file
    int fileChannels = 0;

    double seconds() const { return static_cast<double>(samples.size()) / sampleRate; }
};

/// Reads whatever libsndfile reads: WAV, FLAC, Ogg, MP3 and more. Several channels are averaged into one,
/// another rate is converted. None when the file cannot be read, with the reason in `problem`.
std::optional<SoundRecording> readRecording(std::string const& path, std::string& problem);
