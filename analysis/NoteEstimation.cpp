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
#include "analysis/SpectrumRules.h"
#include "audio/RingBuffer.h"
#include "platform/settings/Settings.h"

namespace {

constexpr int hamming = 2;

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

NoteEstimation::NoteEstimation()
    : NoteEstimation(settings::choice("ZANTO_EAR", {"plain", "fine"}) == 1 ? Ear::fine : Ear::plain) {
}

NoteEstimation::NoteEstimation(Ear ear) {
    const auto size = static_cast<std::size_t>(windowSize);
    frame.resize(size);
    spectrum.resize(size);
    samples.resize(rules::copiedSamples);
    scratch.resize(size / 2);
    std::ifstream in("notes.txt");
    notes.load(in);
    if (const char* const text = std::getenv("ZANTO_MIN_DECIBEL")) {
        minDecibel = toFloat(std::strtod(text, nullptr));
    }
    std::printf("NoteEstimation minDecibel is %f\n", minDecibel);
    if (ear == Ear::fine) {
        fineEar.emplace(settings::number("ZANTO_A4", 380.0, 480.0, 440.0),
                        settings::wholeNumber("ZANTO_TRANSPOSE", -24, 24, 0));
    }
}

void NoteEstimation::update(const boost::shared_ptr<const RingBuffer>& buffer, double dtSeconds) {
    buffer->copyLatest(samples);
    const double norm = initializeWindow();
    std::copy_n(fineEar ? samples.end() - windowSize : samples.begin(), windowSize, frame.begin());
    WindowFunc(hamming, windowSize, frame.data());
    PowerSpectrum(windowSize, frame.data(), spectrum.data());
    powerSpectrum.resize(rules::binCount);
    for (std::size_t bin = 0; bin < powerSpectrum.size(); ++bin) {
        powerSpectrum[bin] = 10.0 * std::log10(static_cast<double>(spectrum[bin]) * norm);
    }
    updateNotes(powerSpectrum, dtSeconds);
}

std::pair<float, float> NoteEstimation::pickPeaks(const std::vector<double>& levelsDb) {
    std::pair<float, float> loudest(-10000.0f, 0.0f);
    candidatePeaks.clear();
    for (int bin = rules::lowestPeakBin; bin <= rules::highestPeakBin; ++bin) {
        const auto i = static_cast<std::size_t>(bin);
        const bool isPeak =
            levelsDb[i] > minDecibel && levelsDb[i] > levelsDb[i - 1] && levelsDb[i] > levelsDb[i + 1];
        if (!isPeak) {
            continue;
        }
        const float frequencyHz = indexToFrequency(bin);
        if (levelsDb[i] > loudest.first) {
            loudest = {toFloat(levelsDb[i]), frequencyHz};
        }
        candidatePeaks.emplace_back(toFloat(levelsDb[i]), frequencyHz);
        if (frequencyHz > rules::lastPeakHz) {
            break;
        }
    }
    return loudest;
}

void NoteEstimation::updateNotes(const std::vector<double>& levelsDb, double dtSeconds) {
    const auto [maxDb, maxFrequencyHz] = pickPeaks(levelsDb);
    std::vector<Notes::NoteID> found;
    const double leastStrength = rules::strongShare * (maxDb - rules::levelOriginDb);
    for (const auto& [levelDb, frequencyHz] : candidatePeaks) {
        if (levelDb - rules::levelOriginDb > leastStrength) {
            std::printf("%3.0f %3.1f  ", frequencyHz, levelDb);
            const Notes::NoteID key = notes.getKey(frequencyHz);
            if (key != -1) {
                found.push_back(key);
            }
        }
    }
    noteState.notesDown(fineEar ? fineEar->hear(levelsDb, static_cast<double>(minDecibel), dtSeconds) : found,
                        toFloat(dtSeconds));
    if (maxFrequencyHz > 0.0f) {
        std::printf("%f\n", maxFrequencyHz);
    }
}

double NoteEstimation::initializeWindow() {
    std::fill(frame.begin(), frame.end(), 1.0f);
    WindowFunc(hamming, windowSize, frame.data());
    // Exact in any order: the factors are multiples of 2^-27 and their sum stays below 2^12.
    const double sum = fft::sum(windowSize, frame.data());
    return sum > 0.0 ? 4.0 / (sum * sum) : 1.0;
}

float NoteEstimation::indexToFrequency(int bin) const {
    return static_cast<float>(bin) * static_cast<float>(rules::sampleRateHz) / 2.0f /
           (static_cast<float>(windowSize) / 2.0f);
}

const NoteState& NoteEstimation::getNoteState() const {
    return noteState;
}

const std::vector<double>& NoteEstimation::getPowerSpectrum() const {
    return powerSpectrum;
}

const std::vector<std::pair<float, float>>& NoteEstimation::getCandidatePeaks() const {
    return candidatePeaks;
}

bool NoteEstimation::hasFineEar() const {
    return fineEar.has_value();
}

float NoteEstimation::getMinDecibel() const {
    return minDecibel;
}
