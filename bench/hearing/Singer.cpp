#include "bench/hearing/Singer.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "tools/common/RunProgram.h"

namespace {

constexpr double a4Hz = 440.0;
constexpr double fullScale = 32768.0;
/// Sung longer than the note is, because vowels weaken towards their end.
constexpr double sungBeyondSeconds = 0.4;
constexpr double releaseSeconds = 0.03;
/// The note begins with the first hundredth of a second that is at most 18 dB below the loudest.
constexpr std::size_t levelSamples = soundRateHz / 100;
constexpr double attackShare = 0.125;

const char* wordWith(char vowel) {
    switch (vowel) {
        case 'a':
            return "la";
        case 'e':
            return "leh";
        case 'i':
            return "lee";
        case 'o':
            return "law";
        default:
            return "loo";
    }
}

/// As festival sings it, with some silence first.
std::vector<float> sung(char vowel, int pitch, double seconds) {
    const std::string text =
        "<?xml version=\"1.0\"?>\n"
        "<!DOCTYPE SINGING PUBLIC \"-//SINGING//DTD SINGING mark up//EN\" \"Singing.v0_1.dtd\" []>\n"
        "<SINGING BPM=\"60\"><PITCH FREQ=\"" +
        std::to_string(a4Hz * std::exp2((pitch - 69) / 12.0)) + "\"><DURATION SECONDS=\"" +
        std::to_string(seconds) + "\">" + wordWith(vowel) + "</DURATION></PITCH></SINGING>\n";
    const MemoryFile file;
    const bool isWritten =
        write(file.getDescriptor(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const auto result = runProgram({"text2wave", "-eval", "(voice_kal_diphone)", "-mode", "singing", "-F",
                                    std::to_string(soundRateHz), "-otype", "raw", file.path()});
    if (!isWritten || !result || result->status != 0 || result->out.empty()) {
        throw std::runtime_error("festival does not sing \"" + std::string(wordWith(vowel)) + "\" at pitch " +
                                 std::to_string(pitch) + (result ? ": " + result->errors : ""));
    }
    std::vector<std::int16_t> samples(result->out.size() / sizeof(std::int16_t));
    std::memcpy(samples.data(), result->out.data(), samples.size() * sizeof(std::int16_t));
    std::vector<float> sound(samples.size());
    std::transform(samples.begin(), samples.end(), sound.begin(),
                   [](std::int16_t sample) { return static_cast<float>(sample / fullScale); });
    return sound;
}

std::size_t attackOf(const std::vector<float>& sound) {
    std::vector<double> powers;
    for (std::size_t first = 0; first + levelSamples <= sound.size(); first += levelSamples) {
        double power = 0.0;
        for (std::size_t i = first; i < first + levelSamples; ++i) {
            power += static_cast<double>(sound[i]) * static_cast<double>(sound[i]);
        }
        powers.push_back(power);
    }
    const double least = attackShare * attackShare * *std::max_element(powers.begin(), powers.end());
    const auto attack =
        std::find_if(powers.begin(), powers.end(), [least](double power) { return power >= least; });
    return static_cast<std::size_t>(attack - powers.begin()) * levelSamples;
}

}  // namespace

std::vector<float> singWords(char vowel, const std::vector<NoteEvent>& notes, const Touch& touch,
                             double seconds) {
    std::vector<float> sound(static_cast<std::size_t>(std::lround(seconds * soundRateHz)), 0.0f);
    const double loudness = std::pow(touch.velocity / 127.0, 2.0);
    for (const NoteEvent& note : notes) {
        const double lengthSeconds = note.endSeconds - note.startSeconds;
        const std::vector<float> word = sung(vowel, note.pitch, lengthSeconds + sungBeyondSeconds);
        const auto start = static_cast<std::size_t>(std::lround(note.startSeconds * soundRateHz));
        std::size_t from = attackOf(word);
        for (std::size_t i = start; i < sound.size() && from < word.size(); ++i, ++from) {
            const double left = lengthSeconds + releaseSeconds - static_cast<double>(i - start) / soundRateHz;
            sound[i] +=
                static_cast<float>(loudness * std::clamp(left / releaseSeconds, 0.0, 1.0)) * word[from];
        }
    }
    return sound;
}
