// Prints a digest of the spectra of noise and of a tone, and of what was heard in them: the same on every
// machine.

#include <boost/make_shared.hpp>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "analysis/FFT.h"
#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"

namespace {

constexpr int blockSamples = 1024;
constexpr int blocks = 400;
constexpr int tonePeriod = 92;  // samples: 521.7 Hz, a C

/// FNV-1a over the bits of numbers.
class Digest {
public:
    template <class Number>
    void add(Number number) {
        unsigned char bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        for (const unsigned char byte : bytes) {
            value = (value ^ byte) * 1099511628211u;
        }
    }
    std::uint64_t value = 14695981039346656037u;
};

/// Noise, beside which a triangle comes and goes; whole numbers make both, so that they are the same
/// everywhere.
std::vector<float> nextBlock(std::uint32_t& random, int block) {
    std::vector<float> samples;
    for (int index = 0; index < blockSamples; ++index) {
        random = random * 1664525u + 1013904223u;
        const int noise = static_cast<int>(random >> 24) - 128;
        const int phase = (block * blockSamples + index) % tonePeriod;
        const int triangle = (phase < tonePeriod / 2 ? phase : tonePeriod - phase) - tonePeriod / 4;
        const int level = block / 20 % 2 == 0 ? 0 : 256 * (block / 40 + 1);
        samples.push_back(static_cast<float>(noise * 16 + triangle * level) / 262144.0f);
    }
    return samples;
}

}  // namespace

int main() {
    NoteEstimation estimation;
    const boost::shared_ptr<RingBuffer> ring = boost::make_shared<RingBuffer>(20u * blockSamples);
    Digest spectra;
    Digest heard;
    Digest transforms;
    std::uint32_t random = 7;
    for (int block = 0; block < blocks; ++block) {
        const std::vector<float> samples = nextBlock(random, block);
        ring->append(samples.data(), blockSamples);
        std::vector<float> power(blockSamples);
        PowerSpectrum(blockSamples, samples.data(), power.data());
        for (int bin = 0; bin < blockSamples / 2; ++bin) {
            transforms.add(power[static_cast<std::size_t>(bin)]);
        }
        estimation.update(ring, 0.01);
        for (const double level : estimation.getPowerSpectrum()) {
            spectra.add(level);
        }
        for (const auto& [level, frequency] : estimation.getCandidatePeaks()) {
            heard.add(level);
            heard.add(frequency);
        }
    }
    std::printf("digest: transforms %016llx, spectra %016llx, peaks %016llx\n",
                static_cast<unsigned long long>(transforms.value),
                static_cast<unsigned long long>(spectra.value), static_cast<unsigned long long>(heard.value));
    return 0;
}
