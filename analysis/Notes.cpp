#include "analysis/Notes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <istream>
#include <iterator>

namespace {

constexpr float toleranceHz = 5.0f;

std::array<std::string, 7> const& noteNames() {
    static std::array<std::string, 7> const names{"C", "D", "E", "F", "G", "A", "B"};
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
        NoteID const id = nameToId(name);
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
    auto const upper = frequencies.upper_bound(frequencyHz);
    auto const lower = upper == frequencies.begin() ? upper : std::prev(upper);
    float const lowerHz = std::abs(lower->first - frequencyHz);
    if (upper == frequencies.end()) {
        return lowerHz < toleranceHz ? lower->second : NoteID(-1);
    }
    float const upperHz = std::abs(upper->first - frequencyHz);
    if (upperHz > lowerHz && lowerHz < toleranceHz) {
        return lower->second;
    }
    return upperHz < toleranceHz ? upper->second : NoteID(-1);
}

Notes::NoteID Notes::nameToId(std::string const& name) {
    auto const& names = noteNames();
    auto const found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<std::int32_t>(std::distance(names.begin(), found));
}

std::string Notes::idToName(NoteID const& id) {
    auto const& names = noteNames();
    bool const named = id >= 0 && id < static_cast<std::int32_t>(names.size());
    return named ? names[static_cast<std::size_t>(id)] : std::string();
}
