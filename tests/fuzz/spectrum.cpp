// Any numbers as a spectrum: NoteEstimation::updateNotes against the rule written down step by step. The fine
// ear hears the same numbers.

#include <fstream>
#include <limits>
#include <utility>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "tests/fuzz/Input.h"

namespace {

constexpr std::size_t bins = 2048;

float nearest(double value) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr double largest = std::numeric_limits<float>::max();
    if (value > largest) {
        return infinity;
    }
    return value < -largest ? -infinity : static_cast<float>(value);
}

/// Short runs of numbers anywhere in a spectrum that is flat otherwise.
std::vector<double> invented(Input& input) {
    std::vector<double> levelsDb(bins, input.number());
    while (!input.empty()) {
        std::size_t bin = input.raw<std::uint16_t>() % bins;
        for (int run = input.upTo(7); run >= 0; --run, bin = (bin + 1) % bins) {
            levelsDb[bin] = input.number();
        }
    }
    return levelsDb;
}

using Peaks = std::vector<std::pair<float, float>>;

Peaks plainPeaks(const std::vector<double>& levelsDb, double thresholdDb) {
    Peaks peaks;
    for (std::size_t i = 10; i + 1 < bins; ++i) {
        if (levelsDb[i] > thresholdDb && levelsDb[i] > levelsDb[i - 1] && levelsDb[i] > levelsDb[i + 1]) {
            peaks.emplace_back(nearest(levelsDb[i]), static_cast<float>(i) * 11.71875f);
            if (peaks.back().second > 1000.0f) {
                break;
            }
        }
    }
    return peaks;
}

std::vector<Notes::NoteID> plainNotes(const Notes& notes, const Peaks& peaks) {
    float loudestDb = -10000.0f;
    for (const auto& peak : peaks) {
        loudestDb = peak.first > loudestDb ? peak.first : loudestDb;
    }
    std::vector<Notes::NoteID> found;
    for (const auto& [levelDb, frequencyHz] : peaks) {
        if (100.0f + levelDb > 0.95 * static_cast<double>(100.0f + loudestDb) &&
            notes.getKey(frequencyHz) != -1) {
            found.push_back(notes.getKey(frequencyHz));
        }
    }
    return found;
}

struct Ear {
    NoteEstimation estimation;
    NoteEstimation fine{NoteEstimation::Ear::fine};
    NoteState plainState;
    Notes notes;

    Ear() {
        std::ifstream in("notes.txt");
        notes.load(in);
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Ear ear;  // reads its table from the working folder, once
    Input input(data, size);
    const double dtSeconds = input.number();
    const std::vector<double> levelsDb = invented(input);

    ear.estimation.updateNotes(levelsDb, 0.02);
    ear.estimation.updateNotes(levelsDb, dtSeconds);
    const Peaks peaks = plainPeaks(levelsDb, static_cast<double>(ear.estimation.getMinDecibel()));
    require(ear.estimation.getCandidatePeaks() == peaks, "the peaks are those of the rule");

    const std::vector<Notes::NoteID> heard = plainNotes(ear.notes, peaks);
    ear.plainState.notesDown(heard, 0.02f);
    ear.plainState.notesDown(heard, nearest(dtSeconds));
    for (int note = -1; note <= 7; ++note) {
        const bool down = ear.plainState.isDown(note);
        require(ear.estimation.getNoteState().isDown(note) == down, "the notes are those of the rule");
        const float held = ear.estimation.getNoteState().downCount(note);
        const float plain = ear.plainState.downCount(note);
        require(held == plain || (held != held && plain != plain), "they are held as long");
    }
    ear.fine.updateNotes(levelsDb, 0.02);
    ear.fine.updateNotes(levelsDb, dtSeconds);
    require(ear.fine.getCandidatePeaks() == peaks, "the peaks are the same with the fine ear");
    // Nothing of one run may show in the next.
    ear.estimation.updateNotes(std::vector<double>(bins, 0.0), 0.02);
    ear.plainState.notesDown({}, 0.02f);
    ear.fine.updateNotes(std::vector<double>(bins, 0.0), 0.02);
    for (int note = 0; note < Notes::noteCount; ++note) {
        require(!ear.fine.getNoteState().isDown(note), "a flat spectrum releases every note of the fine ear");
    }
    require(!ear.estimation.getNoteState().isDown(input.upTo(6)), "silence releases every note");
    return 0;
}
