#include "analysis/FineEar.h"

#include <algorithm>
#include <bitset>
#include <cmath>

#include "analysis/SpectrumRules.h"

namespace {

/// The score that a new note needs beside that of the loudest one. As scores go with the root of the
/// amplitude, 17 dB below it. PartialRows::weakest is for one that sounds already.
constexpr double weakestNew = 0.38;
/// Semitones. A singer's vibrato may take a note that is heard further off than PartialRows::inTune.
constexpr double inTuneHeard = 0.6;
/// dB. A note that is heard may sink as far below the threshold: strings beat and fade.
constexpr double keptDb = 10.0;

/// One more block of samples (21 ms) must show a note before it is heard, unless it is clear from the first
/// one on: what clicks and attacks seem to be is gone by then.
constexpr double confirmSeconds = 0.025;
/// A voice that beats or trembles may be lost for as long and is still the same.
constexpr double lostSeconds = 0.06;

// The end of a note.
/// Two partials nearer than this share a peak.
constexpr double sharedHz = 1.5 * rules::binWidthHz;
constexpr std::size_t endPartials = 8;  ///< whose power is looked at
/// Notes that begin within this time are one chord.
constexpr double chordSeconds = 0.08;
/// A note that ends because another one begins has fallen in this time, even in a room.
constexpr double endSeconds = 0.25;
constexpr double strikeSeconds = 0.1;  ///< in which an attack is over
constexpr double strikeRatio = 4.0;    ///< of the power: a new note rises by 6 dB at least
constexpr double fallRatio = 2.0;      ///< of the power, 3 dB, below the recent maximum
constexpr double faintRatio = 0.03;    ///< of the power: what is 15 dB weaker than a note does not end it
constexpr double returnRatio = 6.0;    ///< of the power, 8 dB: it is played again; a room beats less
constexpr double roomSeconds = 0.5;    ///< for which a note that has ended may be lost and come again
/// The recent maximum sinks by this: strings that ring on fade more slowly, a room (0.5 s to -60 dB) faster.
constexpr double fadeDbPerSecond = 20.0;
/// The recent minimum rises by this, which keeps it low while an attack lasts.
constexpr double riseDbPerSecond = 40.0;

bool isInRange(double pitch) {
    return pitch > PartialRows::lowestPitch - 0.5 && pitch < PartialRows::highestPitch + 0.5;
}

}  // namespace

FineEar::FineEar(double a4Hz, int transpose) : rows(a4Hz), transposeSemitones(transpose) {
    notes.reserve(voices.size());
}

const std::vector<Notes::NoteID>& FineEar::hear(const std::vector<double>& levelsDb, double leastDb,
                                                double dtSeconds) {
    // A clock that stands, runs back or is no number leaves the voices as old as they were.
    const double step = dtSeconds > 0.0 ? std::min(dtSeconds, 1.0) : 0.0;
    std::bitset<12> sounding;
    for (std::size_t semitone = 0; semitone < voices.size(); ++semitone) {
        sounding.set(semitone, voices[semitone].isFound && !voices[semitone].hasEnded);
    }
    rows.find(levelsDb, leastDb - keptDb, sounding);
    followPower(step);
    const Found foundAt = match(leastDb);
    for (std::size_t semitone = 0; semitone < voices.size(); ++semitone) {
        followVoice(voices[semitone], foundAt[semitone], step);
    }
    const bool oneBegins = std::count_if(voices.begin(), voices.end(), [](const Voice& voice) {
                               return voice.isFound && !voice.isHeard && !voice.hasEnded;
                           }) == 1;
    // In the same order whatever the transposition: a note that is back counts for those judged after it.
    for (Voice& voice : voices) {
        judgeEnd(voice);
    }
    notes.clear();
    for (int written = 0; written < static_cast<int>(voices.size()); ++written) {
        const std::size_t semitone = PartialRows::semitoneOf(written + transposeSemitones);
        Voice& voice = voices[semitone];
        // An attack that is no tone yet looks like several notes.
        const bool isClear = oneBegins && voice.isStruck && foundAt[semitone] == rows.begin();
        voice.isHeard = voice.isFound && !voice.hasEnded &&
                        (voice.isHeard || voice.found > (isClear ? 0.0 : confirmSeconds));
        const Notes::NoteID note = Notes::ofSemitone(written);
        if (voice.isHeard && note != -1) {
            notes.push_back(note);
        }
    }
    return notes;
}

