// Prints what the ear that is chosen hears in mixed sound, and for how long notes are held: the same on every
// system, though its C library may round differently. With "spectra", also a digest of each spectrum and its
// peaks, the same on every machine with this C library. Usage: hearing_of_an_hour [SECONDS [spectra]]

#include <boost/make_shared.hpp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "tests/analysis/Mixture.h"

namespace {

constexpr int blockSamples = 480;  // a frame of the game
constexpr int blocksOfASecond = 100;

/// FNV-1a over the bits of numbers.
template <class Number>
void add(std::uint64_t& digest, Number number) {
    unsigned char bytes[sizeof number];
    std::memcpy(bytes, &number, sizeof number);
    for (const unsigned char byte : bytes) {
        digest = (digest ^ byte) * 1099511628211u;
    }
}

std::uint64_t digestOf(const NoteEstimation& estimation) {
    std::uint64_t digest = 14695981039346656037u;
    for (const double level : estimation.getPowerSpectrum()) {
        add(digest, level);
    }
    for (const auto& [level, frequency] : estimation.getCandidatePeaks()) {
        add(digest, level);
        add(digest, frequency);
    }
    return digest;
}

}  // namespace

int main(int count, char** arguments) {
    const long blocks = (count > 1 ? std::atol(arguments[1]) : 3600) * blocksOfASecond;
    NoteEstimation estimation;
    Mixture mixture;
    const auto ring = boost::make_shared<RingBuffer>(20u * 1024);
    for (long block = 0; block < blocks; ++block) {
        ring->append(mixture.next(blockSamples).data(), blockSamples);
        estimation.update(ring, 0.01);
        for (int note = 0; note < Notes::noteCount; ++note) {
            const float seconds = estimation.getNoteState().downCount(note);
            std::uint32_t bits = 0;
            std::memcpy(&bits, &seconds, sizeof bits);
            if (bits != 0) {
                std::printf("%d %08x  ", note, static_cast<unsigned int>(bits));
            }
        }
        if (count > 2) {
            std::printf("%016llx", static_cast<unsigned long long>(digestOf(estimation)));
        }
        std::puts("");
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
