// Any bytes as a PNG file: tavi::Image::read gives a whole picture or none, and writing one loses nothing.

#include <zlib.h>

#include <cstring>

#include "platform/timage/Image.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/InputFile.h"

using Image = tavi::Image<unsigned char>;

namespace {

constexpr std::size_t signatureBytes = 8;
constexpr std::size_t aroundChunkData = 12;  // bytes: length, type and check sum
constexpr std::size_t widthAt = 16;          // bytes from the file's start
constexpr std::size_t heightAt = 20;

std::uint32_t bigEndianAt(const std::uint8_t* data) {
    return std::uint32_t{data[0]} << 24 | std::uint32_t{data[1]} << 16 | std::uint32_t{data[2]} << 8 |
           data[3];
}

void setBigEndianAt(std::uint8_t* data, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        data[i] = static_cast<std::uint8_t>(value >> (24 - 8 * i) & 0xFFu);
    }
}

/// Makes every chunk's check sum right, as far as there are chunks: else nearly every change ends at it.
void sign(std::uint8_t* data, std::size_t size) {
    for (std::size_t at = signatureBytes; at + aroundChunkData <= size;) {
        const std::size_t length = bigEndianAt(data + at);
        if (length > size - at - aroundChunkData) {
            return;
        }
        const auto sum = crc32(0, data + at + 4, static_cast<uInt>(length + 4));
        setBigEndianAt(data + at + 8 + length, static_cast<std::uint32_t>(sum));
        at += aroundChunkData + length;
    }
}

/// Whether the picture is within the limits and so large that it would only be slow.
bool isSlow(const std::uint8_t* data, std::size_t size) {
    if (size < heightAt + 4) {
        return false;
    }
    const std::uint64_t width = bigEndianAt(data + widthAt);
    const std::uint64_t height = bigEndianAt(data + heightAt);
    const bool allowed = width <= 32768 && height <= 32768 && width * height <= 1u << 26;
    return allowed && width * height > 1u << 16;
}

bool alike(const Image& left, const Image& right) {
    const std::size_t samples = static_cast<std::size_t>(left.width()) *
                                static_cast<std::size_t>(left.height()) *
                                static_cast<std::size_t>(left.channels());
    return left.width() == right.width() && left.height() == right.height() &&
           left.channels() == right.channels() && std::memcmp(left.data(), right.data(), samples) == 0;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned int seed) {
    const std::size_t mutated = LLVMFuzzerMutate(data, size, mostSize);
    if (seed % 8 != 0) {
        sign(data, mutated);
    }
    return mutated;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    if (isSlow(data, size)) {
        return 0;
    }
    file.write(std::string(reinterpret_cast<const char*>(data), size));
    Image picture(2, 2, 3);
    const bool done = picture.read(file.path());
    require(done == !picture.empty(), "a picture is read whole or not at all");
    if (!done) {
        require(picture.width() == 0 && picture.height() == 0 && picture.channels() == 0,
                "no picture is empty");
        return 0;
    }
    require(picture.channels() >= 1 && picture.channels() <= 4, "there are one to four channels");
    require(picture.write(file.path()), "what was read can be written");
    Image again(0, 0, 0);
    require(again.read(file.path()), "what was written can be read");
    require(alike(picture, again), "writing and reading loses nothing");
    return 0;
}
