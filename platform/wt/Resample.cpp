#include "platform/wt/Resample.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace wt {
namespace {

/// What one sample of the result takes: the sources from `first` on, by these shares, which add up to 1.
struct Share {
    int first;
    std::vector<float> weights;
};

/// A tent over each new sample, as wide as two of the larger of both kinds.
std::vector<Share> sharesOf(int from, int to) {
    const double scale = static_cast<double>(from) / to;
    const double reach = std::max(scale, 1.0);
    std::vector<Share> shares;
    for (int i = 0; i < to; ++i) {
        const double centre = (i + 0.5) * scale;
        const int first = std::max(static_cast<int>(centre - reach), 0);
        const int last = std::min(static_cast<int>(centre + reach), from - 1);
        Share share{first, {}};
        double sum = 0.0;
        for (int source = first; source <= last; ++source) {
            const double weight = std::max(0.0, 1.0 - std::abs(source + 0.5 - centre) / reach);
            share.weights.push_back(static_cast<float>(weight));
            sum += weight;
        }
        for (float& weight : share.weights) {
            weight /= static_cast<float>(sum);
        }
        shares.push_back(std::move(share));
    }
    return shares;
}

unsigned char rounded(float sample) {
    return static_cast<unsigned char>(std::clamp(sample + 0.5F, 0.0F, 255.0F));
}

/// Resamples along one direction: `lines` lines whose samples lie `step` apart, each begun `lineStep` after
/// the one before.
void resampleLines(const unsigned char* from, unsigned char* to, const std::vector<Share>& shares, int step,
                   int lines, int fromLineStep, int toLineStep) {
    for (int line = 0; line < lines; ++line, from += fromLineStep, to += toLineStep) {
        unsigned char* out = to;
        for (const Share& share : shares) {
            const unsigned char* in = from + static_cast<std::ptrdiff_t>(share.first) * step;
            float sum = 0.0F;
            for (const float weight : share.weights) {
                sum += weight * static_cast<float>(*in);
                in += step;
            }
            *out = rounded(sum);
            out += step;
        }
    }
}

}  // namespace

tavi::Image<unsigned char> resampled(const tavi::Image<unsigned char>& image, int width, int height) {
    const int channels = image.channels();
    const std::vector<Share> columns = sharesOf(image.width(), width);
    tavi::Image<unsigned char> wide(width, image.height(), channels);
    for (int row = 0; row < image.height(); ++row) {
        for (int channel = 0; channel < channels; ++channel) {
            resampleLines(&image.at(0, row, channel), &wide.at(0, row, channel), columns, channels, 1, 0, 0);
        }
    }
    tavi::Image<unsigned char> result(width, height, channels);
    resampleLines(wide.data(), result.data(), sharesOf(image.height(), height), width * channels,
                  width * channels, 1, 1);
    return result;
}

}  // namespace wt
