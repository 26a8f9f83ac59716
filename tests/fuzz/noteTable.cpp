// Any bytes as a note table: Notes::load and getKey against a plain list that is searched from end to end.

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <sstream>
#include <vector>

#include "analysis/Notes.h"
#include "tests/fuzz/Input.h"

namespace {

struct Entry {
    float frequencyHz;
    int note;
};

std::vector<Entry> plainTable(const std::string& text) {
    std::istringstream in(text);
    std::vector<Entry> table;
    std::string name;
    int count = 0;
    while (in >> name && in >> count && count >= 0) {
        float frequencyHz = 0.0f;
        for (int i = 0; i < count && in >> frequencyHz; ++i) {
            table.push_back({frequencyHz, Notes::nameToId(name)});
        }
    }
    return table;
}

int plainKey(const std::vector<Entry>& table, float frequencyHz) {
    std::optional<Entry> upper;
    std::optional<Entry> lower;
    // Of equal frequencies the later one counts.
    for (const Entry& entry : table) {
        if (entry.frequencyHz > frequencyHz && (!upper || entry.frequencyHz <= upper->frequencyHz)) {
            upper = entry;
        }
        if (!(entry.frequencyHz > frequencyHz) && (!lower || entry.frequencyHz >= lower->frequencyHz)) {
            lower = entry;
        }
    }
    const float none = std::numeric_limits<float>::infinity();
    const float toUpper = upper ? std::abs(upper->frequencyHz - frequencyHz) : none;
    const float toLower = lower ? std::abs(lower->frequencyHz - frequencyHz) : none;
    if (toUpper > toLower && toLower < 5.0f) {
        return lower->note;
    }
    return toUpper < 5.0f ? upper->note : -1;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    float asked[4];
    for (float& frequencyHz : asked) {
        frequencyHz = static_cast<float>(input.raw<std::int16_t>()) / 16.0f;
    }
    const auto anything = input.raw<float>();
    const std::string text = input.text(size);

    Notes notes;
    std::istringstream in(text);
    require(notes.load(in), "loading always succeeds");
    const std::vector<Entry> table = plainTable(text);
    for (const float frequencyHz : asked) {
        require(notes.getKey(frequencyHz) == plainKey(table, frequencyHz), "the nearest note is found");
    }
    constexpr std::size_t mostAsked = 12;  // each is a walk through the whole list
    for (std::size_t i = 0; i < std::min(table.size(), mostAsked); ++i) {
        const Entry& entry = table[table.size() - 1 - i];
        require(notes.getKey(entry.frequencyHz) == plainKey(table, entry.frequencyHz), "an entry is found");
    }
    if (std::isfinite(anything)) {
        require(notes.getKey(anything) == plainKey(table, anything), "any number may be asked for");
    }
    const Notes::NoteID key = notes.getKey(std::numeric_limits<float>::quiet_NaN());
    require(key == -1, "what is no number is no note");
    std::istringstream again(text);
    notes.load(again);
    require(notes.getKey(asked[0]) == plainKey(table, asked[0]), "loading twice is loading once");
    return 0;
}
