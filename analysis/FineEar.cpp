#include "analysis/FineEar.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "analysis/SpectrumRules.h"

namespace {

constexpr double lineHz = rules::binWidthHz;
/// 47 Hz, below the lowest fundamental; the window spreads a constant over the lines below.
constexpr std::size_t lowestLine = 4;
/// Any level is brought into this range, which no sound comes near.
constexpr double levelLimitDb = 200.0;
/// The side lobes of the Hamming window lie 43 dB below its main lobe: a peak as weak as that may not be a
/// sound.
constexpr double peakRangeDb = 42.0;
/// Partials at most this much below the threshold count for a note with a stronger one.
constexpr double supportDb = 20.0;

// The range of the notes, in semitones, A4 69: C2 to C6.
constexpr double lowestPitch = 36.0;
constexpr double highestPitch = 84.0;
constexpr double a4Pitch = 69.0;

// Klapuri's weights for a window of 93 ms; ours lasts 85 ms.
constexpr double weightHz = 52.0;
constexpr double weightPartialHz = 320.0;

/// How far a partial may be from its place: nearly one line, and the quarter of a semitone by which stiff
/// strings and vibrato move it.
constexpr double reachHz = 0.8 * lineHz;
constexpr double reachShare = 0.016;
/// What is taken away with a note is a little wider: the flanks of its partials have peaks of their own.
constexpr double takenHz = 1.3 * lineHz;
/// Two partials nearer than this share a peak.
constexpr double sharedHz = 1.5 * lineHz;

constexpr int highestDivisor = 5;  ///< a peak may be the first to fifth partial of a note
constexpr double holeCost = 0.5;   ///< of what a partial there would add
/// A partial in a place that another note has taken: it may be there or not.
constexpr double takenGain = 0.5;

// When a lower fundamental explains more: four of five partials between those of the upper one are there, and
// its score is at least half as high.
constexpr double lowerPartials = 0.8;
constexpr double lowerScore = 0.5;
constexpr int lowerRange = 4;  ///< how many partials of the upper one to look between

/// The score of a note beside that of the loudest one; as scores go with the root of the amplitude, 17 dB
/// below it. One that sounds already is heard down to 25 dB.
constexpr double weakestNew = 0.38;
constexpr double weakestHeard = 0.23;
/// By how much a note that sounds is more likely than another one.
constexpr double heardBonus = 0.3;
/// The share of all power up to 5 kHz that the notes' partials must hold. With less it is noise.
constexpr double leastTonal = 0.3;
/// The power of a sine is spread over lines that add up to this many times its peak (Hamming window).
constexpr double windowSpread = 1.36;

// In semitones. A singer's vibrato may take a note that is heard further off.
constexpr double inTune = 0.42;
constexpr double inTuneHeard = 0.6;

/// One more block of samples (21 ms) must show a note before it is heard: clicks and attacks do not.
constexpr double confirmSeconds = 0.025;
/// A voice that beats or trembles may be lost for as long and is still the same.
constexpr double lostSeconds = 0.06;

// The end of a note.
constexpr std::size_t endPartials = 8;  ///< whose power is looked at
/// Notes that begin within this time are one chord.
constexpr double chordSeconds = 0.08;
/// A note that ends because another one begins has fallen in this time, even in a room.
constexpr double endSeconds = 0.25;
constexpr double strikeSeconds = 0.1;  ///< in which an attack is over
constexpr double strikeRatio = 4.0;    ///< of the power: a new note rises by 6 dB at least
constexpr double fallRatio = 2.0;      ///< of the power, 3 dB, below the recent maximum
constexpr double returnRatio = 2.5;    ///< of the power, 4 dB: it is played again
/// The recent maximum sinks by this: strings that ring on fade more slowly, a room (0.5 s to -60 dB) faster.
constexpr double fadeDbPerSecond = 20.0;
/// The recent minimum rises by this, which keeps it low while an attack lasts.
constexpr double riseDbPerSecond = 40.0;

constexpr int naturals[12] = {0, -1, 1, -1, 2, 3, -1, 4, -1, 5, -1, 6};

double powerOf(double levelDb) {
    return std::pow(10.0, levelDb / 10.0);
}

double limited(double levelDb) {
    return levelDb > -levelLimitDb ? std::min(levelDb, levelLimitDb) : -levelLimitDb;
}

/// Of a sounding pitch.
bool isInRange(double pitch) {
    return pitch > lowestPitch - 0.5 && pitch < highestPitch + 0.5;
}

double offKey(double pitch) {
    return std::abs(pitch - std::round(pitch));
}

/// Of a pitch among the twelve of the octave.
std::size_t placeOf(double pitch) {
    const long semitones = std::lround(pitch) % 12;
    return static_cast<std::size_t>(semitones < 0 ? semitones + 12 : semitones);
}

double reachAt(double hz) {
    return reachHz + reachShare * hz;
}

}  // namespace

