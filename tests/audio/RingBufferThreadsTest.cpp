#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "audio/RingBuffer.h"

namespace {

constexpr int blockLength = 1024;
constexpr int blocksKept = 20;
constexpr int blocksRead = 6;
constexpr int reads = 200;

/// Appends blocks whose samples all are the block's number, from 1 on, while the test goes on reading.
class Writer {
public:
    explicit Writer(RingBuffer& ring) : thread([this, &ring] { write(ring); }) {
        while (written == 0) {
            std::this_thread::yield();
        }
    }

    /// How many blocks there have been.
    int stop() {
        stopped = true;
        thread.join();
        return written;
    }

private:
    void write(RingBuffer& ring) {
        std::vector<float> block(blockLength);
        while (!stopped) {
            block.assign(block.size(), static_cast<float>(written + 1));
            ring.append(block.data(), blockLength);
            ++written;
        }
    }

    std::atomic<bool> stopped{false};
    std::atomic<int> written{0};
    std::thread thread;
};

}  // namespace

TEST(RingBufferThreads, TornReadHoldsOnlySamplesThatWereWrittenAndTheNextReadIsWhole) {
    RingBuffer ring(blocksKept * blockLength);
    Writer writer(ring);
    std::vector<float> newest(blocksRead * blockLength);
    std::vector<float> seen;
    for (int read = 0; read < reads; ++read) {
        ring.copyLatest(newest);
        for (float const sample : newest) {
            if (seen.empty() || seen.back() != sample) {
                seen.push_back(sample);
            }
        }
    }
    int const blocks = writer.stop();
    for (float const sample : seen) {
        ASSERT_EQ(sample, static_cast<float>(static_cast<int>(sample)));
        ASSERT_GE(sample, 0);
        ASSERT_LE(sample, blocks);
    }

    ring.copyLatest(newest);
    for (int i = 0; i < blocksRead * blockLength; ++i) {
        ASSERT_EQ(newest[static_cast<std::size_t>(i)], blocks - blocksRead + 1 + i / blockLength)
            << "sample " << i;
    }
}
