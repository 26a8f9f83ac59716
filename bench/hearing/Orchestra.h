#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Where the sound of a player comes from.
enum class Source {
    fluidR3,    ///< the soundfont that the bench is about
    synthetic,  ///< computed
    festival,   ///< a recorded voice
    timGM6mb    ///< a soundfont that nothing was tuned to
};

/// A player of the bench: a sampled instrument or a voice, and the notes that it has.
struct Player {
    std::string name;
    Source source;
    int program;       ///< General MIDI, from 0, of an instrument
    char vowel;        ///< of a voice, else 0
    int lowestPitch;   ///< sounding, MIDI; the bench looks at C2 (36) to B5 (83) only
    int highestPitch;  ///< sounding, MIDI

    bool playsOctave(int octave) const;
};

/// The sampled instruments first, then the voices, then the same instruments of the other soundfont. A
/// player's place in it is its number everywhere.
const std::vector<Player>& orchestra();

/// How many of them are instruments of the soundfont that the bench is about.
std::size_t instrumentCount();

/// Every second instrument, beginning with the first, is in the half that the note table was tuned on; the
/// families are spread over both halves. No voice is.
bool isTunedOn(std::size_t place);

/// The lowest pitch of an octave: C4 is 60.
constexpr int pitchOfC(int octave) {
    return 12 * (octave + 1);
}

/// The scientific octave of a pitch.
constexpr int octaveOf(int pitch) {
    return pitch / 12 - 1;
}
