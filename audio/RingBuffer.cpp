#include "audio/RingBuffer.h"

#include <algorithm>
#include <cstddef>
#include <limits>

RingBuffer::RingBuffer(unsigned int size) : samples(size, 0.0f) {
}

bool RingBuffer::append(const float* data, int count) noexcept {
    // 64 bits, so that a negative count is too long for any store instead of wrapping round to a short one.
    const std::uint64_t end = std::uint64_t{writePos} + static_cast<std::uint32_t>(count);
    if (end > samples.size()) {
        return false;
    }
    std::copy_n(data, count, samples.data() + writePos);
    // One store: a reader on the other thread never sees a position past the end.
    writePos = end < samples.size() ? static_cast<std::uint32_t>(end) : 0;
    return true;
}

void RingBuffer::copyLatest(std::vector<float>& out) const {
    const std::size_t capacity = samples.size();
    if (capacity == 0) {
        return;
    }
    const std::size_t start = (writePos + capacity - out.size() % capacity) % capacity;
    if (start > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return;
    }
    auto from = samples.begin() + static_cast<std::ptrdiff_t>(start);
    auto to = out.begin();
    while (to != out.end()) {
        const std::ptrdiff_t run = std::min(samples.end() - from, out.end() - to);
        to = std::copy_n(from, run, to);
        from = samples.begin();
    }
}

std::uint32_t RingBuffer::position() const {
    return writePos;
}

std::uint32_t RingBuffer::capacity() const {
    return static_cast<std::uint32_t>(samples.size());
}
