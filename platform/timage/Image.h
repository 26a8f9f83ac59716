#pragma once

#include <cstddef>
#include <vector>

#include "platform/timage/PageAllocator.h"

namespace tavi {

/// A picture in memory: rows from top to bottom without padding, `channels` samples per pixel side by side.
/// One channel is grey, two grey and alpha, three red green blue, four red green blue and alpha; alpha is not
/// multiplied in. A value: copies copy the pixels.
///
///     tavi::Image<unsigned char> picture(0, 0, 0);
///     if (picture.read("Images/title.png")) upload(picture.data(), picture.width(), picture.height());
///
/// Files are read and written for 8-bit samples only, `Image<unsigned char>`.
template <class Sample>
class Image {
public:
    /// All samples 0. A size of 0, or a negative one, in any argument makes the empty picture (0, 0, 0).
    Image(int width, int height, int channels);

    /// Replaces the picture by the PNG file at `path`: any depth, palette or interlacing becomes 8-bit
    /// samples, with as many channels as the file needs (a palette counts as colour, a transparent colour as
    /// alpha), for a display gamma of 2.2 if the file names another. False, with the picture left empty and
    /// nothing printed, when the file is missing, not a PNG, cut off before its last row, damaged, or larger
    /// than 32768 pixels on a side or 2^26 pixels in all.
    bool read(const char* path);
    /// Writes the picture as a PNG file with its own channels. False when empty or the file cannot be
    /// written.
    bool write(const char* path) const;

    int width() const { return columns; }
    int height() const { return rows; }
    int channels() const { return samplesPerPixel; }
    bool empty() const { return samples.empty(); }

    /// height * width * channels samples; null-safe to pass on with a size of 0.
    Sample* data() { return samples.data(); }
    const Sample* data() const { return samples.data(); }

    /// One sample. Requires 0 <= x < width, 0 <= y < height (0 is the top row) and 0 <= channel < channels.
    Sample& at(int x, int y, int channel) { return samples[index(x, y, channel)]; }
    const Sample& at(int x, int y, int channel) const { return samples[index(x, y, channel)]; }

private:
    std::size_t index(int x, int y, int channel) const {
        const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(columns);
        return (row + static_cast<std::size_t>(x)) * static_cast<std::size_t>(samplesPerPixel) +
               static_cast<std::size_t>(channel);
    }

    int columns = 0;
    int rows = 0;
    int samplesPerPixel = 0;
    std::vector<Sample, PageAllocator<Sample>> samples;
};

template <class Sample>
Image<Sample>::Image(int width, int height, int channels) {
    if (width > 0 && height > 0 && channels > 0) {
        columns = width;
        rows = height;
        samplesPerPixel = channels;
        samples.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) *
                       static_cast<std::size_t>(channels));
    }
}

template <>
bool Image<unsigned char>::read(const char* path);
template <>
bool Image<unsigned char>::write(const char* path) const;

}  // namespace tavi
