// Without a choice of ear the analysis gives the bits and prints the lines of its rules, which are written
// down here step by step, for as much mixed sound as ZANTO_PLAIN_EAR_SECONDS says.

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "tests/analysis/Mixture.h"
#include "tests/analysis/PlainFFT.h"
#include "tests/analysis/PlainPeaks.h"

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr std::size_t window = 4096;
constexpr int block = 1024;
constexpr std::size_t blocksTogether = 47;  // a second

/// The rules of the plain ear.
class PlainEar {
public:
    PlainEar() {
        std::ifstream in("notes.txt");
        notes.load(in);
        std::vector<float> factors(window, 1.0f);
        plain::WindowFunc(2, window, factors.data());
        double sum = 0.0;
        for (const float factor : factors) {
            sum += factor;
        }
        norm = 4.0 / (sum * sum);
    }

    std::string update(const std::vector<float>& newest, double dtSeconds) {
        samples.insert(samples.end(), newest.begin(), newest.end());
        samples.erase(samples.begin(), samples.end() - 6144);
        std::vector<float> frame(samples.begin(), samples.begin() + window);
        plain::WindowFunc(2, window, frame.data());
        std::vector<float> power(window / 2);
        plain::PowerSpectrum(window, frame.data(), power.data());
        levelsDb.clear();
        for (const float value : power) {
            levelsDb.push_back(10.0 * std::log10(static_cast<double>(value) * norm / 1));
        }
        const plain::Heard heard = plain::hear(levelsDb, -65.0, notes);
        state.notesDown(heard.notes, static_cast<float>(dtSeconds));
        return heard.line;
    }

    std::vector<double> levelsDb;
    NoteState state;
    double norm = 0.0;

private:
    Notes notes;
    std::vector<float> samples = std::vector<float>(6144);
};

TEST(PlainEarTest, ListensByItsRulesToTheBitAndByte) {
    unsetenv("ZANTO_EAR");
    unsetenv("ZANTO_MIN_DECIBEL");
    NoteEstimation estimation;
    PlainEar rules;
    EXPECT_EQ(estimation.initializeWindow(), rules.norm);
    Mixture mixture;
    const auto ring = boost::make_shared<RingBuffer>(20u * block);
    for (int second = 0; second < ZANTO_PLAIN_EAR_SECONDS; ++second) {
        std::string expected;
        CaptureStdout();
        for (std::size_t i = 0; i < blocksTogether; ++i) {
            const std::vector<float> newest = mixture.next(block);
            ring->append(newest.data(), block);
            const double dtSeconds = 0.005 + 0.001 * static_cast<double>(i);
            estimation.update(ring, dtSeconds);
            expected += rules.update(newest, dtSeconds);
            ASSERT_EQ(estimation.getPowerSpectrum(), rules.levelsDb) << "second " << second;
            for (int note = 0; note < 7; ++note) {
                ASSERT_EQ(estimation.getNoteState().downCount(note), rules.state.downCount(note))
                    << "second " << second;
            }
        }
        ASSERT_EQ(GetCapturedStdout(), expected) << "second " << second;
    }
}

}  // namespace
