#include "analysis/SpectrumPeaks.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "analysis/SpectrumRules.h"

namespace {

constexpr double lineHz = rules::binWidthHz;
/// 47 Hz, below the lowest fundamental; the window spreads a constant over the lines below.
constexpr std::size_t lowestLine = 4;
/// The side lobes of the Hamming window lie 43 dB below its main lobe: a peak as weak as that may not be a
/// sound.
constexpr double peakRangeDb = 42.0;
/// Partials at most this much below the threshold count for a note with a stronger one.
constexpr double supportDb = 20.0;
/// Nearly one line: how exactly a partial's place is known.
constexpr double reachHz = 0.8 * lineHz;
/// The power of a sine is spread over lines that add up to this many times its peak (Hamming window).
constexpr double windowSpread = 1.36;

double limited(double levelDb) {
    constexpr double limit = SpectrumPeaks::levelLimitDb;
    return levelDb > -limit ? std::min(levelDb, limit) : -limit;
}

}  // namespace

double SpectrumPeaks::powerOf(double levelDb) {
    return std::pow(10.0, levelDb / 10.0);
}

void SpectrumPeaks::find(const std::vector<double>& levelsDb, double leastDb) {
    Spectrum level{};
    std::transform(levelsDb.begin(), levelsDb.begin() + lineCount, level.begin(), limited);
    std::transform(level.begin(), level.end(), linePower.begin(), powerOf);
    const auto isPeak = [&](std::size_t line) {
        return level[line] > level[line - 1] && level[line] >= level[line + 1];
    };
    double loudestDb = -levelLimitDb;
    for (std::size_t line = lowestLine; line + 1 < lineCount; ++line) {
        loudestDb = isPeak(line) ? std::max(loudestDb, level[line]) : loudestDb;
    }
    // Partials below the threshold speak for a note that is above it.
    const double lowestDb = std::max(loudestDb - peakRangeDb, leastDb - supportDb);
    peakCount = 0;
    for (std::size_t line = lowestLine; line + 1 < lineCount && loudestDb > leastDb; ++line) {
        if (!(level[line] > lowestDb) || !isPeak(line)) {
            continue;
        }
        // The top of the parabola through the three levels.
        const double slope = level[line - 1] - level[line + 1];
        const double bend = level[line - 1] - 2.0 * level[line] + level[line + 1];
        const double offset = bend < 0.0 ? 0.5 * slope / bend : 0.0;
        const double topDb = level[line] - 0.25 * slope * offset;
        peaks[peakCount++] = {(static_cast<double>(line) + offset) * lineHz, powerOf(topDb / 4.0),
                              powerOf(topDb)};
    }
    std::size_t next = 0;
    for (std::size_t line = 0; line < lineCount; ++line) {
        const double hz = static_cast<double>(line) * lineHz;
        while (next + 1 < peakCount && peaks[next + 1].hz - hz < hz - peaks[next].hz) {
            ++next;
        }
        nearestPeak[line] = next;
    }
}

const SpectrumPeaks::Peak* SpectrumPeaks::nearestTo(double hz) const {
    const auto line = static_cast<std::size_t>(std::lround(hz / lineHz));
    if (line >= lineCount || peakCount == 0) {
        return nullptr;
    }
    const Peak& peak = peaks[nearestPeak[line]];
    return std::abs(peak.hz - hz) < reachHz + reachShare * hz ? &peak : nullptr;
}

double SpectrumPeaks::totalPower() const {
    return std::accumulate(linePower.begin() + lowestLine, linePower.end(), 0.0) / windowSpread;
}
