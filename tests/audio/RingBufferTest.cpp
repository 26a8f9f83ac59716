#include "audio/RingBuffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using testing::Each;
using testing::ElementsAre;

namespace {

bool append(RingBuffer& ring, const std::vector<float>& block) {
    return ring.append(block.data(), static_cast<int>(block.size()));
}

std::vector<float> latest(const RingBuffer& ring, std::size_t count) {
    std::vector<float> out(count, -99.0f);
    ring.copyLatest(out);
    return out;
}

/// The ring buffer as one would describe it: a list of all samples ever stored, silence before them.
class Model {
public:
    explicit Model(std::size_t size) : capacity(size), history(size, 0.0f) {}

    bool append(const std::vector<float>& block) {
        if (position + block.size() > capacity) {
            return false;
        }
        history.insert(history.end(), block.begin(), block.end());
        position = (position + block.size()) % capacity;
        return true;
    }

    std::vector<float> latest(std::size_t count) const {
        std::vector<float> out(count);
        for (std::size_t age = 1; age <= count; ++age) {
            out[count - age] = history[history.size() - 1 - (age - 1) % capacity];
        }
        return out;
    }

private:
    std::size_t capacity;
    std::size_t position = 0;
    std::vector<float> history;
};

}  // namespace

TEST(RingBuffer, NegativeCountIsDropped) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4}));
    const float sample = 5;
    EXPECT_FALSE(ring.append(&sample, -1));
    EXPECT_FALSE(ring.append(&sample, -4));
    EXPECT_THAT(latest(ring, 5), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_FALSE(append(ring, {5, 6, 7, 8, 9})) << "the next block goes where it would have gone";
    EXPECT_TRUE(append(ring, {5, 6, 7, 8}));
}

TEST(RingBuffer, CapacityOfZeroHoldsNothingAndTouchesNothing) {
    RingBuffer ring(0);
    EXPECT_TRUE(ring.append(nullptr, 0));
    EXPECT_FALSE(append(ring, {1}));
    EXPECT_THAT(latest(ring, 3), Each(-99.0f));
}

TEST(RingBuffer, BehavesAsAListOfAllSamplesWhateverTheCapacityAndTheBlocks) {
    std::mt19937 random(20240229);
    const auto upTo = [&random](unsigned int most) {
        return static_cast<unsigned int>(random() % (most + 1));
    };
    for (int round = 0; round < 300; ++round) {
        const unsigned int capacity = 1 + upTo(40);
        RingBuffer ring(capacity);
        Model model(capacity);
        float next = 1;
        int stored = 0;
        for (int step = 0; step < 60; ++step) {
            // Now and then one that is longer than the buffer.
            std::vector<float> block(upTo(step % 8 == 0 ? capacity + 2 : capacity / 2 + 1));
            std::generate(block.begin(), block.end(), [&next] { return next++; });
            const bool fits = model.append(block);
            ASSERT_EQ(append(ring, block), fits) << "capacity " << capacity << ", step " << step;
            stored += fits ? 1 : 0;
            const std::size_t count = upTo(3 * capacity);
            ASSERT_EQ(latest(ring, count), model.latest(count))
                << "capacity " << capacity << ", step " << step;
        }
        ASSERT_GT(stored, 0);
    }
}