FineEar::FineEar(double a4, int transpose) : a4Hz(a4), transposeSemitones(transpose) {
    notes.reserve(std::size(naturals));
}

const std::vector<Notes::NoteID>& FineEar::hear(const std::vector<double>& levelsDb, double leastDb,
                                                double dtSeconds) {
    // A clock that stands, runs back or is no number leaves the voices as old as they were.
    const double step = dtSeconds > 0.0 ? std::min(dtSeconds, 1.0) : 0.0;
    findPeaks(levelsDb, leastDb);
    findNotes();
    followPower(step);
    std::array<const Found*, 12> foundAt{};
    for (std::size_t i = 0; i < foundCount; ++i) {
        const std::size_t place = placeOf(found[i].pitch);
        const bool known = voices[place].isFound;
        if (foundAt[place] == nullptr && found[i].power > powerOf(leastDb) &&
            isInRange(found[i].pitch + transposeSemitones) &&
            offKey(found[i].pitch) <= (known ? inTuneHeard : inTune) &&
            (i == 0 || found[i].score >= (known ? weakestHeard : weakestNew) * found[0].score)) {
            foundAt[place] = &found[i];
        }
    }
    for (std::size_t place = 0; place < voices.size(); ++place) {
        followVoice(place, foundAt[place], step);
    }
    notes.clear();
    for (std::size_t place = 0; place < voices.size(); ++place) {
        Voice& voice = voices[place];
        judgeEnd(voice);
        voice.isHeard = voice.isFound && !voice.hasEnded && (voice.isHeard || voice.found > confirmSeconds);
        if (voice.isHeard && naturals[place] != -1) {
            notes.emplace_back(naturals[place]);
        }
    }
    return notes;
}

void FineEar::findPeaks(const std::vector<double>& levelsDb, double leastDb) {
    const auto level = [&](std::size_t line) { return limited(levelsDb[line]); };
    const auto isPeak = [&](std::size_t line) {
        return level(line) > level(line - 1) && level(line) >= level(line + 1);
    };
    double loudestDb = -levelLimitDb;
    for (std::size_t line = 0; line < lineCount; ++line) {
        power[line] = powerOf(level(line));
        if (line >= lowestLine && isPeak(line)) {
            loudestDb = std::max(loudestDb, level(line));
        }
    }
    // Partials below the threshold speak for a note that is above it.
    const double lowestDb = std::max(loudestDb - peakRangeDb, leastDb - supportDb);
    peakCount = 0;
    for (std::size_t line = lowestLine; line < lineCount - 1; ++line) {
        if (!(level(line) > lowestDb) || !(loudestDb > leastDb) || !isPeak(line)) {
            continue;
        }
        // The top of the parabola through the three levels.
        const double slope = level(line - 1) - level(line + 1);
        const double bend = level(line - 1) - 2.0 * level(line) + level(line + 1);
        const double offset = bend < 0.0 ? 0.5 * slope / bend : 0.0;
        const double topDb = level(line) - 0.25 * slope * offset;
        peaks[peakCount++] = {(static_cast<double>(line) + offset) * lineHz, powerOf(topDb / 4.0),
                              powerOf(topDb), false};
    }
    std::size_t next = 0;
    for (std::size_t line = 0; line < lineCount && peakCount > 0; ++line) {
        const double hz = static_cast<double>(line) * lineHz;
        while (next + 1 < peakCount && peaks[next + 1].hz - hz < hz - peaks[next].hz) {
            ++next;
        }
        nearestPeak[line] = next;
    }
}

