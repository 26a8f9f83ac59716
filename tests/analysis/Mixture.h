#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

/// Half a second each of chords that decay, of noise, of both, at full scale, and of silence, never twice the
/// same. Whole numbers make it, so that its samples are the same everywhere.
class Mixture {
public:
    /// The next `count` samples at 48000 Hz.
    std::vector<float> next(int count) {
        std::vector<float> samples;
        for (int index = 0; index < count; ++index) {
            if (time++ % 24000 == 0) {
                begin();
            }
            std::int64_t sum = noise * (static_cast<std::int64_t>(random() >> 16) - 32768) / 32768;
            for (Voice& voice : voices) {
                voice.phase += voice.step;
                // A triangle: odd overtones, each weaker than the one before.
                const std::int64_t ramp = voice.phase >> 16;
                sum += ((ramp < 32768 ? ramp : 65535 - ramp) - 16384) * voice.level / 16384;
                voice.level -= voice.level * decay >> 24;
            }
            const std::int64_t whole = 1 << 20;
            samples.push_back(static_cast<float>(std::clamp(sum, -whole, whole)) / static_cast<float>(whole));
        }
        return samples;
    }

private:
    struct Voice {
        std::uint32_t phase;
        std::uint32_t step;
        std::int64_t level;
    };

    std::uint32_t random() {
        state = state * 1664525u + 1013904223u;
        return state;
    }

    /// From its highest bits, which repeat least.
    std::uint32_t below(std::uint32_t bound) {
        return static_cast<std::uint32_t>(std::uint64_t{random()} * bound >> 32);
    }

    void begin() {
        constexpr std::int64_t levels[] = {0, 300, 3000, 30000, 100000, 400000};
        noise = levels[below(6)] / 4;
        decay = below(2) * 1000;
        voices.clear();
        for (std::uint32_t left = below(4); left > 0; --left) {
            // 65 to 1045 Hz, of 2^32 a period.
            voices.push_back({random(), 5800000u + below(87700000u), levels[below(6)]});
        }
    }

    std::uint32_t state = 20;
    std::int64_t time = 0;
    std::int64_t noise = 0;
    std::int64_t decay = 0;
    std::vector<Voice> voices;
};
