#pragma once

#include <boost/shared_ptr.hpp>
#include <optional>
#include <utility>
#include <vector>

#include "analysis/FineEar.h"
#include "analysis/NoteState.h"
#include "analysis/Notes.h"
#include "analysis/SpectrumRules.h"

class RingBuffer;

/// Hears which notes sound in the newest microphone samples.
///
/// Owned by the game window, main thread only. Reads its note table from "notes.txt" in the working directory
/// and its level threshold from the environment, once, at construction; says on standard output what it
/// hears:
///
///     estimation.update(input->getRingBuffer(), frameSeconds);
///     const bool singing = estimation.getNoteState().isDown(0);
///
/// It has two ears. The plain one asks the note table about each strong peak. The fine one (FineEar.h)
/// listens instead when ZANTO_EAR is "fine" at construction, tuned by ZANTO_A4 (Hz, 380 to 480, usually 440)
/// and ZANTO_TRANSPOSE (semitones, -24 to 24, usually 0). A value that is not understood is told in one line
/// on standard error and the usual one is taken. Spectrum, peaks, threshold and what is printed mean the same
/// with both.
class NoteEstimation {
public:
    NoteEstimation();

    /// Analyses the newest samples of `buffer`: one Hamming-windowed spectrum of 4096 samples that end 2048
    /// before the newest, for the fine ear of the newest 4096. `dtSeconds` is the time since the last update
    /// and is added to every sounding note.
    void update(const boost::shared_ptr<const RingBuffer>& buffer, double dtSeconds);

    /// Picks the peaks of a spectrum, keeps those near the loudest, and reports their notes to the note
    /// state. `levelsDb` has one level per bin, windowSize / 2 in all; any value may stand in it, also no
    /// number.
    void updateNotes(const std::vector<double>& levelsDb, double dtSeconds);

    /// Leaves the Hamming window's factors in the working frame; gives the factor that scales a bin's squared
    /// magnitude to the power of the sine in it, 1 for a full-scale one.
    double initializeWindow();

    /// Centre of a bin in Hz, for samples taken at 48000 Hz whatever the input's setting.
    float indexToFrequency(int bin) const;

    const NoteState& getNoteState() const;
    /// Level in dB by bin, windowSize / 2 of them; minus infinity for a bin without power. Empty before the
    /// first update.
    const std::vector<double>& getPowerSpectrum() const;
    /// (level in dB, frequency in Hz) of the last update's peaks, in rising frequency.
    const std::vector<std::pair<float, float>>& getCandidatePeaks() const;
    /// The level in dB that a peak must exceed.
    float getMinDecibel() const;

    enum class Ear { plain, fine };
    /// With this ear, whatever ZANTO_EAR says.
    explicit NoteEstimation(Ear ear);

    bool hasFineEar() const;

private:
    /// Collects the candidate peaks; gives the first of the loudest, or a frequency of 0 when there is none.
    std::pair<float, float> pickPeaks(const std::vector<double>& levelsDb);

    Notes notes;
    NoteState noteState;
    /// Length of the transform, in samples.
    int windowSize = rules::windowSamples;
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
    float minDecibel = rules::usualMinDecibel;
    /// None when the plain ear listens.
    std::optional<FineEar> fineEar;
};
