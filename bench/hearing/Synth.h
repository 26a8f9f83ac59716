#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analysis/SpectrumRules.h"

constexpr int soundRateHz = rules::sampleRateHz;

/// One note of a sound. Times in seconds from the sound's start.
struct NoteEvent {
    int pitch;  ///< MIDI
    double startSeconds;
    double endSeconds;
};

/// How a player plays them.
struct Touch {
    int velocity = 85;          ///< MIDI, 1 to 127
    double detuneCents = 0.0;   ///< up to 200 either way
    bool room = false;          ///< with the sound of a room
    double vibratoCents = 0.0;  ///< either way
    bool glides = false;        ///< begins a whole tone too low
};

constexpr double glideSeconds = 0.2;

/// By how much a note is off `seconds` after its beginning, in cents.
double bendCents(const Touch& touch, double seconds);

/// Renders sampled instruments with FluidSynth, mono at 48000 Hz. The same call always gives the same sound:
/// it begins in silence, whatever rang before.
///
///     Synth synth("/usr/share/sounds/sf2/FluidR3_GM.sf2");
///     std::vector<float> sound = synth.render(73, {{72, 0.2, 1.2}}, Touch(), 1.6);
class Synth {
public:
    /// Throws std::runtime_error when the soundfont cannot be read.
    explicit Synth(const std::string& soundfontPath);
    ~Synth();
    Synth(const Synth&) = delete;
    Synth& operator=(const Synth&) = delete;

    /// `seconds` of a General MIDI `program`, from 0. Notes begin and end within 1.4 ms of their times.
    std::vector<float> render(int program, const std::vector<NoteEvent>& notes, const Touch& touch,
                              double seconds);

private:
    struct Engine;
    std::unique_ptr<Engine> engine;
};
