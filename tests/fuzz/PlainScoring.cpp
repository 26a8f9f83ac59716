#include "tests/fuzz/PlainScoring.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

namespace {

constexpr double slotsPerSecond = 2.0;

}  // namespace

void PlainScoring::update(double t, NoteState const& state) {
    double const rounded = std::round(slotsPerSecond * t);
    if (!(rounded >= 0.0 && rounded < static_cast<double>(slots.size()))) {
        return;
    }
    int const slot = static_cast<int>(rounded);
    auto const here = static_cast<std::size_t>(slot);
    float const dur = static_cast<float>(1.0 / slotsPerSecond);
    float const slotStart = static_cast<float>(static_cast<double>(static_cast<float>(slot) * dur) +
                                               -0.5 * static_cast<double>(dur));
    std::set<int> seen;
    for (Song::NoteMark& mark : slots[here]) {
        float const threshold = static_cast<float>(static_cast<double>(dur / -2.0f) +
                                                   static_cast<double>(dur) * 0.95 * mark.length);
        if (state.downCount(mark.note) > threshold && !mark.hit) {
            mark.hit = true;
            score += 100.0f;
        }
        seen.insert(mark.note);
    }
    for (int j = std::max(slot - 4, 0); j < slot; ++j) {
        for (Song::NoteMark& mark : slots[static_cast<std::size_t>(j)]) {
            auto const length = static_cast<float>(mark.length);
            float const threshold =
                static_cast<float>(static_cast<double>(dur / -2.0f) +
                                   static_cast<double>(dur) * 0.95 * static_cast<double>(length));
            if (std::int64_t{mark.length} + j <= slot) {
                continue;
            }
            if (state.downCount(mark.note) > threshold && !mark.hit) {
                mark.hit = true;
                score += 100.0f * length;
            }
            seen.insert(mark.note);
        }
    }
    for (int note = 0; note <= 6; ++note) {
        if (static_cast<double>(state.downCount(note)) > 0.35 &&
            t - static_cast<double>(slotStart) > 0.2 * static_cast<double>(dur) && seen.count(note) == 0) {
            Song::NoteMark penalty(note, 1);
            penalty.wrong = true;
            penalty.hit = true;
            slots[here].push_back(penalty);
            score += -20.0f;
        }
    }
}

bool PlainScoring::complete(double t) const {
    return std::round(slotsPerSecond * t) >= static_cast<double>(slots.size()) + 4.0;
}
