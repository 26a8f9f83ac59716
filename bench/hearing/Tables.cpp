#include "bench/hearing/Tables.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "analysis/Notes.h"
#include "analysis/SpectrumRules.h"
#include "tools/zanto-notes/TableModel.h"

namespace {

using rules::binWidthHz;
constexpr int firstScannedBin = rules::lowestPeakBin;
constexpr int lowestTablePitch = 45;   // A2
constexpr int highestTablePitch = 96;  // C7
constexpr double a4Hz = 440.0;

std::string modelText(const TableModel& model) {
    std::ostringstream text;
    writeTable(text, tableRows(model));
    return text.str();
}

std::string equalTemperedPitches() {
    std::ostringstream text;
    for (int pitch = lowestTablePitch; pitch <= highestTablePitch; ++pitch) {
        if (Notes::ofSemitone(pitch) != -1) {
            text << Notes::idToName(Notes::ofSemitone(pitch)) << " 1 " << pitchFrequencyHz(a4Hz, pitch)
                 << '\n';
        }
    }
    return text.str();
}

std::string nearestSemitones() {
    BinMap map;
    for (int bin = firstScannedBin; bin * binWidthHz < pitchFrequencyHz(a4Hz, highestTablePitch); ++bin) {
        const auto pitch = static_cast<int>(std::lround(69.0 + 12.0 * std::log2(bin * binWidthHz / a4Hz)));
        if (Notes::ofSemitone(pitch) != -1) {
            map[bin] = Notes::ofSemitone(pitch);
        }
    }
    return tableText(map);
}

template <typename Change>
Candidate changed(const std::string& name, const Change& change) {
    TableModel moved;
    change(moved);
    return {name, modelText(moved)};
}

}  // namespace

std::vector<Candidate> ruledCandidates() {
    return {
        {"pitches", equalTemperedPitches()},
        {"nearest", nearestSemitones()},
        changed("no harmonics", [](TableModel& m) { m.lowestHarmonicPitch = 200; }),
        changed("harmonics F6 to B6", [](TableModel& m) { m.lowestHarmonicPitch = 89; }),
        changed("spread 10", [](TableModel& m) { m.tuningSpreadCents = 10.0; }),
        changed("spread 30", [](TableModel& m) { m.tuningSpreadCents = 30.0; }),
        changed("sharps 0.1", [](TableModel& m) { m.sharpWeight = 0.1; }),
        changed("sharps 1", [](TableModel& m) { m.sharpWeight = 1.0; }),
        changed("reach 25", [](TableModel& m) { m.harmonicReachCents = 25.0; }),
    };
}

std::string tableText(const BinMap& map) {
    std::string text;
    for (const auto& [bin, note] : map) {
        char line[32];
        std::snprintf(line, sizeof line, " 1 %.1f\n", bin * binWidthHz);
        text += Notes::idToName(note) + line;
    }
    return text;
}

BinMap binMapOf(const std::string& text) {
    Notes notes;
    std::istringstream in(text);
    notes.load(in);
    BinMap map;
    for (int bin = firstScannedBin; bin <= rules::highestPeakBin; ++bin) {
        const Notes::NoteID note = notes.getKey(static_cast<float>(bin * binWidthHz));
        if (note != -1) {
            map[bin] = note;
        }
    }
    return map;
}

void BinMapSearch::add(const Take& take, const Recording& recording) {
    constexpr double blockSeconds = static_cast<double>(blockSamples) / soundRateHz;
    for (std::size_t block = 0; block < recording.blocks.size(); ++block) {
        const double sinceAttack = static_cast<double>(block + 1) * blockSeconds - attackSeconds;
        if (sinceAttack < 0.15 || sinceAttack >= 0.9) {
            continue;
        }
        // The game's own rule for which peaks count, here only to find out what the best map could be.
        float loudestDb = -1e9f;
        for (const HeardPeak& peak : recording.blocks[block]) {
            loudestDb = std::max(loudestDb, peak.levelDb);
        }
        std::vector<int> bins;
        for (const HeardPeak& peak : recording.blocks[block]) {
            if (peak.levelDb - rules::levelOriginDb >
                rules::strongShare * static_cast<double>(loudestDb - rules::levelOriginDb)) {
                bins.push_back(peak.bin);
            }
        }
        frames[{Notes::ofSemitone(take.pitches.front()), bins}] += 1.0;
    }
}

double BinMapSearch::gain(const std::vector<std::pair<Sight, double>>& sights,
                          const std::vector<std::size_t>& which, const BinMap& map,
                          double wrongWeight) const {
    double sum = 0.0;
    for (const std::size_t index : which) {
        const auto& [sight, weight] = sights[index];
        bool right = false;
        bool wrong = false;
        for (const int bin : sight.bins) {
            const auto entry = map.find(bin);
            if (entry != map.end()) {
                (entry->second == sight.note ? right : wrong) = true;
            }
        }
        sum += weight * ((right ? 1.0 : 0.0) - (wrong ? wrongWeight : 0.0));
    }
    return sum;
}

BinMap BinMapSearch::best(const BinMap& start, double wrongWeight) const {
    std::vector<std::pair<Sight, double>> sights;
    std::map<int, std::vector<std::size_t>> sightsOfBin;
    for (const auto& [key, weight] : frames) {
        for (const int bin : key.second) {
            sightsOfBin[bin].push_back(sights.size());
        }
        sights.push_back({{key.first, key.second}, weight});
    }
    BinMap map = start;
    for (bool improved = true; improved;) {
        improved = false;
        for (const auto& [bin, which] : sightsOfBin) {
            const auto now = map.find(bin);
            const int before = now == map.end() ? -1 : now->second;
            int bestNote = before;
            double bestGain = gain(sights, which, map, wrongWeight);
            for (int note = -1; note < 7; ++note) {
                map.erase(bin);
                if (note != -1) {
                    map[bin] = note;
                }
                const double tried = gain(sights, which, map, wrongWeight);
                if (tried > bestGain + 1e-9) {
                    bestGain = tried;
                    bestNote = note;
                }
            }
            map.erase(bin);
            if (bestNote != -1) {
                map[bin] = bestNote;
            }
            improved = improved || bestNote != before;
        }
    }
    return map;
}
