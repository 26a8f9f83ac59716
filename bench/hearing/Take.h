#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bench/hearing/Orchestra.h"
#include "bench/hearing/Synth.h"

/// What a take is recorded for.
enum class Trial { plain, detuned, quiet, noisy, chord };

enum class Noise { none, white, hum };

/// One note or chord, struck once.
struct Take {
    Trial trial;
    std::vector<int> pitches;
    Touch touch;
    double levelDb = 0.0;       ///< from the level of a well-set input
    Noise noise = Noise::none;  ///< mixed in
    double noiseBelowDb = 0.0;  ///< below the note
};

constexpr double attackSeconds = 0.2;  ///< from the sound's start
constexpr double holdSeconds = 1.0;
constexpr double takeSeconds = 1.3;

constexpr int softVelocity = 50;
constexpr int mediumVelocity = 85;
constexpr int loudVelocity = 120;

/// All takes of a player, always in the same order: every semitone of its range at three loudnesses, dry and
/// with room; its naturals out of tune, at lower levels, and in noise; chords of naturals.
std::vector<Take> takesOf(Player const& player);

/// Turns takes and songs into sound. The input level is set once for each player as one would: its loudest
/// note peaks 3 dB below full scale.
class Studio {
public:
    explicit Studio(std::string const& soundfontPath);

    /// mono, 48000 Hz
    std::vector<float> sound(Player const& player, Take const& take);
    std::vector<float> sound(Player const& player, std::vector<NoteEvent> const& notes, double seconds);

private:
    std::vector<float> raw(Player const& player, std::vector<NoteEvent> const& notes, Touch const& touch,
                           double seconds);
    double inputGain(Player const& player);

    Synth synth;
    std::string levelledPlayer;
    double levelledGain = 1.0;
};
