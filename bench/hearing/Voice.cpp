#include "bench/hearing/Voice.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>

namespace {

constexpr double pi = 3.14159265358979323846;

struct Formant {
    double frequencyHz;
    double bandwidthHz;
};

struct Vowel {
    char name;
    Formant formants[3];
};

// Formant frequencies of the five vowels as phonetics books give them for adults, rounded.
constexpr Vowel vowels[] = {
    {'a', {{750, 90}, {1200, 110}, {2600, 160}}}, {'e', {{530, 70}, {1840, 110}, {2500, 160}}},
    {'i', {{300, 60}, {2250, 110}, {3000, 160}}}, {'o', {{500, 70}, {900, 90}, {2500, 160}}},
    {'u', {{320, 60}, {800, 90}, {2300, 160}}},
};

constexpr double highestHarmonicHz = 5000.0;
constexpr double sourceSlope = 2.0;  // power of the harmonic's number by which its amplitude falls
constexpr double usualVibratoCents = 30.0;
constexpr double attackSeconds = 0.06;
constexpr double releaseSeconds = 0.08;

const Vowel& vowelNamed(char name) {
    return *std::find_if(std::begin(vowels), std::end(vowels) - 1,
                         [name](const Vowel& vowel) { return vowel.name == name; });
}

double resonance(const Formant& formant, double frequencyHz) {
    const double ratio = frequencyHz / formant.frequencyHz;
    const double width = formant.bandwidthHz / formant.frequencyHz;
    return 1.0 / std::hypot(1.0 - ratio * ratio, ratio * width);
}

double harmonicAmplitude(const Vowel& vowel, int harmonic, double fundamentalHz) {
    double amplitude = 1.0 / std::pow(harmonic, sourceSlope);
    for (const Formant& formant : vowel.formants) {
        amplitude *= resonance(formant, harmonic * fundamentalHz);
    }
    return amplitude;
}

double envelope(double t, double lengthSeconds) {
    const double rise = std::min(1.0, t / attackSeconds);
    const double fall = std::min(1.0, (lengthSeconds + releaseSeconds - t) / releaseSeconds);
    return std::max(0.0, std::min(rise, fall));
}

void singNote(const Vowel& vowel, const NoteEvent& note, const Touch& touch, std::vector<float>& sound) {
    const double pitchHz = 440.0 * std::exp2((note.pitch - 69) / 12.0);
    Touch sung = touch;
    sung.vibratoCents = std::max(touch.vibratoCents, usualVibratoCents);
    std::vector<double> amplitudes;
    for (int harmonic = 1; harmonic * pitchHz < highestHarmonicHz; ++harmonic) {
        amplitudes.push_back(harmonicAmplitude(vowel, harmonic, pitchHz));
    }
    double power = 0.0;
    for (const double amplitude : amplitudes) {
        power += amplitude * amplitude / 2.0;
    }
    const double loudness = std::pow(touch.velocity / 127.0, 2.0) * 0.2 / std::sqrt(power);

    const double lengthSeconds = note.endSeconds - note.startSeconds;
    const auto first = static_cast<std::size_t>(std::lround(note.startSeconds * soundRateHz));
    double phase = 0.0;
    for (std::size_t i = first; i < sound.size(); ++i) {
        const double t = static_cast<double>(i - first) / soundRateHz;
        if (t > lengthSeconds + releaseSeconds) {
            break;
        }
        phase += pitchHz * std::exp2(bendCents(sung, t) / 1200.0) / soundRateHz;
        // sin(n x) from the two before it: 2 cos(x) sin((n - 1) x) - sin((n - 2) x).
        const double twiceCos = 2.0 * std::cos(2.0 * pi * phase);
        double before = 0.0;
        double sine = std::sin(2.0 * pi * phase);
        double sample = 0.0;
        for (const double amplitude : amplitudes) {
            sample += amplitude * sine;
            const double next = twiceCos * sine - before;
            before = sine;
            sine = next;
        }
        sound[i] += static_cast<float>(loudness * envelope(t, lengthSeconds) * sample);
    }
}

std::size_t sampleCount(double seconds) {
    return static_cast<std::size_t>(std::lround(seconds * soundRateHz));
}

void normalise(std::vector<float>& sound) {
    const double level = rootMeanSquare(sound);
    for (float& sample : sound) {
        sample = static_cast<float>(sample / level);
    }
}

}  // namespace

std::vector<float> sing(char vowel, const std::vector<NoteEvent>& notes, const Touch& touch, double seconds) {
    std::vector<float> sound(sampleCount(seconds), 0.0f);
    for (const NoteEvent& note : notes) {
        singNote(vowelNamed(vowel), note, touch, sound);
    }
    return sound;
}

std::vector<float> whiteNoise(double seconds) {
    std::minstd_rand bits(20240229);
    std::vector<float> sound(sampleCount(seconds));
    for (float& sample : sound) {
        // Twelve uniform values make one that is normal enough, the same on every machine.
        double sum = -6.0;
        for (int i = 0; i < 12; ++i) {
            sum += static_cast<double>(bits() - bits.min()) / static_cast<double>(bits.max() - bits.min());
        }
        sample = static_cast<float>(sum);
    }
    normalise(sound);
    return sound;
}

std::vector<float> mainsHum(double seconds) {
    std::vector<float> sound(sampleCount(seconds));
    for (std::size_t i = 0; i < sound.size(); ++i) {
        double sample = 0.0;
        for (int harmonic = 1; harmonic <= 12; ++harmonic) {
            sample += std::sin(2.0 * pi * 50.0 * harmonic * static_cast<double>(i) / soundRateHz) / harmonic;
        }
        sound[i] = static_cast<float>(sample);
    }
    normalise(sound);
    return sound;
}

double rootMeanSquare(const std::vector<float>& sound) {
    double power = 0.0;
    for (const float sample : sound) {
        power += static_cast<double>(sample) * sample;
    }
    return sound.empty() ? 0.0 : std::sqrt(power / static_cast<double>(sound.size()));
}

void mix(std::vector<float>& sound, const std::vector<float>& addition, double factor) {
    for (std::size_t i = 0; i < std::min(sound.size(), addition.size()); ++i) {
        sound[i] += static_cast<float>(factor * addition[i]);
    }
}
