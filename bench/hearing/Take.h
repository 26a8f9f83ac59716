#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analysis/SpectrumRules.h"
#include "bench/hearing/Orchestra.h"
#include "bench/hearing/Synth.h"

/// What a take is recorded for.
enum class Trial { plain, detuned, quiet, sensitive, noisy, chord };

enum class Noise { none, white, hum };

constexpr double usualMinDecibel = rules::usualMinDecibel;
constexpr double sensitiveMinDecibel = -85.0;

/// One note or chord, struck once.
struct Take {
    Trial trial;
    std::vector<int> pitches;
    Touch touch;
    double levelDb = 0.0;                 ///< from the level of a well-set input
    Noise noise = Noise::none;            ///< mixed in
    double noiseBelowDb = 0.0;            ///< below the note
    double minDecibel = usualMinDecibel;  ///< what the game's ZANTO_MIN_DECIBEL is set to
};

constexpr double attackSeconds = 0.2;  ///< from the sound's start
constexpr double holdSeconds = 1.0;
constexpr double takeSeconds = 1.7;

constexpr int softVelocity = 50;
constexpr int mediumVelocity = 85;
constexpr int loudVelocity = 120;

/// All takes of a player, always in the same order: every semitone of its range at three loudnesses, dry and
/// with room; its naturals out of tune, at lower levels with the usual and with a low threshold, and in
/// noise; chords of naturals.
std::vector<Take> takesOf(const Player& player);

/// A minute of a room in which nobody plays: noise at a level below full scale.
struct Quiet {
    Noise noise;
    double levelDb;  ///< root mean square, full scale 0 dB
    double minDecibel;
};

constexpr double quietSeconds = 60.0;

/// All of those, always in the same order.
std::vector<Quiet> quiets();

/// Turns takes and songs into sound. The input level is set once for each player as one would: its loudest
/// note peaks 3 dB below full scale.
class Studio {
public:
    explicit Studio(const std::string& soundfontPath);

    /// mono, 48000 Hz
    std::vector<float> sound(const Player& player, const Take& take);
    std::vector<float> sound(const Player& player, const std::vector<NoteEvent>& notes, double seconds);
    static std::vector<float> sound(const Quiet& quiet);

private:
    std::vector<float> raw(const Player& player, const std::vector<NoteEvent>& notes, const Touch& touch,
                           double seconds);
    double inputGain(const Player& player);

    Synth synth;
    std::string levelledPlayer;
    double levelledGain = 1.0;
};
