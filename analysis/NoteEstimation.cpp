#include "analysis/NoteEstimation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>

#include "analysis/FFT.h"
#include "analysis/FFTLoops.h"
#include "audio/RingBuffer.h"

namespace {

constexpr int hamming = 2;
constexpr float sampleRateHz = 48000.0f;
/// 117.1875 Hz.
constexpr int lowestPeakBin = 10;
/// The first peak above it is the last one looked at.
constexpr double lastPeakHz = 1000.0;
/// What a level must reach, counted from -100 dB, as a share of the loudest one's.
constexpr double strongShare = 0.95;
constexpr float levelOriginDb = 100.0f;

/// The nearest float; beyond the largest one, infinity. A plain conversion leaves that case undefined.
float toFloat(double value) {
    constexpr float largest = std::numeric_limits<float>::max();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    if (value > largest) {
        return infinity;
    }
    if (value < -largest) {
        return -infinity;
    }
    return static_cast<float>(value);
}

}  // namespace

NoteEstimation::NoteEstimation() {
    auto const size = static_cast<std::size_t>(windowSize);
    frame.resize(size, 0.0f);
    spectrum.resize(size, 0.0f);
    samples.resize(size * 3 / 2, 0.0f);
    scratch.resize(size / 2, 0.0f);
    std::ifstream in("notes.txt");
    notes.load(in);
    if (char const* const text = std::getenv("ZANTO_MIN_DECIBEL")) {
        minDecibel = toFloat(std::strtod(text, nullptr));
    }
    std::printf("NoteEstimation minDecibel is %f\n", minDecibel);
}

void NoteEstimation::update(boost::shared_ptr<RingBuffer const> const& buffer, double dtSeconds) {
    buffer->copyLatest(samples);
    auto const size = static_cast<std::size_t>(windowSize);
    std::vector<double> levelsDb(size / 2, 0.0);
    double const norm = initializeWindow();
    int count = 0;
    for (std::size_t offset = 0; size + offset < samples.size(); offset += size) {
        std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(offset), size, frame.begin());
        WindowFunc(hamming, windowSize, frame.data());
        PowerSpectrum(windowSize, frame.data(), spectrum.data());
        for (std::size_t bin = 0; bin < levelsDb.size(); ++bin) {
            levelsDb[bin] += spectrum[bin];
        }
        ++count;
    }
    for (double& level : levelsDb) {
        level = 10.0 * std::log10(level * norm / count);
    }
    powerSpectrum.swap(levelsDb);
    updateNotes(powerSpectrum, dtSeconds);
}

void NoteEstimation::updateNotes(std::vector<double> const& levelsDb, double dtSeconds) {
    float maxDb = -10000.0f;
    float maxFrequencyHz = 0.0f;
    candidatePeaks.clear();
    for (int bin = lowestPeakBin; bin < windowSize / 2 - 1; ++bin) {
        auto const i = static_cast<std::size_t>(bin);
        bool const isPeak =
            levelsDb[i] > minDecibel && levelsDb[i] > levelsDb[i - 1] && levelsDb[i] > levelsDb[i + 1];
        if (!isPeak) {
            continue;
        }
        float const frequencyHz = indexToFrequency(bin);
        if (levelsDb[i] > maxDb) {
            maxDb = toFloat(levelsDb[i]);
            maxFrequencyHz = frequencyHz;
        }
        candidatePeaks.emplace_back(toFloat(levelsDb[i]), frequencyHz);
        if (frequencyHz > lastPeakHz) {
            break;
        }
    }

    std::vector<Notes::NoteID> found;
    double const leastStrength = strongShare * (levelOriginDb + maxDb);
    for (auto const& [levelDb, frequencyHz] : candidatePeaks) {
        if (levelOriginDb + levelDb > leastStrength) {
            std::printf("%3.0f %3.1f  ", frequencyHz, levelDb);
            Notes::NoteID const key = notes.getKey(frequencyHz);
            if (key != -1) {
                found.push_back(key);
            }
        }
    }
    noteState.notesDown(found, toFloat(dtSeconds));
    if (maxFrequencyHz > 0.0f) {
        std::printf("%f\n", maxFrequencyHz);
    }
}

double NoteEstimation::initializeWindow() {
    std::fill(frame.begin(), frame.end(), 1.0f);
    WindowFunc(hamming, windowSize, frame.data());
    // Exact in any order: the factors are multiples of 2^-27 and their sum stays below 2^12.
    double const sum = fft::sum(windowSize, frame.data());
    return sum > 0.0 ? 4.0 / (sum * sum) : 1.0;
}

float NoteEstimation::indexToFrequency(int bin) const {
    return static_cast<float>(bin) * sampleRateHz / 2.0f / (static_cast<float>(windowSize) / 2.0f);
}

NoteState const& NoteEstimation::getNoteState() const {
    return noteState;
}

std::vector<double> const& NoteEstimation::getPowerSpectrum() const {
    return powerSpectrum;
}

std::vector<std::pair<float, float>> const& NoteEstimation::getCandidatePeaks() const {
    return candidatePeaks;
}

float NoteEstimation::getMinDecibel() const {
    return minDecibel;
}
