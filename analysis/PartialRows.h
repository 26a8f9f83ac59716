#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <vector>

#include "analysis/SpectrumPeaks.h"

/// The notes in one spectrum, sharps included, found as rows of partials at whole multiples of a fundamental.
///
/// Each of SpectrumPeaks may be the first to fifth partial of a note. Each of those fundamentals is scored by
/// the peaks at its multiples. A peak counts as strongly as it sounds loud, the square root of its amplitude,
/// and higher partials count less. Holes in the row cost. The best fundamental is a note, unless a lower one
/// has the same partials and nearly all of those between them: then that one is. Its partials are taken away,
/// and the search starts again until what is left is weak beside the first note. The fundamental is averaged
/// over its partials. A spectrum whose power is mostly not in such rows is noise and has no notes.
///
/// Sources: score and removal follow A. Klapuri, "Multiple fundamental frequency estimation by summing
/// harmonic amplitudes" (ISMIR 2006), and its partial weights; the compression and the sum over multiples D.
/// J. Hermes, "Measurement of pitch by subharmonic summation" (J. Acoust. Soc. Am. 83, 1988). What speaks for
/// a lower fundamental and what noise is are our own.
///
///     PartialRows rows(440.0);
///     rows.find(levelsDb, -65.0, heard);
///     for (const PartialRows::Note& note : rows) ...
class PartialRows {
public:
    static constexpr double lowestPitch = 36.0;   ///< C2, in semitones, A4 69
    static constexpr double highestPitch = 84.0;  ///< C6
    /// The score that a note needs beside that of the loudest one. As scores go with the root of the
    /// amplitude, 25 dB below it.
    static constexpr double weakest = 0.23;
    static constexpr double inTune = 0.42;  ///< semitones

    struct Note {
        double hz;     ///< the fundamental
        double score;  ///< how strongly the partials speak for it
        double pitch;  ///< as it sounds, in semitones, A4 69
        double power;  ///< of its strongest partial, 1 for a sine at full scale
    };

    /// `a4Hz` is what A4 is tuned to.
    explicit PartialRows(double a4Hz);

    /// Finds the notes of a spectrum, the one with the best score first. `levelsDb` has one level per line,
    /// from 0 Hz on, at least SpectrumPeaks::lineCount; any value may stand in it. No peak above `leastDb`,
    /// no notes. `favoured` says by semitoneOf which notes are more likely, because they sound already.
    void find(const std::vector<double>& levelsDb, double leastDb, const std::bitset<12>& favoured);

    const Note* begin() const { return found.data(); }
    const Note* end() const { return found.data() + foundCount; }
    /// The power in each line of the spectrum last looked at.
    const SpectrumPeaks::Spectrum& power() const { return peaks.power(); }

    /// Which of the octave's twelve semitones is nearest to a pitch: 0 for C to 11 for B.
    static std::size_t semitoneOf(double pitch);

private:
    /// Of C2 to 1 kHz. Beyond, they lie less than half a tone apart.
    static constexpr std::size_t maxPartials = 16;
    static constexpr std::size_t maxNotes = 6;

    struct Row {
        double hz = 0.0;  ///< the fundamental, averaged over the partials
        double score = 0.0;
        std::array<const SpectrumPeaks::Peak*, maxPartials> peaks{};
        std::size_t peakCount = 0;
    };

    Row rowOn(double hz) const;
    Row bestRow(const std::bitset<12>& favoured) const;
    Row lowered(Row row) const;
    bool hasLowerPartials(double hz, int divisor) const;
    void take(const Row& row);
    std::size_t indexOf(const SpectrumPeaks::Peak& peak) const {
        return static_cast<std::size_t>(&peak - peaks.begin());
    }
    double pitchOf(double hz) const;

    double a4Hz;
    SpectrumPeaks peaks;
    std::array<bool, SpectrumPeaks::mostPeaks> isTaken{};  ///< by a note that was found
    std::array<Note, maxNotes> found{};
    std::size_t foundCount = 0;
};
