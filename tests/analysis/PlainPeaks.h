#pragma once

#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "analysis/Notes.h"

/// The rules of the plain ear for a spectrum, written down step by step.
namespace plain {

struct Heard {
    std::vector<std::pair<float, float>> peaks;  ///< level in dB, frequency in Hz
    std::vector<Notes::NoteID> notes;
    std::string line;  ///< what is printed
};

inline float nearest(double value) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr double largest = std::numeric_limits<float>::max();
    if (value > largest) {
        return infinity;
    }
    return value < -largest ? -infinity : static_cast<float>(value);
}

/// levelsDb[2048]
inline Heard hear(const std::vector<double>& levelsDb, double thresholdDb, const Notes& table) {
    Heard heard;
    std::pair<float, float> loudest(-10000.0f, 0.0f);
    for (std::size_t i = 10; i < 2047; ++i) {
        if (!(levelsDb[i] > thresholdDb && levelsDb[i] > levelsDb[i - 1] && levelsDb[i] > levelsDb[i + 1])) {
            continue;
        }
        heard.peaks.emplace_back(nearest(levelsDb[i]), static_cast<float>(i) * 11.71875f);
        if (levelsDb[i] > static_cast<double>(loudest.first)) {
            loudest = heard.peaks.back();
        }
        if (heard.peaks.back().second > 1000.0f) {
            break;
        }
    }
    char text[64];
    for (const auto& [level, hz] : heard.peaks) {
        if (100.0f + level > 0.95 * static_cast<double>(100.0f + loudest.first)) {
            std::snprintf(text, sizeof text, "%3.0f %3.1f  ", static_cast<double>(hz),
                          static_cast<double>(level));
            heard.line += text;
            if (table.getKey(hz) != -1) {
                heard.notes.push_back(table.getKey(hz));
            }
        }
    }
    if (loudest.second > 0.0f) {
        std::snprintf(text, sizeof text, "%f\n", static_cast<double>(loudest.second));
        heard.line += text;
    }
    return heard;
}

}  // namespace plain
