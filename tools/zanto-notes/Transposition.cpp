#include "tools/zanto-notes/Transposition.h"

#include <algorithm>
#include <array>
#include <cstddef>

const std::vector<Transposition>& transpositions() {
    static const std::vector<Transposition> known = {
        {"a-clarinet", -3},          {"alto-flute", -5},
        {"alto-recorder", 5},        {"alto-saxophone", -9},
        {"b-flat-clarinet", -2},     {"b-flat-trumpet", -2},
        {"baritone-saxophone", -21}, {"bass-clarinet", -14},
        {"concert-pitch", 0},        {"cornet", -2},
        {"e-flat-clarinet", 3},      {"english-horn", -7},
        {"flugelhorn", -2},          {"horn", -7},
        {"soprano-saxophone", -2},   {"tenor-saxophone", -14},
    };
    return known;
}

std::optional<int> transpositionOf(const std::string& instrument) {
    for (const Transposition& transposition : transpositions()) {
        if (transposition.instrument == instrument) {
            return transposition.semitones;
        }
    }
    return std::nullopt;
}

std::optional<int> parsePitch(const std::string& text) {
    static constexpr std::array<int, 7> semitonesAboveC = {9, 11, 0, 2, 4, 5, 7};  // A to G
    const bool altered = text.size() == 3 && (text[1] == '#' || text[1] == 'b');
    if (text.size() != 2 && !altered) {
        return std::nullopt;
    }
    const char letter = text.front();
    const char octave = text.back();
    if (letter < 'A' || letter > 'G' || octave < '0' || octave > '9') {
        return std::nullopt;
    }
    int pitch = 12 * (octave - '0' + 1) + semitonesAboveC[static_cast<std::size_t>(letter - 'A')];
    if (altered) {
        pitch += text[1] == '#' ? 1 : -1;
    }
    return pitch;
}
