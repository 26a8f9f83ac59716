#include "platform/wt/PackedPicture.h"

#include <zstd.h>

#include <cstddef>
#include <memory>

namespace wt {
namespace {

// Higher ones take longer and save nothing.
constexpr int level = 1;

std::size_t sampleCount(const tavi::Image<unsigned char>& picture) {
    return static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()) *
           static_cast<std::size_t>(picture.channels());
}

// Makes each sample its difference to the pixel before it, which repeats more often than the sample does.
void takeDifferences(tavi::Image<unsigned char>& picture) {
    const auto channels = static_cast<std::size_t>(picture.channels());
    unsigned char* const samples = picture.data();
    for (std::size_t i = sampleCount(picture); i-- > channels;) {
        samples[i] = static_cast<unsigned char>(samples[i] - samples[i - channels]);
    }
}

void sumUp(tavi::Image<unsigned char>& differences) {
    const std::size_t count = sampleCount(differences);
    const auto channels = static_cast<std::size_t>(differences.channels());
    unsigned char* const samples = differences.data();
    for (std::size_t i = channels; i < count; ++i) {
        samples[i] = static_cast<unsigned char>(samples[i] + samples[i - channels]);
    }
}

}  // namespace

PackedPicture::PackedPicture(tavi::Image<unsigned char> picture)
    : width(picture.width()), height(picture.height()), channels(picture.channels()) {
    if (picture.empty()) {
        return;
    }
    takeDifferences(picture);
    const std::size_t count = sampleCount(picture);
    const std::size_t most = ZSTD_compressBound(count);
    const std::unique_ptr<unsigned char[]> room(new unsigned char[most]);  // not filled: it takes a while
    // Cannot fail, with that much room and a level that there is.
    const std::size_t used = ZSTD_compress(room.get(), most, picture.data(), count, level);
    bytes.assign(room.get(), room.get() + used);
}

tavi::Image<unsigned char> PackedPicture::unpacked() const {
    tavi::Image<unsigned char> picture(width, height, channels);
    ZSTD_decompress(picture.data(), sampleCount(picture), bytes.data(), bytes.size());
    sumUp(picture);
    return picture;
}

}  // namespace wt
