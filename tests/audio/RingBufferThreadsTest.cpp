#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

#include "audio/RingBuffer.h"

namespace {

constexpr int blockLength = 1 << 16;  // long, so that many reads fall into one append
constexpr int blocksKept = 20;
constexpr int blocksRead = 2;
constexpr int blocksWritten = 300;
constexpr int step = 61;  // samples; looking at all of them takes longer than the append

/// Block number `block`: all its samples are that number. There is silence before the first one.
float sampleOf(int block) {
    return static_cast<float>(std::max(block, 0));
}

/// How many of the samples looked at are not what they may be while `block` is appended, or before, or after.
int wrongSamples(const std::vector<float>& newest, int block) {
    const bool before = newest[newest.size() - blockLength - 1] != sampleOf(block - 1);
    const int last = before ? block - 1 : block;
    int wrong = 0;
    for (int i = 0; i < blocksRead * blockLength; i += step) {
        const int number = last - blocksRead + 1 + i / blockLength;
        const float sample = newest[static_cast<std::size_t>(i)];
        const bool torn = number == block && sample == sampleOf(block - blocksKept);
        wrong += sample == sampleOf(number) || torn ? 0 : 1;
    }
    return wrong;
}

}  // namespace

TEST(RingBufferThreads, ReadDuringAnAppendIsWholeButForItsNewestBlock) {
    RingBuffer ring(blocksKept * blockLength);
    std::atomic<int> asked{0};
    std::atomic<int> written{0};
    std::thread writer([&ring, &asked, &written] {
        for (int block = 1; block <= blocksWritten; ++block) {
            const std::vector<float> samples(blockLength, sampleOf(block));
            while (asked < block) {
                std::this_thread::yield();
            }
            ring.append(samples.data(), blockLength);
            written = block;
        }
    });
    std::vector<float> newest(blocksRead * blockLength);
    int wrong = 0;
    for (int block = 1; block <= blocksWritten; ++block) {
        asked = block;
        do {
            ring.copyLatest(newest);
            wrong += wrongSamples(newest, block);
        } while (written < block);
        ring.copyLatest(newest);
        wrong += newest.front() == sampleOf(block - 1) && newest.back() == sampleOf(block) ? 0 : 1;
    }
    writer.join();
    EXPECT_EQ(wrong, 0);
}
