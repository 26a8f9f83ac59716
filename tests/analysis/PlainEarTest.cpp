// Without a choice of ear the analysis gives the bits and prints the lines of its rules, which are written
// down here step by step, for as much mixed sound as ZANTO_PLAIN_EAR_SECONDS says.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "tests/analysis/PlainFFT.h"

using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr std::size_t window = 4096;
constexpr std::size_t block = 1024;
constexpr double sampleRateHz = 48000.0;
constexpr std::size_t blocksTogether = 47;  // a second

/// A second each of chords with overtones, their decay, noise, full scale and silence, in turn and never
/// twice the same.
class Mixture {
public:
    std::vector<float> next() {
        std::vector<float> samples(block);
        if (blocks % blocksTogether == 0) {
            begin();
        }
        ++blocks;
        for (float& sample : samples) {
            ++time;
            double sum = noise * (static_cast<double>(random()) / 4294967296.0 - 0.5);
            for (const double hz : fundamentalsHz) {
                for (int partial = 1; partial <= 4; ++partial) {
                    sum +=
                        level / partial *
                        std::sin(2.0 * plain::pi * hz * partial * static_cast<double>(time) / sampleRateHz);
                }
            }
            level *= decay;
            sample = static_cast<float>(std::fmax(-1.0, std::fmin(1.0, sum)));
        }
        return samples;
    }

private:
    void begin() {
        const double levels[] = {0.1, 0.3, 0.01, 3.0, 0.0, 0.001};
        level = levels[random() % 6];
        noise = levels[random() % 6] * 0.3;
        decay = random() % 2 == 0 ? 1.0 : 0.9999;
        fundamentalsHz.clear();
        for (auto notes = random() % 4; notes > 0; --notes) {
            fundamentalsHz.push_back(65.4 * std::exp2(static_cast<double>(random() % 4800) / 1200.0));
        }
    }

    std::mt19937 random{20};
    std::size_t blocks = 0;
    std::size_t time = 0;
    double level = 0.0;
    double noise = 0.0;
    double decay = 1.0;
    std::vector<double> fundamentalsHz;
};

/// The rules of the plain ear.
class PlainEar {
public:
    PlainEar() {
        std::ifstream in("notes.txt");
        notes.load(in);
        factors.assign(window, 1.0f);
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
        return report(dtSeconds);
    }

    std::vector<double> levelsDb;
    NoteState state;

private:
    std::string report(double dtSeconds) {
        std::vector<std::pair<float, float>> peaks;
        std::pair<float, float> loudest(-10000.0f, 0.0f);
        for (int bin = 10; bin < 2047; ++bin) {
            const auto i = static_cast<std::size_t>(bin);
            if (!(levelsDb[i] > -65.0 && levelsDb[i] > levelsDb[i - 1] && levelsDb[i] > levelsDb[i + 1])) {
                continue;
            }
            peaks.emplace_back(static_cast<float>(levelsDb[i]), static_cast<float>(bin) * 11.71875f);
            if (levelsDb[i] > static_cast<double>(loudest.first)) {
                loudest = peaks.back();
            }
            if (peaks.back().second > 1000.0f) {
                break;
            }
        }
        std::string line;
        std::vector<Notes::NoteID> found;
        char text[64];
        for (const auto& [level, hz] : peaks) {
            if (100.0f + level > 0.95 * static_cast<double>(100.0f + loudest.first)) {
                std::snprintf(text, sizeof text, "%3.0f %3.1f  ", static_cast<double>(hz),
                              static_cast<double>(level));
                line += text;
                if (notes.getKey(hz) != -1) {
                    found.push_back(notes.getKey(hz));
                }
            }
        }
        state.notesDown(found, static_cast<float>(dtSeconds));
        if (loudest.second > 0.0f) {
            std::snprintf(text, sizeof text, "%f\n", static_cast<double>(loudest.second));
            line += text;
        }
        return line;
    }

    Notes notes;
    std::vector<float> factors;
    double norm = 0.0;
    std::vector<float> samples = std::vector<float>(6144);
};

TEST(PlainEarTest, ListensByItsRulesToTheBitAndByte) {
    unsetenv("ZANTO_EAR");
    unsetenv("ZANTO_MIN_DECIBEL");
    NoteEstimation estimation;
    PlainEar rules;
    Mixture mixture;
    const auto ring = boost::make_shared<RingBuffer>(20 * static_cast<unsigned int>(block));
    for (int second = 0; second < ZANTO_PLAIN_EAR_SECONDS; ++second) {
        std::string expected;
        CaptureStdout();
        for (std::size_t i = 0; i < blocksTogether; ++i) {
            const std::vector<float> newest = mixture.next();
            ring->append(newest.data(), static_cast<int>(block));
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
