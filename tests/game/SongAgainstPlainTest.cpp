// Song against PlainSong: what is fast must come to the same as what is plain.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size);  // of tests/fuzz/scoring.cpp

TEST(SongAgainstPlainTest, ScoresAndDrawsTheSameThroughRandomGames) {
    std::mt19937 random(19690720);
    for (int game = 0; game < 600; ++game) {
        std::vector<std::uint8_t> decisions(random() % 800);
        std::generate(decisions.begin(), decisions.end(),
                      [&] { return static_cast<std::uint8_t>(random()); });
        LLVMFuzzerTestOneInput(decisions.data(), decisions.size());  // ends the process at a difference
    }
}
