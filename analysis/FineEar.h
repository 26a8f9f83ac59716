#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "analysis/Notes.h"
#include "analysis/PartialRows.h"

/// The finer of the game's two ears: which naturals sound, judged by all their partials and over time.
///
/// PartialRows finds the notes of each spectrum. Each is held against equal temperament: naturals count,
/// sharps and notes far out of tune do not. A note that is struck alone, and is the strongest, is heard at
/// once, any other once it has been found for longer than a click lasts. A note that began before another one
/// and has fallen fast since is let go: it has ended and only its reverberation is left. A note that fades
/// alone is kept, also a little below the threshold. How notes begin and end are our own rules.
///
/// Owned by NoteEstimation, main thread only. Octaves do not matter to it, as they do not to the game. After
/// construction it allocates nothing.
///
///     FineEar ear(440.0, 0);
///     for (Notes::NoteID note : ear.hear(levelsDb, -65.0, frameSeconds)) ...
class FineEar {
public:
    /// `a4Hz` is what A4 is tuned to. `transposeSemitones` is how far a written note sounds from its name: -2
    /// for a B flat clarinet.
    FineEar(double a4Hz, int transposeSemitones);

    /// The naturals that sound in a spectrum of the newest 4096 samples at 48000 Hz through a Hamming window,
    /// each once: `levelsDb` has one level per line, from 0 Hz on, at least SpectrumPeaks::lineCount; any
    /// value may stand in it. A partial of each note that begins must exceed `leastDb`. `dtSeconds` is the
    /// time since the last call. The result is valid until the next one.
    const std::vector<Notes::NoteID>& hear(const std::vector<double>& levelsDb, double leastDb,
                                           double dtSeconds);

private:
    /// What is known of a sounding note whatever its octave, sharps included.
    struct Voice {
        bool isFound = false;   ///< in this spectrum
        bool isHeard = false;   ///< reported
        bool isStruck = false;  ///< its partials rose when it began
        bool hasEnded = false;  ///< it only reverberates
        bool hasFallen = false;
        double age = 0.0;       ///< seconds since it was first found
        double found = 0.0;     ///< seconds for which it has been found without a break
        double missed = 0.0;    ///< seconds for which it has not been found
        double power = 0.0;     ///< of the partials that are its own
        double endPower = 0.0;  ///< the least since it ended
    };
    using Found = std::array<const PartialRows::Note*, 12>;  ///< by semitone; null for none

    /// Which of the rows is which voice's.
    Found match(double leastDb) const;
    /// The semitone that a pitch is meant to be: the nearest, or the next one if that sounds already and this
    /// one does not.
    double keyOf(double pitch) const;
    void followPower(double dtSeconds);
    void followVoice(Voice& voice, const PartialRows::Note* note, double dtSeconds);
    bool isOwn(double hz, const PartialRows::Note& note) const;
    void judgeEnd(Voice& voice) const;

    PartialRows rows;
    int transposeSemitones;
    std::array<Voice, 12> voices{};
    SpectrumPeaks::Spectrum peakPower{};  ///< the recent maximum
    SpectrumPeaks::Spectrum restPower{};  ///< the recent minimum
    std::vector<Notes::NoteID> notes;
};
