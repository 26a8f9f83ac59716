// Any numbers as a spectrum: NoteEstimation::updateNotes against the rule written down step by step. The fine
// ear hears the same numbers.

#include <fstream>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "tests/analysis/PlainPeaks.h"
#include "tests/fuzz/Input.h"

namespace {

constexpr std::size_t bins = 2048;

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
    const plain::Heard heard = plain::hear(levelsDb, -65.0, ear.notes);
    require(ear.estimation.getCandidatePeaks() == heard.peaks, "the peaks are those of the rule");

    ear.plainState.notesDown(heard.notes, 0.02f);
    ear.plainState.notesDown(heard.notes, plain::nearest(dtSeconds));
    for (int note = -1; note <= 7; ++note) {
        const bool down = ear.plainState.isDown(note);
        require(ear.estimation.getNoteState().isDown(note) == down, "the notes are those of the rule");
        const float held = ear.estimation.getNoteState().downCount(note);
        const float rule = ear.plainState.downCount(note);
        require(held == rule || (held != held && rule != rule), "they are held as long");
    }
    ear.fine.updateNotes(levelsDb, 0.02);
    ear.fine.updateNotes(levelsDb, dtSeconds);
    require(ear.fine.getCandidatePeaks() == heard.peaks, "the peaks are the same with the fine ear");
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
