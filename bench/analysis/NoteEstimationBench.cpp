// What one analysis costs, against the same job done with FFTW and against aubio's pitch detection of as many
// samples. All three hear the same recording and take turns in one process; README.md has the command.

#include <aubio/aubio.h>
#include <benchmark/benchmark.h>
#include <fftw3.h>

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <cmath>
#include <random>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "analysis/SpectrumRules.h"
#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"
#include "bench/support/RatioReporter.h"

namespace {

constexpr int windowSize = rules::windowSamples;
constexpr int blockLength = 1024;
using rules::sampleRateHz;
constexpr double frameSeconds = 0.02;
const double pi = std::acos(-1.0);

/// Three notes with their overtones in a little noise: as many peaks as a game ever has.
boost::shared_ptr<RingBuffer> recording() {
    constexpr int capacity = AudioInput::blocksKept * blockLength;
    boost::shared_ptr<RingBuffer> ring(new RingBuffer(capacity));
    std::mt19937 random(1);
    std::vector<float> block(blockLength);
    for (int start = 0; start < capacity; start += blockLength) {
        for (int i = 0; i < blockLength; ++i) {
            const double seconds = static_cast<double>(start + i) / sampleRateHz;
            double sample = (static_cast<double>(random()) / 4294967296.0 - 0.5) * 0.001;
            for (const double frequencyHz : {257.8, 328.1, 386.7}) {
                for (int overtone = 1; overtone <= 4; ++overtone) {
                    sample += 0.1 / overtone * std::sin(2.0 * pi * frequencyHz * overtone * seconds);
                }
            }
            block[static_cast<std::size_t>(i)] = static_cast<float>(sample);
        }
        ring->append(block.data(), blockLength);
    }
    return ring;
}

void ownUpdate(benchmark::State& state) {
    const boost::shared_ptr<RingBuffer> ring = recording();
    NoteEstimation estimation;
    for (auto _ : state) {
        estimation.update(ring, frameSeconds);
    }
}

void ownFineUpdate(benchmark::State& state) {
    const boost::shared_ptr<RingBuffer> ring = recording();
    NoteEstimation estimation(NoteEstimation::Ear::fine);
    for (auto _ : state) {
        estimation.update(ring, frameSeconds);
    }
}

/// The same job: copy, window, transform of real samples, powers, levels, peaks, notes. Window and plan are
/// made once, the plan by measuring; the last two steps are our own.
class FftwEstimation {
public:
    FftwEstimation() : in(fftwf_alloc_real(windowSize)), out(fftwf_alloc_complex(windowSize / 2 + 1)) {
        plan = fftwf_plan_dft_r2c_1d(windowSize, in, out, FFTW_MEASURE);
        double sum = 0.0;
        for (int i = 0; i < windowSize; ++i) {
            window.push_back(static_cast<float>(0.54 - 0.46 * std::cos(2.0 * pi * i / (windowSize - 1))));
            sum += window.back();
        }
        norm = 4.0 / (sum * sum);
    }
    FftwEstimation(const FftwEstimation&) = delete;
    FftwEstimation& operator=(const FftwEstimation&) = delete;
    ~FftwEstimation() {
        fftwf_destroy_plan(plan);
        fftwf_free(out);
        fftwf_free(in);
    }

    void update(const RingBuffer& ring) {
        ring.copyLatest(samples);
        for (std::size_t i = 0; i < window.size(); ++i) {
            in[i] = samples[i] * window[i];
        }
        fftwf_execute(plan);
        for (std::size_t bin = 0; bin < levelsDb.size(); ++bin) {
            const float power = out[bin][0] * out[bin][0] + out[bin][1] * out[bin][1];
            levelsDb[bin] = 10.0 * std::log10(power * norm);
        }
        notes.updateNotes(levelsDb, frameSeconds);
    }

private:
    float* in;
    fftwf_complex* out;
    fftwf_plan plan = nullptr;
    std::vector<float> window;
    double norm = 1.0;
    std::vector<float> samples = std::vector<float>(rules::copiedSamples);
    std::vector<double> levelsDb = std::vector<double>(rules::binCount);
    NoteEstimation notes;
};

void fftwUpdate(benchmark::State& state) {
    const boost::shared_ptr<RingBuffer> ring = recording();
    FftwEstimation estimation;
    for (auto _ : state) {
        estimation.update(*ring);
    }
}

/// One pitch from the newest 4096 samples, which it keeps itself and gets in blocks.
void aubioYinfft(benchmark::State& state) {
    const boost::shared_ptr<RingBuffer> ring = recording();
    std::vector<float> samples(blockLength);
    ring->copyLatest(samples);
    aubio_pitch_t* const pitch = new_aubio_pitch("yinfft", windowSize, blockLength, sampleRateHz);
    fvec_t* const in = new_fvec(blockLength);
    fvec_t* const out = new_fvec(1);
    std::copy(samples.begin(), samples.end(), in->data);
    for (auto _ : state) {
        aubio_pitch_do(pitch, in, out);
        benchmark::DoNotOptimize(out->data[0]);
    }
    del_fvec(out);
    del_fvec(in);
    del_aubio_pitch(pitch);
}

BENCHMARK(ownUpdate)->Unit(benchmark::kMicrosecond);
BENCHMARK(ownFineUpdate)->Unit(benchmark::kMicrosecond);
BENCHMARK(fftwUpdate)->Unit(benchmark::kMicrosecond);
BENCHMARK(aubioYinfft)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(
        argc, argv,
        {{"ownFineUpdate", "ownUpdate"}, {"ownUpdate", "fftwUpdate"}, {"ownUpdate", "aubioYinfft"}});
}
