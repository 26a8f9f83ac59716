#include "bench/hearing/Tables.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <sstream>

#include "analysis/Notes.h"
#include "bench/hearing/Orchestra.h"
#include "tools/zanto-notes/TableModel.h"

namespace {

constexpr double binWidthHz = 48000.0 / 4096.0;
constexpr int firstScannedBin = 10;
constexpr int lowestTablePitch = 45;   // A2
constexpr int highestTablePitch = 96;  // C7
constexpr double a4Hz = 440.0;

std::string modelText(TableModel const& model) {
    std::ostringstream text;
    writeTable(text, tableRows(model));
    return text.str();
}

std::string equalTemperedPitches() {
    std::ostringstream text;
    for (int pitch = lowestTablePitch; pitch <= highestTablePitch; ++pitch) {
        if (naturalOf(pitch) != -1) {
            text << Notes::idToName(naturalOf(pitch)) << " 1 " << pitchFrequencyHz(a4Hz, pitch) << '\n';
        }
    }
    return text.str();
}

std::string nearestSemitones() {
    BinMap map;
    for (int bin = firstScannedBin; bin * binWidthHz < pitchFrequencyHz(a4Hz, highestTablePitch); ++bin) {
        auto const pitch = static_cast<int>(std::lround(69.0 + 12.0 * std::log2(bin * binWidthHz / a4Hz)));
        if (naturalOf(pitch) != -1) {
            map[bin] = naturalOf(pitch);
        }
    }
    return tableText(map);
}

Candidate model(std::string const& name, std::string const& what, TableModel const& model) {
    return {name, what, modelText(model)};
}

template <typename Change>
Candidate changed(std::string const& name, std::string const& what, Change const& change) {
    TableModel moved;
    change(moved);
    return model(name, what, moved);
}

}  // namespace

std::vector<Candidate> ruledCandidates() {
    std::vector<Candidate> candidates;
    candidates.push_back(
        {"pitches", "the equal-tempered naturals A2 to C7 as they are", equalTemperedPitches()});
    candidates.push_back({"nearest", "each line to its nearest semitone, up to C7", nearestSemitones()});
    candidates.push_back(changed("no harmonics", "the model, nothing above 1008 Hz",
                                 [](TableModel& m) { m.lowestHarmonicPitch = 200; }));
    candidates.push_back(changed("F6 to B6", "the model, second harmonics from F6 on",
                                 [](TableModel& m) { m.lowestHarmonicPitch = 89; }));
    candidates.push_back(changed("C6 to B6", "the model, second harmonics from C6 on",
                                 [](TableModel& m) { m.lowestHarmonicPitch = 84; }));
    candidates.push_back(changed("spread 10", "the model, tuning spread 10 cents",
                                 [](TableModel& m) { m.tuningSpreadCents = 10.0; }));
    candidates.push_back(changed("spread 30", "the model, tuning spread 30 cents",
                                 [](TableModel& m) { m.tuningSpreadCents = 30.0; }));
    candidates.push_back(
        changed("sharps 0.1", "the model, sharps weigh 0.1", [](TableModel& m) { m.sharpWeight = 0.1; }));
    candidates.push_back(
        changed("sharps 1", "the model, sharps weigh 1", [](TableModel& m) { m.sharpWeight = 1.0; }));
    candidates.push_back(changed("reach 25", "the model, second harmonics within 25 cents",
                                 [](TableModel& m) { m.harmonicReachCents = 25.0; }));
    return candidates;
}

std::string tableText(BinMap const& map) {
    std::string text;
    for (auto const& [bin, note] : map) {
        char line[32];
        std::snprintf(line, sizeof line, " 1 %.1f\n", bin * binWidthHz);
        text += Notes::idToName(note) + line;
    }
    return text;
}

BinMap binMapOf(std::string const& text) {
    Notes notes;
    std::istringstream in(text);
    notes.load(in);
    BinMap map;
    for (int bin = firstScannedBin; bin < 2047; ++bin) {
        Notes::NoteID const note = notes.getKey(static_cast<float>(bin * binWidthHz));
        if (note != -1) {
            map[bin] = note;
        }
    }
    return map;
}

void BinMapSearch::add(Take const& take, Recording const& recording) {
    constexpr double blockSeconds = static_cast<double>(blockSamples) / soundRateHz;
    for (std::size_t block = 0; block < recording.blocks.size(); ++block) {
        double const sinceAttack = static_cast<double>(block + 1) * blockSeconds - attackSeconds;
        if (sinceAttack < 0.15 || sinceAttack >= 0.9) {
            continue;
        }
        // The game's own rule for which peaks count, here only to find out what the best map could be.
        float loudestDb = -1e9f;
        for (HeardPeak const& peak : recording.blocks[block]) {
            loudestDb = std::max(loudestDb, peak.levelDb);
        }
        std::vector<int> bins;
        for (HeardPeak const& peak : recording.blocks[block]) {
            if (100.0f + peak.levelDb > 0.95 * static_cast<double>(100.0f + loudestDb)) {
                bins.push_back(peak.bin);
            }
        }
        frames[{naturalOf(take.pitches.front()), bins}] += 1.0;
    }
}

double BinMapSearch::gain(std::vector<std::pair<Sight, double>> const& sights,
                          std::vector<std::size_t> const& which, BinMap const& map,
                          double wrongWeight) const {
    double sum = 0.0;
    for (std::size_t const index : which) {
        auto const& [sight, weight] = sights[index];
        bool right = false;
        bool wrong = false;
        for (int const bin : sight.bins) {
            auto const entry = map.find(bin);
            if (entry != map.end()) {
                (entry->second == sight.note ? right : wrong) = true;
            }
        }
        sum += weight * ((right ? 1.0 : 0.0) - (wrong ? wrongWeight : 0.0));
    }
    return sum;
}

BinMap BinMapSearch::best(BinMap const& start, double wrongWeight) const {
    std::vector<std::pair<Sight, double>> sights;
    std::map<int, std::vector<std::size_t>> sightsOfBin;
    for (auto const& [key, weight] : frames) {
        for (int const bin : key.second) {
            sightsOfBin[bin].push_back(sights.size());
        }
        sights.push_back({{key.first, key.second}, weight});
    }
    BinMap map = start;
    for (bool improved = true; improved;) {
        improved = false;
        for (auto const& [bin, which] : sightsOfBin) {
            auto const now = map.find(bin);
            int const before = now == map.end() ? -1 : now->second;
            int bestNote = before;
            double bestGain = gain(sights, which, map, wrongWeight);
            for (int note = -1; note < 7; ++note) {
                map.erase(bin);
                if (note != -1) {
                    map[bin] = note;
                }
                double const tried = gain(sights, which, map, wrongWeight);
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