FineEar::Found FineEar::match(double leastDb) const {
    const double leastPower = SpectrumPeaks::powerOf(leastDb);
    const double keptPower = SpectrumPeaks::powerOf(leastDb - keptDb);
    Found foundAt{};
    for (const PartialRows::Note& note : rows) {
        const double key = keyOf(note.pitch);
        const std::size_t semitone = PartialRows::semitoneOf(key);
        const Voice& voice = voices[semitone];
        const bool known = voice.age > 0.0;
        if (foundAt[semitone] == nullptr && isInRange(note.pitch) &&
            note.power > (voice.isHeard ? keptPower : leastPower) &&
            std::abs(note.pitch - key) <= (known ? inTuneHeard : PartialRows::inTune) &&
            note.score >= (known ? PartialRows::weakest : weakestNew) * rows.begin()->score) {
            foundAt[semitone] = &note;
        }
    }
    return foundAt;
}

double FineEar::keyOf(double pitch) const {
    const double nearest = std::round(pitch);
    const double second = nearest + (pitch > nearest ? 1.0 : -1.0);
    const bool wavers = voices[PartialRows::semitoneOf(nearest)].age == 0.0 &&
                        voices[PartialRows::semitoneOf(second)].age > 0.0 &&
                        std::abs(pitch - second) <= inTuneHeard;
    return wavers ? second : nearest;
}

void FineEar::followPower(double dtSeconds) {
    const double fade = SpectrumPeaks::powerOf(-fadeDbPerSecond * dtSeconds);
    const double rise = SpectrumPeaks::powerOf(riseDbPerSecond * dtSeconds);
    // From nothing nothing rises.
    const double least = SpectrumPeaks::powerOf(-SpectrumPeaks::levelLimitDb);
    for (std::size_t line = 0; line < SpectrumPeaks::lineCount; ++line) {
        peakPower[line] = std::max(rows.power()[line], peakPower[line] * fade);
        restPower[line] = std::min(rows.power()[line], std::max(least, restPower[line] * rise));
    }
}

void FineEar::followVoice(Voice& voice, const PartialRows::Note* note, double dtSeconds) {
    voice.isFound = note != nullptr;
    if (voice.isFound || voice.age > 0.0) {
        voice.age += dtSeconds;
    }
    if (note == nullptr) {
        voice.found = 0.0;
        voice.missed += dtSeconds;
        if (voice.missed > (voice.hasEnded ? roomSeconds : lostSeconds)) {
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
        const auto line = static_cast<std::size_t>(std::lround(hz / rules::binWidthHz));
        if (line + 1 >= SpectrumPeaks::lineCount || !isOwn(hz, *note)) {
            continue;
        }
        for (std::size_t i = line - 1; i <= line + 1; ++i) {
            now += rows.power()[i];
            most += peakPower[i];
            least += restPower[i];
        }
    }
    voice.power = now;
    voice.hasFallen = now < most / fallRatio;
    voice.isStruck = voice.isStruck || (voice.age < strikeSeconds && now > strikeRatio * least);
}

bool FineEar::isOwn(double hz, const PartialRows::Note& note) const {
    return std::none_of(rows.begin(), rows.end(), [&](const PartialRows::Note& other) {
        const double partial = std::round(hz / other.hz);
        return PartialRows::semitoneOf(other.pitch) != PartialRows::semitoneOf(note.pitch) &&
               partial >= 1.0 && std::abs(hz - partial * other.hz) < sharedHz;
    });
}

void FineEar::judgeEnd(Voice& voice) const {
    double newestAge = voice.age;
    for (const Voice& other : voices) {
        if (other.isFound && other.isStruck && other.age < voice.age - chordSeconds &&
            other.power >= faintRatio * voice.power) {
            newestAge = std::min(newestAge, other.age);
        }
    }
    const bool hasNewer = newestAge < voice.age;
    if (voice.hasEnded) {
        voice.endPower = std::min(voice.endPower, voice.power);
        const bool isBack = voice.isFound && voice.power > returnRatio * voice.endPower;
        voice.hasEnded = hasNewer && !isBack;
        if (isBack) {
            voice.age = confirmSeconds;
            voice.isStruck = true;
        }
    } else if (voice.isFound && voice.hasFallen && hasNewer && newestAge < endSeconds) {
        voice.hasEnded = true;
        voice.endPower = voice.power;
    }
}