void FineEar::findNotes() {
    foundCount = 0;
    double tonal = 0.0;
    while (foundCount < maxNotes) {
        Row row = bestRow();
        if (row.peakCount == 0 || (foundCount > 0 && row.score < weakestHeard * found[0].score)) {
            break;
        }
        row = lowered(row);
        double strongest = 0.0;
        for (std::size_t i = 0; i < row.peakCount; ++i) {
            tonal += peaks[row.peaks[i]].power;
            strongest = std::max(strongest, peaks[row.peaks[i]].power);
        }
        found[foundCount++] = {row.hz, row.score, pitchOf(row.hz) - transposeSemitones, strongest};
        take(row);
    }
    double all = 0.0;
    for (std::size_t line = lowestLine; line < lineCount; ++line) {
        all += power[line] / windowSpread;
    }
    if (tonal < leastTonal * all) {
        foundCount = 0;
    }
}

FineEar::Row FineEar::bestRow() const {
    // A quarter of a semitone apart is the same candidate.
    std::array<bool, 240> tried{};
    Row best;
    for (std::size_t i = 0; i < peakCount; ++i) {
        for (int divisor = 1; divisor <= highestDivisor && !peaks[i].isTaken; ++divisor) {
            const double hz = peaks[i].hz / divisor;
            const double pitch = pitchOf(hz);
            // Half an octave lower too: what is lower than any note, such as hum, must not pass for one.
            if (pitch > highestPitch + 0.5 || pitch < lowestPitch - 6.0) {
                continue;
            }
            bool& isTried = tried[static_cast<std::size_t>((pitch - lowestPitch + 6.0) * 4.0)];
            if (isTried) {
                continue;
            }
            isTried = true;
            Row row = rowOn(hz);
            const Voice& voice = voices[placeOf(pitchOf(row.hz) - transposeSemitones)];
            if (voice.isFound && !voice.hasEnded) {
                row.score *= 1.0 + heardBonus;
            }
            if (row.score > best.score) {
                best = row;
            }
        }
    }
    return best;
}

FineEar::Row FineEar::rowOn(double hz) const {
    Row row;
    row.hz = hz;
    double sum = 0.0;
    double gained = 0.0;
    double lost = 0.0;
    double holes = 0.0;
    double hzSum = 0.0;
    double weightSum = 0.0;
    constexpr double highestHz = static_cast<double>(lineCount - 2) * lineHz;
    for (std::size_t i = 1; i <= maxPartials && static_cast<double>(i) * row.hz < highestHz; ++i) {
        const auto partial = static_cast<double>(i);
        const double weight = (hz + weightHz) / (partial * hz + weightPartialHz);
        const Peak* const peak = peakNear(partial * row.hz);
        if (peak == nullptr) {
            holes += weight;
        } else if (peak->isTaken) {
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
            row.peaks[row.peakCount++] = static_cast<std::size_t>(peak - peaks.data());
        }
    }
    if (row.peakCount > 0) {
        row.score = sum * std::max(0.0, 1.0 - holeCost * lost / gained);
    }
    return row;
}

