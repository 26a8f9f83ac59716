#include "tools/zanto-song/Listening.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>

#include "analysis/FFT.h"
#include "analysis/NoteEstimation.h"
#include "analysis/SpectrumRules.h"
#include "audio/RingBuffer.h"
#include "tools/zanto-song/Performance.h"
#include "tools/zanto-song/SoundRecording.h"

namespace {

constexpr std::size_t samplesPerFrame = SampleSource::sampleRate / listenedFramesPerSecond;
constexpr unsigned int framesKept = 40;
constexpr double frameSeconds = 1.0 / listenedFramesPerSecond;

// Short enough to tell when a note begins.
constexpr int shortWindow = 1024;
constexpr std::size_t shortLines = 110;  // to 5 kHz
constexpr std::size_t framesBack = 3;    // that a rise is measured over
constexpr int hann = 3;

constexpr int lowestOctave = 3;
constexpr int highestOctave = 7;

using ShortSpectrum = std::array<float, shortLines>;

ShortSpectrum shortSpectrum(const RingBuffer& ring) {
    std::vector<float> samples(shortWindow);
    std::vector<float> power(shortWindow / 2);
    ring.copyLatest(samples);
    WindowFunc(hann, shortWindow, samples.data());
    PowerSpectrum(shortWindow, samples.data(), power.data());
    ShortSpectrum strengths{};
    for (std::size_t line = 2; line < shortLines; ++line) {
        strengths.at(line) = std::sqrt(std::sqrt(power[line]));
    }
    return strengths;
}

float riseFrom(const ShortSpectrum& before, const ShortSpectrum& now) {
    float rise = 0.0f;
    float sum = 1.0f;  // far below a note, far above silence
    for (std::size_t line = 2; line < shortLines; ++line) {
        rise += std::max(now.at(line) - before.at(line), 0.0f);
        sum += now.at(line);
    }
    return rise / sum;
}

// Weak lines count as much as strong ones: the noise of a bow.
float scratchFrom(const ShortSpectrum& before, const ShortSpectrum& now) {
    constexpr float least = 0.15f;
    float rise = 0.0f;
    for (std::size_t line = 2; line < shortLines; ++line) {
        rise += std::max(40.0f * std::log10(std::max(now.at(line), least) / std::max(before.at(line), least)),
                         0.0f);
    }
    return rise / static_cast<float>(shortLines);
}

float levelOf(int note, const std::vector<double>& spectrum) {
    double level = -120.0;
    for (int octave = lowestOctave; octave <= highestOctave; ++octave) {
        const double line = pitchOf(note, octave) * rules::windowSamples / SampleSource::sampleRate;
        const auto nearest = static_cast<std::size_t>(std::lround(line));
        for (std::size_t at = nearest - 1; at <= nearest + 1; ++at) {
            level = std::max(level, spectrum.at(at));
        }
    }
    return static_cast<float>(level);
}

}  // namespace

std::vector<ListenedFrame> listenTo(SampleSource& recording) {
    NoteEstimation estimation(NoteEstimation::Ear::fine);
    const auto ring = boost::make_shared<RingBuffer>(static_cast<unsigned int>(samplesPerFrame) * framesKept);
    std::vector<ListenedFrame> frames;
    std::array<ShortSpectrum, framesBack> earlier{};
    std::array<float, samplesPerFrame> block{};
    while (recording.read(block.data(), block.size()) == block.size()) {
        ring->append(block.data(), static_cast<int>(block.size()));
        estimation.update(ring, frameSeconds);
        ListenedFrame frame;
        for (int note = 0; note < Notes::noteCount; ++note) {
            frame.notes |=
                static_cast<std::uint8_t>((estimation.getNoteState().isDown(note) ? 1 : 0) << note);
            frame.levelsDb.at(static_cast<std::size_t>(note)) = levelOf(note, estimation.getPowerSpectrum());
        }
        const ShortSpectrum now = shortSpectrum(*ring);
        ShortSpectrum& oldest = earlier.at(frames.size() % framesBack);
        frame.rise = riseFrom(oldest, now);
        frame.scratchDb = scratchFrom(oldest, now);
        oldest = now;
        frames.push_back(frame);
    }
    return frames;
}
