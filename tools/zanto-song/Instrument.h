#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// How an instrument sounds: the strengths of its harmonics and how a note begins, holds and ends.
///
///     Instrument const* flute = findInstrument("flute");
///     double sample = flute->sample(523.25, secondsIntoNote, noteSeconds);
///
/// Plain values, made once; safe to read from anywhere.
struct Instrument {
    std::string name;
    std::vector<double> harmonics;  ///< amplitude of the 1st, 2nd, ... harmonic; they add up to 1
    double attackSeconds;           ///< from silence to full strength
    double releaseSeconds;          ///< from the note's end to silence
    double decaySeconds;   ///< time in which a held note falls to 1/e; 0 for one that holds its level
    double inharmonicity;  ///< stretch of the upper harmonics, as of a stiff string; 0 for none
    double vibratoCents;   ///< greatest deviation of the pitch; sets in after the attack

    /// The sound `t` seconds into a note of `noteSeconds`, -1 to 1. Zero outside 0 .. noteSeconds + release.
    double sample(double frequencyHz, double t, double noteSeconds) const;

private:
    double envelope(double t, double noteSeconds) const;
};

/// All instruments. The first one is the default.
const std::vector<Instrument>& instruments();

/// The instrument of that name, or null.
const Instrument* findInstrument(const std::string& name);
