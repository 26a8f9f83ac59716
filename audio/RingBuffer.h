#pragma once

#include <cstdint>
#include <vector>

/// The newest microphone samples: mono 32-bit floats, nominally -1 to 1, in a store of fixed size.
///
/// Shared by one writer, the audio callback, and one reader, the main thread, without a lock or an atomic: a
/// copy that overlaps an append may mix old and new samples of one block, which disturbs one analysis and
/// nothing else. Held by boost::shared_ptr, handed to readers as a pointer to const:
///
///     RingBuffer ring(20 * 1024);
///     ring.append(block, 1024);            // audio thread
///     std::vector<float> newest(4096);
///     ring.copyLatest(newest);             // main thread
class RingBuffer {
public:
    /// `size` samples of silence.
    explicit RingBuffer(unsigned int size);

    /// Stores the `count` samples of `data` behind the ones before. A block that would cross the end of the
    /// store, or a negative `count`, is dropped whole and gives false. Never allocates, locks, prints or
    /// throws.
    bool append(const float* data, int count) noexcept;

    /// Overwrites the elements of `out` with the newest out.size() samples, oldest first; slots never written
    /// read as 0. More than the capacity repeats samples; a capacity of 0 leaves `out` as it is.
    void copyLatest(std::vector<float>& out) const;

    /// The slot that the next append writes first. It changes with every block that arrives.
    std::uint32_t position() const;

    /// In samples.
    std::uint32_t capacity() const;

private:
    /// Below the capacity whenever no append is running.
    std::uint32_t writePos = 0;
    /// Its size is the capacity and never changes.
    std::vector<float> samples;
};
