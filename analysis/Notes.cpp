#include "analysis/Notes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <istream>
#include <iterator>

#include "analysis/SpectrumRules.h"

namespace {

using rules::toleranceHz;

using Names = std::array<std::string, Notes::noteCount>;

const Names& noteNames() {
    static const Names names{"C", "D", "E", "F", "G", "A", "B"};
    return names;
}

}  // namespace

bool Notes::load(std::istream& in) {
    while (in.good()) {
        std::string name;
        int count = 0;
        if (!(in >> name >> count) || count < 0) {
            break;
        }
        const NoteID id = nameToId(name);
        float frequencyHz = 0.0f;
        for (int i = 0; i < count && in >> frequencyHz; ++i) {
            frequencies[frequencyHz] = id;
        }
    }
    return true;
}

Notes::NoteID Notes::getKey(float frequencyHz) const {
    if (frequencies.empty()) {
        return -1;
    }
    const auto upper = frequencies.upper_bound(frequencyHz);
    const auto lower = upper == frequencies.begin() ? upper : std::prev(upper);
    const float lowerHz = std::abs(lower->first - frequencyHz);
    if (upper == frequencies.end()) {
        return lowerHz < toleranceHz ? lower->second : NoteID(-1);
    }
    const float upperHz = std::abs(upper->first - frequencyHz);
    if (upperHz > lowerHz && lowerHz < toleranceHz) {
        return lower->second;
    }
    return upperHz < toleranceHz ? upper->second : NoteID(-1);
}

Notes::NoteID Notes::nameToId(const std::string& name) {
    const auto& names = noteNames();
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<std::int32_t>(std::distance(names.begin(), found));
}

std::string Notes::idToName(const NoteID& id) {
    const auto& names = noteNames();
    const bool named = id >= 0 && id < noteCount;
    return named ? names[static_cast<std::size_t>(id)] : std::string();
}

Notes::NoteID Notes::ofSemitone(int semitones) {
    static constexpr std::array<std::int32_t, 12> naturals = {0, -1, 1, -1, 2, 3, -1, 4, -1, 5, -1, 6};
    return naturals.at(static_cast<std::size_t>((semitones % 12 + 12) % 12));
}
