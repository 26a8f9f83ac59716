#pragma once

#include <boost/shared_ptr.hpp>
#include <utility>
#include <vector>

#include "analysis/NoteState.h"
#include "analysis/Notes.h"

class RingBuffer;

/// Hears which notes sound in the newest microphone samples.
///
/// Owned by the game window, main thread only. Reads its note table from "notes.txt" in the working directory
/// and its level threshold from the environment, once, at construction; says on standard output what it
/// hears:
///
///     estimation.update(input->getRingBuffer(), frameSeconds);
///     bool const singing = estimation.getNoteState().isDown(0);
class NoteEstimation {
public:
    NoteEstimation();

    /// Analyses the newest samples of `buffer`: one Hamming-windowed spectrum of 4096 samples that end 2048
    /// before the newest. `dtSeconds` is the time since the last update and is added to every sounding note.
    void update(boost::shared_ptr<RingBuffer const> const& buffer, double dtSeconds);

    /// Picks the peaks of a spectrum, keeps those near the loudest, and reports their notes to the note
    /// state. `levelsDb` has one level per bin, windowSize / 2 in all; any value may stand in it, also no
    /// number.
    void updateNotes(std::vector<double> const& levelsDb, double dtSeconds);

    /// Leaves the Hamming window's factors in the working frame; gives the factor that scales a bin's squared
    /// magnitude to the power of the sine in it, 1 for a full-scale one.
    double initializeWindow();

    /// Centre of a bin in Hz, for samples taken at 48000 Hz whatever the input's setting.
    float indexToFrequency(int bin) const;

    NoteState const& getNoteState() const;
    /// Level in dB by bin, windowSize / 2 of them; minus infinity for a bin without power. Empty before the
    /// first update.
    std::vector<double> const& getPowerSpectrum() const;
    /// (level in dB, frequency in Hz) of the last update's peaks, in rising frequency.
    std::vector<std::pair<float, float>> const& getCandidatePeaks() const;
    /// The level in dB that a peak must exceed.
    float getMinDecibel() const;

private:
    Notes notes;
    NoteState noteState;
    /// Length of the transform, in samples.
    int windowSize = 4096;
    /// [windowSize] The block under analysis; also where the window's shape is built.
    std::vector<float> frame;
    /// [windowSize] Squared magnitudes in its first half.
    std::vector<float> spectrum;
    /// [windowSize * 3 / 2] The newest samples, oldest first.
    std::vector<float> samples;
    /// [windowSize / 2] Zeros; kept with the other buffers and not read.
    std::vector<float> scratch;
    std::vector<std::pair<float, float>> candidatePeaks;
    /// [windowSize / 2] dB.
    std::vector<double> powerSpectrum;
    float minDecibel = -65.0f;
};
