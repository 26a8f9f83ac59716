#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <vector>

#include "analysis/FineEar.h"

namespace {
int allocations = 0;
}  // namespace

void* operator new(std::size_t size, const std::nothrow_t& /*unused*/) noexcept {
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}
void* operator new(std::size_t size) {
    if (void* const block = operator new(size, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

TEST(FineEarMemoryTest, AllocatesNothingAfterItsConstruction) {
    // From nothing over single notes to more peaks than any sound has, and back.
    std::vector<std::vector<double>> spectra;
    constexpr std::size_t steps[] = {430, 40, 22, 12, 3, 2, 430};
    for (const std::size_t step : steps) {
        spectra.emplace_back(SpectrumPeaks::lineCount + 1, -90.0);
        for (std::size_t line = step; line < SpectrumPeaks::lineCount; line += step) {
            spectra.back()[line] = -20.0;
        }
    }
    FineEar ear(440.0, 0);
    std::size_t mostNotes = 0;
    const int before = allocations;
    for (const std::vector<double>& levelsDb : spectra) {
        for (int frame = 0; frame < 10; ++frame) {
            mostNotes = std::max(mostNotes, ear.hear(levelsDb, -65.0, 0.01).size());
        }
    }
    EXPECT_EQ(allocations, before);
    EXPECT_GT(mostNotes, 0u);
    EXPECT_GT(before, 0);
}
