#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "tests/support/SignalGenerators.h"
#include "tests/support/TemporaryFolder.h"

constexpr std::size_t spectrumBins = 2048;

/// A spectrum of `floorDb` with some bins above it.
inline std::vector<double> levels(const std::vector<std::pair<std::size_t, double>>& peaks,
                                  double floorDb = -200.0) {
    std::vector<double> result(spectrumBins, floorDb);
    for (const auto& [bin, levelDb] : peaks) {
        result[bin] = levelDb;
    }
    return result;
}

/// A sine in the middle of a bin.
inline signals::Tone binTone(int bin, double amplitude) {
    return {bin * 11.71875, amplitude};
}

/// An estimation with its settings, its note table, and what it prints.
class NoteEstimationTest : public testing::Test {
protected:
    void SetUp() override { forgetSettings(); }
    void TearDown() override { forgetSettings(); }

    static void forgetSettings() {
        for (const char* const name : {"ZANTO_MIN_DECIBEL", "ZANTO_EAR", "ZANTO_A4", "ZANTO_TRANSPOSE"}) {
            unsetenv(name);
        }
    }

    /// Makes the estimation anew with this note table, and gives what it says.
    std::string start(const std::string& table) {
        folder.write("notes.txt", table);
        testing::internal::CaptureStdout();
        estimation.emplace();
        return testing::internal::GetCapturedStdout();
    }

    /// Gives what the update says.
    std::string update(const std::vector<float>& samples, double dtSeconds = 0.02) {
        testing::internal::CaptureStdout();
        estimation->update(signals::ringHolding(samples), dtSeconds);
        return testing::internal::GetCapturedStdout();
    }

    std::string updateNotes(const std::vector<double>& levelsDb, double dtSeconds = 0.02) {
        testing::internal::CaptureStdout();
        estimation->updateNotes(levelsDb, dtSeconds);
        return testing::internal::GetCapturedStdout();
    }

    std::vector<int> notesDown() const {
        std::vector<int> down;
        for (int note = -1; note <= 7; ++note) {
            if (estimation->getNoteState().isDown(note)) {
                down.push_back(note);
            }
        }
        return down;
    }

    TemporaryFolder folder;
    std::optional<NoteEstimation> estimation;
};
