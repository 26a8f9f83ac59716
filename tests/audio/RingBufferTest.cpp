#include "audio/RingBuffer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using testing::Each;
using testing::ElementsAre;

namespace {

bool append(RingBuffer& ring, std::vector<float> const& block) {
    return ring.append(block.data(), static_cast<int>(block.size()));
}

std::vector<float> latest(RingBuffer const& ring, std::size_t count) {
    std::vector<float> out(count, -99.0f);
    ring.copyLatest(out);
    return out;
}

/// Where the next append writes: what is missing to the longest block that still fits. Works on a copy.
int writePosition(RingBuffer ring, int capacity) {
    std::vector<float> const block(static_cast<std::size_t>(capacity));
    int longest = capacity;
    while (!ring.append(block.data(), longest)) {
        --longest;
    }
    return capacity - longest;
}

/// The ring buffer as one would describe it: a list of all samples ever stored, silence before them.
class Model {
public:
    explicit Model(std::size_t size) : capacity(size), history(size, 0.0f) {}

    bool append(std::vector<float> const& block) {
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

TEST(RingBuffer, FreshBufferYieldsZeros) {
    RingBuffer const ring(8);
    EXPECT_THAT(latest(ring, 4), ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(writePosition(ring, 8), 0);
}

TEST(RingBuffer, YieldsWhatWasAppended) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4}));
    EXPECT_THAT(latest(ring, 4), ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(writePosition(ring, 8), 4);
}

TEST(RingBuffer, FullBufferStartsOverAtItsFirstSlot) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4}));
    EXPECT_TRUE(append(ring, {5, 6, 7, 8}));
    EXPECT_EQ(writePosition(ring, 8), 0);
    EXPECT_THAT(latest(ring, 8), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_TRUE(append(ring, {9, 10, 11, 12}));
    EXPECT_THAT(latest(ring, 8), ElementsAre(5, 6, 7, 8, 9, 10, 11, 12));
}

TEST(RingBuffer, BlockAcrossTheEndIsDroppedWhole) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(append(ring, {7, 8, 9, 10}));
    EXPECT_EQ(writePosition(ring, 8), 6);
    EXPECT_THAT(latest(ring, 8), ElementsAre(0, 0, 1, 2, 3, 4, 5, 6));
}

TEST(RingBuffer, NewestSamplesAreJoinedAcrossTheEnd) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4}));
    EXPECT_TRUE(append(ring, {5, 6, 7, 8}));
    EXPECT_TRUE(append(ring, {9, 10, 11, 12}));
    EXPECT_EQ(writePosition(ring, 8), 4);
    EXPECT_THAT(latest(ring, 6), ElementsAre(7, 8, 9, 10, 11, 12));
}

TEST(RingBuffer, AppendOfNothingSucceedsAndChangesNothing) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3}));
    EXPECT_TRUE(ring.append(nullptr, 0));
    EXPECT_EQ(writePosition(ring, 8), 3);
    EXPECT_THAT(latest(ring, 8), ElementsAre(0, 0, 0, 0, 0, 1, 2, 3));
}

TEST(RingBuffer, BlockLongerThanTheBufferIsDropped) {
    RingBuffer ring(4);
    EXPECT_FALSE(append(ring, {1, 2, 3, 4, 5}));
    EXPECT_THAT(latest(ring, 4), Each(0));
}

TEST(RingBuffer, NegativeCountIsDropped) {
    RingBuffer ring(8);
    EXPECT_TRUE(append(ring, {1, 2, 3, 4}));
    float const sample = 5;
    EXPECT_FALSE(ring.append(&sample, -1));
    EXPECT_FALSE(ring.append(&sample, -4));
    EXPECT_EQ(writePosition(ring, 8), 4);
    EXPECT_THAT(latest(ring, 4), ElementsAre(1, 2, 3, 4));
}

TEST(RingBuffer, MoreThanTheCapacityRepeatsSamplesAndEndsWithTheNewest) {
    RingBuffer ring(3);
    EXPECT_TRUE(append(ring, {1, 2, 3}));
    EXPECT_TRUE(append(ring, {4}));
    EXPECT_THAT(latest(ring, 3), ElementsAre(2, 3, 4));
    EXPECT_THAT(latest(ring, 4), ElementsAre(4, 2, 3, 4));
    EXPECT_THAT(latest(ring, 8), ElementsAre(3, 4, 2, 3, 4, 2, 3, 4));
}

TEST(RingBuffer, CopyOfNothingLeavesAnEmptyVector) {
    RingBuffer ring(3);
    EXPECT_TRUE(append(ring, {1, 2}));
    EXPECT_TRUE(latest(ring, 0).empty());
}

TEST(RingBuffer, CapacityOfZeroHoldsNothingAndTouchesNothing) {
    RingBuffer ring(0);
    EXPECT_TRUE(ring.append(nullptr, 0));
    EXPECT_FALSE(append(ring, {1}));
    EXPECT_THAT(latest(ring, 3), Each(-99.0f));
}

TEST(RingBuffer, BehavesAsAListOfAllSamplesWhateverTheCapacityAndTheBlocks) {
    std::mt19937 random(20240229);
    auto const upTo = [&random](unsigned int most) {
        return static_cast<unsigned int>(random() % (most + 1));
    };
    for (int round = 0; round < 300; ++round) {
        unsigned int const capacity = 1 + upTo(40);
        RingBuffer ring(capacity);
        Model model(capacity);
        float next = 1;
        int stored = 0;
        for (int step = 0; step < 60; ++step) {
            std::vector<float> block(upTo(capacity / 2 + 1));
            std::generate(block.begin(), block.end(), [&next] { return next++; });
            bool const fits = model.append(block);
            ASSERT_EQ(append(ring, block), fits) << "capacity " << capacity << ", step " << step;
            stored += fits ? 1 : 0;
            std::size_t const count = upTo(3 * capacity);
            ASSERT_EQ(latest(ring, count), model.latest(count))
                << "capacity " << capacity << ", step " << step;
        }
        ASSERT_GT(stored, 0);
    }
}
