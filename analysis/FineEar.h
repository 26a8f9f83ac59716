#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "analysis/Notes.h"

/// The finer of the game's two ears: which naturals sound in a spectrum, judged by all their partials.
///
/// A note is a row of partials at whole multiples of its fundamental. The ear finds the peaks of the spectrum
/// and places each between the lines with a parabola through three levels. Each peak may be the first to
/// fifth partial of a note. Each of those fundamentals is scored by the peaks at its multiples. A peak counts
/// as strongly as it sounds loud, the square root of its amplitude, and higher partials count less. Holes in
/// the row cost. The best fundamental is a note, unless a lower one has the same partials and nearly all of
/// those between them: then that one is. Its partials are taken away, and the search starts again until what
/// is left is weak beside the first note. The fundamental, averaged over its partials, is held against equal
/// temperament: naturals count, sharps and notes far out of tune do not. A sound whose power is mostly not in
/// such rows is noise, and nothing is heard in it. A note that began before another one and has fallen fast
/// since is let go: it has ended and only its reverberation is left. A note that fades alone is kept.
///
/// Sources: score and removal follow A. Klapuri, "Multiple fundamental frequency estimation by summing
/// harmonic amplitudes" (ISMIR 2006), and its partial weights; the compression and the sum over multiples D.
/// J. Hermes, "Measurement of pitch by subharmonic summation" (J. Acoust. Soc. Am. 83, 1988). What speaks for
/// a lower fundamental, how notes end and what noise is are our own.
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
    /// each once: `levelsDb` has one level per line, from 0 Hz on, at least 512; any value may stand in it. A
    /// partial of each note must exceed `leastDb`. `dtSeconds` is the time since the last call. The result is
    /// valid until the next one.
    const std::vector<Notes::NoteID>& hear(const std::vector<double>& levelsDb, double leastDb,
                                           double dtSeconds);

private:
    static constexpr std::size_t lineCount = 430;  // to 5 kHz: what stands above tells little of a pitch
    static constexpr std::size_t maxPeaks = lineCount / 2;
    static constexpr std::size_t maxPartials =
        16;  // of C2 to 1 kHz; beyond, they lie less than half a tone apart
    static constexpr std::size_t maxNotes = 6;

    struct Peak {
        double hz;
        double weight;  ///< what it adds to a score
        double power;   ///< of the sine, 1 at full scale
        bool isTaken;   ///< by a note that was found
    };
    /// A row of partials.
    struct Row {
        double hz = 0.0;  ///< the fundamental, averaged over the partials
        double score = 0.0;
        std::array<std::size_t, maxPartials> peaks{};
        std::size_t peakCount = 0;
    };
    struct Found {
        double hz;
        double score;
        double pitch;  ///< as written, in semitones, A4 69
        double power;  ///< of its strongest partial
    };
    /// What is known of a note whatever its octave, sharps included.
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
    using Spectrum = std::array<double, lineCount>;

    void findPeaks(const std::vector<double>& levelsDb, double leastDb);
    void findNotes();
    Row rowOn(double hz) const;
    Row bestRow() const;
    Row lowered(Row row) const;
    bool hasLowerPartials(double hz, int divisor) const;
    const Peak* peakNear(double hz) const;
    void take(const Row& row);
    double pitchOf(double hz) const;
    void followPower(double dtSeconds);
    void followVoice(std::size_t place, const Found* note, double dtSeconds);
    bool isOwn(double hz, const Found& note) const;
    void judgeEnd(Voice& voice) const;

    double a4Hz;
    int transposeSemitones;
    std::array<Peak, maxPeaks> peaks{};
    std::size_t peakCount = 0;
    std::array<std::size_t, lineCount> nearestPeak{};  ///< by line
    std::array<Found, maxNotes> found{};
    std::size_t foundCount = 0;
    std::array<Voice, 12> voices{};
    Spectrum power{};      ///< by line
    Spectrum peakPower{};  ///< the recent maximum
    Spectrum restPower{};  ///< the recent minimum
    std::vector<Notes::NoteID> notes;
};
