#include "tools/zanto-notes/TableModel.h"

#include <cmath>
#include <cstdio>
#include <map>
#include <ostream>

#include "analysis/SpectrumRules.h"

namespace {

// The spectrum that the table is used on.
using rules::binWidthHz;
constexpr int firstScannedBin = rules::lowestPeakBin;
constexpr int lastScannedBin = rules::highestPeakBin;
constexpr double scanEndHz = rules::lastPeakHz;

constexpr int pitchesPerOctave = 12;
constexpr int lowestPlayedPitch = 24;
constexpr int highestPlayedPitch = 140;

double binFrequencyHz(int bin) {
    return bin * binWidthHz;
}

double centsBetween(double fromHz, double toHz) {
    return 1200.0 * std::log2(toHz / fromHz);
}

double normalBelow(double deviations) {
    return 0.5 * std::erfc(-deviations / std::sqrt(2.0));
}

/// The note that a player of this transposition reads for a sounding pitch, -1 for a sharp.
Notes::NoteID writtenNote(const TableModel& model, int pitch) {
    return Notes::ofSemitone(pitch - model.transposeSemitones);
}

/// How often the peak of a played `pitch` falls on `bin`.
double landingProbability(const TableModel& model, int pitch, int bin) {
    const double pitchHz = pitchFrequencyHz(model.a4Hz, pitch);
    const double low = centsBetween(pitchHz, binFrequencyHz(bin) - binWidthHz / 2.0);
    const double high = centsBetween(pitchHz, binFrequencyHz(bin) + binWidthHz / 2.0);
    return normalBelow(high / model.tuningSpreadCents) - normalBelow(low / model.tuningSpreadCents);
}

bool inRange(const TableModel& model, int pitch) {
    return pitch >= model.lowestPitch && pitch <= model.highestPitch;
}

/// The pitch that a peak on `bin` at or below the scan's end stands for, 0 for none.
int fundamentalPitch(const TableModel& model, int bin) {
    int best = 0;
    double bestWeight = 0.0;
    for (int pitch = lowestPlayedPitch; pitch <= highestPlayedPitch; ++pitch) {
        const double weight = writtenNote(model, pitch) == -1 ? model.sharpWeight : 1.0;
        const double likely = weight * landingProbability(model, pitch, bin);
        if (likely > bestWeight) {
            bestWeight = likely;
            best = pitch;
        }
    }
    const bool listed = best != 0 && writtenNote(model, best) != -1 && inRange(model, best) &&
                        landingProbability(model, best, bin) >= model.leastProbability;
    return listed ? best : 0;
}

/// The pitch that a peak on `bin` above the scan's end stands for, 0 for none.
int closingPitch(const TableModel& model, int bin) {
    for (int pitch = lowestPlayedPitch; pitch <= highestPlayedPitch; ++pitch) {
        const double pitchHz = pitchFrequencyHz(model.a4Hz, pitch);
        const bool near = std::abs(centsBetween(pitchHz, binFrequencyHz(bin))) <= model.harmonicReachCents;
        const bool octaveOfHeard = inRange(model, pitch - pitchesPerOctave) && pitchHz / 2.0 <= scanEndHz &&
                                   pitch >= model.lowestHarmonicPitch;
        if (near && writtenNote(model, pitch) != -1 && (inRange(model, pitch) || octaveOfHeard)) {
            return pitch;
        }
    }
    return 0;
}

}  // namespace

double pitchFrequencyHz(double a4Hz, int pitch) {
    return a4Hz * std::exp2((pitch - 69) / 12.0);
}

double lowestScannedHz() {
    return binFrequencyHz(firstScannedBin) - binWidthHz / 2.0;
}

double highestScannedHz() {
    return binFrequencyHz(lastScannedBin) + binWidthHz / 2.0;
}

std::vector<TableRow> tableRows(const TableModel& model) {
    std::map<int, TableRow> rowOfPitch;
    for (int bin = firstScannedBin; bin <= lastScannedBin; ++bin) {
        const double frequencyHz = binFrequencyHz(bin);
        const int pitch = frequencyHz <= scanEndHz ? fundamentalPitch(model, bin) : closingPitch(model, bin);
        if (pitch != 0) {
            TableRow& row = rowOfPitch[pitch];
            row.note = writtenNote(model, pitch);
            row.frequenciesHz.push_back(frequencyHz);
        }
    }
    std::vector<TableRow> rows;
    rows.reserve(rowOfPitch.size());
    for (const auto& [pitch, row] : rowOfPitch) {
        rows.push_back(row);
    }
    return rows;
}

void writeTable(std::ostream& out, const std::vector<TableRow>& rows) {
    for (const TableRow& row : rows) {
        out << Notes::idToName(row.note) << ' ' << row.frequenciesHz.size();
        for (const double frequencyHz : row.frequenciesHz) {
            char text[32];
            std::snprintf(text, sizeof text, " %.1f", frequencyHz);
            out << text;
        }
        out << '\n';
    }
}
