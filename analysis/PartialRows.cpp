#include "analysis/PartialRows.h"

#include <algorithm>
#include <cmath>

#include "analysis/SpectrumRules.h"

namespace {

constexpr double lineHz = rules::binWidthHz;

// Klapuri's weights for a window of 93 ms; ours lasts 85 ms.
constexpr double weightHz = 52.0;
constexpr double weightPartialHz = 320.0;

/// What is taken away with a note is a little wider than a partial's reach: the flanks of its partials have
/// peaks of their own.
constexpr double takenHz = 1.3 * lineHz;

// The candidates for a fundamental.
/// Semitones below the lowest note: what is lower than any note, such as hum, must not pass for one.
constexpr double candidateMargin = 6.0;
constexpr double leastCandidatePitch = PartialRows::lowestPitch - candidateMargin;
constexpr double mostCandidatePitch = PartialRows::highestPitch + 0.5;
/// Nearer than that two are the same.
constexpr double candidatesInASemitone = 4.0;
constexpr auto candidateCount =
    static_cast<std::size_t>((mostCandidatePitch - leastCandidatePitch) * candidatesInASemitone) + 1;
constexpr int highestDivisor = 5;  ///< a peak may be the first to fifth partial of a note
constexpr double holeCost = 0.5;   ///< of what a partial there would add
/// A partial in a place that another note has taken: it may be there or not.
constexpr double takenGain = 0.5;

// When a lower fundamental explains more: four of five partials between those of the upper one are there, and
// its score is at least half as high.
constexpr double lowerPartials = 0.8;
constexpr double lowerScore = 0.5;
constexpr int lowerRange = 4;  ///< how many partials of the upper one to look between
/// And up to where: a partial may lie off its place, and at 5 kHz the peaks end.
constexpr double lowerHz = 4800.0;

/// By how much a favoured note is more likely than another one.
constexpr double favour = 0.3;
/// The share of all power up to 5 kHz that the notes' partials must hold. With less it is noise.
constexpr double leastTonal = 0.3;

}  // namespace

PartialRows::PartialRows(double a4) : a4Hz(a4) {
}

std::size_t PartialRows::semitoneOf(double pitch) {
    const long semitones = std::lround(pitch) % 12;
    return static_cast<std::size_t>(semitones < 0 ? semitones + 12 : semitones);
}

void PartialRows::find(const std::vector<double>& levelsDb, double leastDb, const std::bitset<12>& favoured) {
    peaks.find(levelsDb, leastDb);
    isTaken = {};
    foundCount = 0;
    double tonal = 0.0;
    while (foundCount < maxNotes) {
        Row row = bestRow(favoured);
        if (row.peakCount == 0 || (foundCount > 0 && row.score < weakest * found[0].score)) {
            break;
        }
        row = lowered(row);
        double strongest = 0.0;
        for (std::size_t i = 0; i < row.peakCount; ++i) {
            tonal += row.peaks[i]->power;
            strongest = std::max(strongest, row.peaks[i]->power);
        }
        found[foundCount++] = {row.hz, row.score, pitchOf(row.hz), strongest};
        take(row);
    }
    if (tonal < leastTonal * peaks.totalPower()) {
        foundCount = 0;
    }
}

PartialRows::Row PartialRows::bestRow(const std::bitset<12>& favoured) const {
    std::array<bool, candidateCount> tried{};
    Row best;
    for (const SpectrumPeaks::Peak& peak : peaks) {
        for (int divisor = 1; divisor <= highestDivisor && !isTaken[indexOf(peak)]; ++divisor) {
            const double hz = peak.hz / divisor;
            const double pitch = pitchOf(hz);
            if (pitch > mostCandidatePitch || pitch < leastCandidatePitch) {
                continue;
            }
            bool& isTried =
                tried[static_cast<std::size_t>((pitch - leastCandidatePitch) * candidatesInASemitone)];
            if (isTried) {
                continue;
            }
            isTried = true;
            Row row = rowOn(hz);
            if (favoured[semitoneOf(pitchOf(row.hz))]) {
                row.score *= 1.0 + favour;
            }
            if (row.score > best.score) {
                best = row;
            }
        }
    }
    return best;
}

PartialRows::Row PartialRows::rowOn(double hz) const {
    Row row;
    row.hz = hz;
    double sum = 0.0;
    double gained = 0.0;
    double lost = 0.0;
    double holes = 0.0;
    double hzSum = 0.0;
    double weightSum = 0.0;
    constexpr double highestHz = static_cast<double>(SpectrumPeaks::lineCount - 2) * lineHz;
    for (std::size_t i = 1; i <= maxPartials && static_cast<double>(i) * row.hz < highestHz; ++i) {
        const auto partial = static_cast<double>(i);
        const double weight = (hz + weightHz) / (partial * hz + weightPartialHz);
        const SpectrumPeaks::Peak* const peak = peaks.nearestTo(partial * row.hz);
        if (peak == nullptr) {
            holes += weight;
        } else if (isTaken[indexOf(*peak)]) {
            gained += takenGain * weight;
        } else {
            sum += weight * peak->weight;
            gained += weight;
            // Holes above the highest partial cost nothing.
            lost += holes;
            holes = 0.0;
            hzSum += peak->weight * partial * peak->hz;
            weightSum += peak->weight * partial * partial;
            row.hz = hzSum / weightSum;
            row.peaks[row.peakCount++] = peak;
        }
    }
    if (row.peakCount > 0) {
        row.score = sum * std::max(0.0, 1.0 - holeCost * lost / gained);
    }
    return row;
}

PartialRows::Row PartialRows::lowered(Row row) const {
    for (int divisor = 2; divisor <= highestDivisor; ++divisor) {
        const double hz = row.hz / divisor;
        if (pitchOf(hz) < lowestPitch - inTune) {
            break;
        }
        if (!hasLowerPartials(hz, divisor)) {
            continue;
        }
        Row lower = rowOn(hz);
        if (lower.score > lowerScore * row.score) {
            lower.score = std::max(lower.score, row.score);
            row = lower;
            divisor = 1;  // and what is below that one
        }
    }
    return row;
}

bool PartialRows::hasLowerPartials(double hz, int divisor) const {
    int wanted = 0;
    int there = 0;
    for (int partial = 1; partial <= lowerRange * divisor && partial * hz < lowerHz; ++partial) {
        if (partial % divisor != 0) {
            ++wanted;
            there += peaks.nearestTo(partial * hz) != nullptr ? 1 : 0;
        }
    }
    return there >= lowerPartials * wanted;
}

void PartialRows::take(const Row& row) {
    for (std::size_t i = 0; i < row.peakCount; ++i) {
        isTaken[indexOf(*row.peaks[i])] = true;
    }
    for (const SpectrumPeaks::Peak& peak : peaks) {
        const double partial = std::round(peak.hz / row.hz);
        const double placeHz = partial * row.hz;
        if (partial >= 1.0 && std::abs(peak.hz - placeHz) < takenHz + SpectrumPeaks::reachShare * placeHz) {
            isTaken[indexOf(peak)] = true;
        }
    }
}

double PartialRows::pitchOf(double hz) const {
    constexpr double a4Pitch = 69.0;
    return a4Pitch + 12.0 * std::log2(hz / a4Hz);
}
