#include "platform/timage/Image.h"

#include <cstddef>
#include <utility>

#include <png.h>

namespace tavi {
namespace {

const png_uint_32 maxSidePixels = 32768;
const std::size_t maxPixels = std::size_t(1) << 26;

// libpng's simplified interface: it keeps its longjmp to itself and its messages off standard error.
struct PngReader {
    png_image png{};
    PngReader() { png.version = PNG_IMAGE_VERSION; }
    ~PngReader() { png_image_free(&png); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    bool ofUsableSize() const {
        return png.width > 0 && png.height > 0 && png.width <= maxSidePixels && png.height <= maxSidePixels &&
               std::size_t(png.width) * png.height <= maxPixels;
    }
};

}  // namespace

template <>
bool Image<unsigned char>::read(const char* path) {
    *this = Image(0, 0, 0);
    PngReader reader;
    png_image& png = reader.png;
    if (path == nullptr || png_image_begin_read_from_file(&png, path) == 0 || !reader.ofUsableSize()) {
        return false;
    }
    // Without a gamma in the file libpng would take 16-bit samples to be linear light.
    png.flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    png.format &= PNG_FORMAT_FLAG_COLOR | PNG_FORMAT_FLAG_ALPHA;
    Image picture(static_cast<int>(png.width), static_cast<int>(png.height),
                  static_cast<int>(PNG_IMAGE_SAMPLE_CHANNELS(png.format)));
    if (png_image_finish_read(&png, nullptr, picture.data(), 0, nullptr) == 0) {
        return false;
    }
    *this = std::move(picture);
    return true;
}

template <>
bool Image<unsigned char>::write(const char* path) const {
    const png_uint_32 formats[] = {PNG_FORMAT_GRAY, PNG_FORMAT_GA, PNG_FORMAT_RGB, PNG_FORMAT_RGBA};
    if (path == nullptr || empty() || samplesPerPixel > 4) {
        return false;
    }
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(columns);
    png.height = static_cast<png_uint_32>(rows);
    png.format = formats[samplesPerPixel - 1];
    return png_image_write_to_file(&png, path, 0, samples.data(), 0, nullptr) != 0;
}

}  // namespace tavi