FineEar::Row FineEar::lowered(Row row) const {
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

bool FineEar::hasLowerPartials(double hz, int divisor) const {
    int wanted = 0;
    int there = 0;
    constexpr double highestHz = 4800.0;
    for (int partial = 1; partial <= lowerRange * divisor && partial * hz < highestHz; ++partial) {
        if (partial % divisor != 0) {
            ++wanted;
            there += peakNear(partial * hz) != nullptr ? 1 : 0;
        }
    }
    return there >= lowerPartials * wanted;
}

const FineEar::Peak* FineEar::peakNear(double hz) const {
    const auto line = static_cast<std::size_t>(std::lround(hz / lineHz));
    if (peakCount == 0 || line >= lineCount) {
        return nullptr;
    }
    const Peak& peak = peaks[nearestPeak[line]];
    return std::abs(peak.hz - hz) < reachAt(hz) ? &peak : nullptr;
}

void FineEar::take(const Row& row) {
    for (std::size_t i = 0; i < row.peakCount; ++i) {
        peaks[row.peaks[i]].isTaken = true;
    }
    for (std::size_t i = 0; i < peakCount; ++i) {
        const double partial = std::round(peaks[i].hz / row.hz);
        const double placeHz = partial * row.hz;
        if (partial >= 1.0 && std::abs(peaks[i].hz - placeHz) < takenHz + reachShare * placeHz) {
            peaks[i].isTaken = true;
        }
    }
}

double FineEar::pitchOf(double hz) const {
    return a4Pitch + 12.0 * std::log2(hz / a4Hz);
}

void FineEar::followPower(double dtSeconds) {
    const double fade = powerOf(-fadeDbPerSecond * dtSeconds);
    const double rise = powerOf(riseDbPerSecond * dtSeconds);
    // From nothing nothing rises.
    const double least = powerOf(-levelLimitDb);
    for (std::size_t line = 0; line < lineCount; ++line) {
        peakPower[line] = std::max(power[line], peakPower[line] * fade);
        restPower[line] = std::min(power[line], std::max(least, restPower[line] * rise));
    }
}

void FineEar::followVoice(std::size_t place, const Found* note, double dtSeconds) {
    Voice& voice = voices[place];
    voice.isFound = note != nullptr;
    voice.age += dtSeconds;
    if (note == nullptr) {
        voice.found = 0.0;
        voice.missed += dtSeconds;
        if (voice.missed > lostSeconds) {
            voice = Voice();
        }
        return;
    }
    voice.found += dtSeconds;
    voice.missed = 0.0;
    double now = 0.0;
    double most = 0.0;
    double least = 0.0;
    for (std::size_t partial = 1; partial <= endPartials; ++partial) {
        const double hz = static_cast<double>(partial) * note->hz;
        const auto line = static_cast<std::size_t>(std::lround(hz / lineHz));
        if (line + 1 >= lineCount || !isOwn(hz, *note)) {
            continue;
        }
        for (std::size_t i = line - 1; i <= line + 1; ++i) {
            now += power[i];
            most += peakPower[i];
            least += restPower[i];
        }
    }
    voice.power = now;
    voice.hasFallen = now < most / fallRatio;
    voice.isStruck = voice.isStruck || (voice.age < strikeSeconds && now > strikeRatio * least);
}

bool FineEar::isOwn(double hz, const Found& note) const {
    return std::none_of(found.begin(), found.begin() + foundCount, [&](const Found& other) {
        const double partial = std::round(hz / other.hz);
        return placeOf(other.pitch) != placeOf(note.pitch) && partial >= 1.0 &&
               std::abs(hz - partial * other.hz) < sharedHz;
    });
}

void FineEar::judgeEnd(Voice& voice) const {
    double newestAge = voice.age;
    for (const Voice& other : voices) {
        if (other.isFound && other.isStruck && other.age < voice.age - chordSeconds) {
            newestAge = std::min(newestAge, other.age);
        }
    }
    const bool hasNewer = newestAge < voice.age;
    if (voice.hasEnded) {
        voice.endPower = std::min(voice.endPower, voice.power);
        voice.hasEnded = hasNewer && voice.power <= returnRatio * voice.endPower;
    } else if (voice.isFound && voice.hasFallen && hasNewer && newestAge < endSeconds) {
        voice.hasEnded = true;
        voice.endPower = voice.power;
    }
}
