#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "analysis/FineEar.h"
#include "tests/support/SignalGenerators.h"

/// A fine ear that hears sound block by block, as in the game.
class FineEarFixture : public testing::Test {
protected:
    static constexpr std::size_t block = 1024;  ///< samples
    static constexpr double blockSeconds = block / signals::sampleRateHz;

    enum Note { c, d, e, f, g, a, b };

    /// Lets the ear hear a sound. `heard` gets the time and the notes.
    void listen(const std::vector<float>& sound,
                const std::function<void(double, const std::vector<Notes::NoteID>&)>& heard);

    double stepSeconds = blockSeconds;  ///< between calls, as the ear is told
    FineEar ear{440.0, 0};
};
