#include "tools/zanto-song/SoundRecording.h"

#include <samplerate.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "audio/QuietDescriptor.h"
#include "tools/common/Command.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"

namespace {

constexpr std::size_t blockFrames = 4096;
constexpr int leastRate = 8000;           // below, there is nothing left of the notes' harmonics
constexpr float cancelledShare = 0.001f;  // of the channels' level

std::string wordsOf(const char* error) {
    std::string words = error;
    words.erase(words.find_last_not_of(". \n") + 1);
    return words;
}

}  // namespace

struct SoundRecording::Libraries {
    ~Libraries() {
        sf_close(file);
        src_delete(converter);
    }

    SF_INFO format{};
    SNDFILE* file = nullptr;
    SRC_STATE* converter = nullptr;  // null for a file of the right rate
};

SoundRecording::SoundRecording(const std::string& path) : libraries(std::make_unique<Libraries>()) {
    if (const std::string reason = whyUnreadable(path, anySize); !reason.empty()) {
        throw Failure(reason);
    }
    if (std::filesystem::file_size(path) == 0) {
        throw Failure("the file is empty");
    }
    const QuietDescriptor quiet(2);
    SF_INFO& format = libraries->format;
    libraries->file = sf_open(path.c_str(), SFM_READ, &format);
    if (libraries->file == nullptr) {
        throw Failure("it is no sound file, or a damaged one (" + wordsOf(sf_strerror(nullptr)) + ")");
    }
    if (format.samplerate < leastRate) {
        throw Failure("recorded at " + std::to_string(format.samplerate) + " Hz; at least " +
                      std::to_string(leastRate) + " Hz are needed, 48000 Hz are best");
    }
    if (format.samplerate != sampleRate) {
        int error = 0;
        libraries->converter = src_new(SRC_SINC_MEDIUM_QUALITY, 1, &error);
        if (libraries->converter == nullptr) {
            throw Failure(src_strerror(error));
        }
    }
    if (!refill()) {
        throw Failure("there is no sound in it");
    }
}

SoundRecording::~SoundRecording() = default;

double SoundRecording::seconds() const {
    return static_cast<double>(libraries->format.frames) / libraries->format.samplerate;
}

// Reads the next frames of the file; false at its end.
bool SoundRecording::refill() {
    const auto channels = static_cast<std::size_t>(libraries->format.channels);
    frames.resize(blockFrames * channels);
    const QuietDescriptor quiet(2);
    const sf_count_t count = sf_readf_float(libraries->file, frames.data(), blockFrames);
    const double seconds = static_cast<double>(framesRead) / libraries->format.samplerate;
    if (const int error = sf_error(libraries->file); error != SF_ERR_NO_ERROR) {
        throw Failure("it is damaged after " + fixed(seconds, 1) + " s (" + wordsOf(sf_error_number(error)) +
                      ")");
    }
    averaged.clear();
    used = 0;
    for (std::size_t frame = 0; frame < static_cast<std::size_t>(std::max<sf_count_t>(count, 0)); ++frame) {
        float sum = 0.0f;
        for (std::size_t channel = 0; channel < channels; ++channel) {
            const float sample = frames[frame * channels + channel];
            loudestChannel = std::max(loudestChannel, std::abs(sample));
            sum += sample;
        }
        if (!std::isfinite(sum)) {
            throw Failure("a sample after " + fixed(seconds, 1) + " s is no number");
        }
        averaged.push_back(sum / static_cast<float>(channels));
        loudestAverage = std::max(loudestAverage, std::abs(averaged.back()));
    }
    framesRead += averaged.size();
    return !averaged.empty();
}

std::size_t SoundRecording::read(float* samples, std::size_t count) {
    std::size_t filled = 0;
    while (filled < count) {
        const bool isOver = used == averaged.size() && !refill();
        if (libraries->converter == nullptr) {
            if (isOver) {
                break;
            }
            const std::size_t taken = std::min(count - filled, averaged.size() - used);
            std::copy_n(averaged.data() + used, taken, samples + filled);
            used += taken;
            filled += taken;
            continue;
        }
        SRC_DATA conversion{};
        conversion.data_in = averaged.data() + used;
        conversion.input_frames = static_cast<long>(averaged.size() - used);
        conversion.data_out = samples + filled;
        conversion.output_frames = static_cast<long>(count - filled);
        conversion.src_ratio = static_cast<double>(sampleRate) / libraries->format.samplerate;
        conversion.end_of_input = isOver ? 1 : 0;
        if (const int error = src_process(libraries->converter, &conversion); error != 0) {
            throw Failure(src_strerror(error));
        }
        used += static_cast<std::size_t>(conversion.input_frames_used);
        filled += static_cast<std::size_t>(conversion.output_frames_gen);
        if (isOver && conversion.output_frames_gen == 0) {
            break;
        }
    }
    return filled;
}

void SoundRecording::expectAudible() const {
    if (loudestChannel > 0.0f && loudestAverage < cancelledShare * loudestChannel) {
        throw Failure("its channels cancel each other out; record one channel, or turn one of them around");
    }
}
