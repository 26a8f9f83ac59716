#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/SpectrumRules.h"
#include "bench/hearing/Orchestra.h"
#include "bench/hearing/Synth.h"

/// What a take is recorded for.
enum class Trial {
    plain,
    detuned,
    quiet,
    sensitive,
    noisy,
    chord,
    octaves,   ///< a note and its octave
    repeated,  ///< four times, a quarter of a second each
    legato,    ///< the natural below ends as it begins
    ringing,   ///< the natural two below goes on
    vibrato,   ///< of a quarter tone either way
    glide      ///< from a whole tone below
};

constexpr double attackSeconds = 0.2;  ///< of the first note, from the sound's start
constexpr double beforeSeconds = 0.5;  ///< how long the note before sounds alone
constexpr double holdSeconds = 1.0;
constexpr double judgedToSeconds = 0.9;  ///< after the attack
constexpr double takeSeconds = 1.7;      ///< of a take that is one note

enum class Noise { none, white, hum };

constexpr double usualMinDecibel = rules::usualMinDecibel;
constexpr double sensitiveMinDecibel = -85.0;

/// One note or chord, and what may go before it.
struct Take {
    Trial trial;
    std::vector<int> pitches;  ///< MIDI
    Touch touch;
    double levelDb = 0.0;                 ///< from the level of a well-set input
    Noise noise = Noise::none;            ///< mixed in
    double noiseBelowDb = 0.0;            ///< below the note
    double minDecibel = usualMinDecibel;  ///< what the game's ZANTO_MIN_DECIBEL is set to
    int before = 0;                       ///< MIDI, of the note before; 0 for none

    /// When the note or chord that is judged is there, in seconds from the sound's start.
    double attack() const;
    double seconds() const { return attack() + takeSeconds - attackSeconds; }
    std::vector<NoteEvent> notes() const;
};

constexpr int softVelocity = 50;
constexpr int mediumVelocity = 85;
constexpr int loudVelocity = 120;

/// All takes of a player, always in the same order: every semitone of its range at three loudnesses, and
/// medium loud with room; its C, E and A under every other trial; chords of naturals. Of a singer, every
/// semitone alone, and of an instrument of the other soundfont its dry naturals.
std::vector<Take> takesOf(const Player& player);

/// A room in which nobody plays: noise at a level below full scale.
struct Quiet {
    Noise noise;
    double levelDb;  ///< root mean square, full scale 0 dB
    double minDecibel;
};

constexpr double quietSeconds = 20.0;

/// All of those, always in the same order.
std::vector<Quiet> quiets();

/// The level of a sound when it is judged for the last time, in dB from its loudest, each the root mean
/// square of a twentieth of a second. Silence is 100 dB softer.
double lateLevelDb(const std::vector<float>& sound, double attack);

/// Turns takes and songs into sound. The input level is set once for each player as one would: its loudest
/// note peaks 3 dB below full scale.
class Studio {
public:
    /// mono, 48000 Hz
    std::vector<float> sound(const Player& player, const Take& take);
    std::vector<float> sound(const Player& player, const std::vector<NoteEvent>& notes, double seconds,
                             const Touch& touch = Touch());
    static std::vector<float> sound(const Quiet& quiet);

private:
    std::vector<float> raw(const Player& player, const std::vector<NoteEvent>& notes, const Touch& touch,
                           double seconds);
    double inputGain(const Player& player);

    std::map<Source, std::unique_ptr<Synth>> synths;  ///< those that were needed
    std::string levelledPlayer;
    double levelledGain = 1.0;
};
