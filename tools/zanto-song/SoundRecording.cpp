#include "tools/zanto-song/SoundRecording.h"

#include <samplerate.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace {

constexpr sf_count_t blockFrames = 65536;
constexpr int leastRate = 8000;  // below, there is nothing left of the notes' harmonics

using SoundFile = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

std::vector<float> readAveraged(SNDFILE* file, int channels) {
    std::vector<float> averaged;
    std::vector<float> block(static_cast<std::size_t>(blockFrames * channels));
    while (sf_count_t const frames = sf_readf_float(file, block.data(), blockFrames)) {
        auto sample = block.begin();
        for (sf_count_t frame = 0; frame < frames; ++frame) {
            float sum = 0.0f;
            for (int channel = 0; channel < channels; ++channel) {
                sum += *sample++;
            }
            averaged.push_back(sum / static_cast<float>(channels));
        }
    }
    return averaged;
}

bool convertRate(std::vector<float>& samples, int fromRate, std::string& problem) {
    double const ratio = static_cast<double>(SoundRecording::sampleRate) / fromRate;
    auto const room = static_cast<std::size_t>(std::ceil(static_cast<double>(samples.size()) * ratio)) + 1;
    std::vector<float> converted(room);
    SRC_DATA conversion{};
    conversion.data_in = samples.data();
    conversion.input_frames = static_cast<long>(samples.size());
    conversion.data_out = converted.data();
    conversion.output_frames = static_cast<long>(converted.size());
    conversion.src_ratio = ratio;
    if (int const error = src_simple(&conversion, SRC_SINC_MEDIUM_QUALITY, 1)) {
        problem = src_strerror(error);
        return false;
    }
    converted.resize(static_cast<std::size_t>(conversion.output_frames_gen));
    samples = std::move(converted);
    return true;
}

}  // namespace

std::optional<SoundRecording> readRecording(std::string const& path, std::string& problem) {
    SF_INFO format{};
    SoundFile const file(sf_open(path.c_str(), SFM_READ, &format), sf_close);
    if (!file) {
        problem = sf_strerror(nullptr);
        while (!problem.empty() && (problem.back() == '\n' || problem.back() == '.')) {
            problem.pop_back();
        }
        return std::nullopt;
    }
    if (format.samplerate < leastRate) {
        problem = "recorded at " + std::to_string(format.samplerate) + " Hz; at least " +
                  std::to_string(leastRate) + " Hz are needed, 48000 Hz are best";
        return std::nullopt;
    }
    SoundRecording recording;
    recording.fileRate = format.samplerate;
    recording.fileChannels = format.channels;
    recording.samples = readAveraged(file.get(), format.channels);
    if (recording.samples.empty()) {
        problem = "there is no sound in it";
        return std::nullopt;
    }
    if (format.samplerate != SoundRecording::sampleRate &&
        !convertRate(recording.samples, format.samplerate, problem)) {
        return std::nullopt;
    }
    return recording;
}
