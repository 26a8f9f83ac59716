#pragma once

#include <array>
#include <cstddef>
#include <vector>

/// The peaks of a spectrum up to 5 kHz, each placed between the lines with a parabola through three levels.
///
///     SpectrumPeaks peaks;
///     peaks.find(levelsDb, -65.0);
///     if (const SpectrumPeaks::Peak* const peak = peaks.nearestTo(880.0)) ...
class SpectrumPeaks {
public:
    static constexpr std::size_t lineCount = 430;  ///< to 5 kHz: what stands above tells little of a pitch
    static constexpr std::size_t mostPeaks = lineCount / 2;
    static constexpr double levelLimitDb = 200.0;  ///< no level counts as more, or as less than minus this

    using Spectrum = std::array<double, lineCount>;
    struct Peak {
        double hz;
        double weight;  ///< the square root of its amplitude, which goes with how loud it sounds
        double power;   ///< of the sine, 1 at full scale
    };

    /// Finds the peaks of a spectrum: those that are not much weaker than the loudest, none when that is not
    /// above `leastDb`. `levelsDb` has one level per line, from 0 Hz on, at least `lineCount`; any value may
    /// stand in it.
    void find(const std::vector<double>& levelsDb, double leastDb);

    const Peak* begin() const { return peaks.data(); }
    const Peak* end() const { return peaks.data() + peakCount; }
    /// The peak that a partial in this place would have; null when there is none, and beyond the last line.
    const Peak* nearestTo(double hz) const;

    /// The power in each line, 1 for a sine at full scale in its middle.
    const Spectrum& power() const { return linePower; }
    /// The power of all sines, or of the noise, in the lines that notes may have.
    double totalPower() const;

    /// How far a partial may be from its place because of what played it.
    static constexpr double reachShare = 0.016;
    /// The power of a level, 1 at 0 dB.
    static double powerOf(double levelDb);

private:
    std::array<Peak, mostPeaks> peaks{};
    std::size_t peakCount = 0;
    std::array<std::size_t, lineCount> nearestPeak{};  ///< by line
    Spectrum linePower{};
};
