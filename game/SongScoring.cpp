#include <algorithm>
#include <bitset>
#include <boost/make_shared.hpp>
#include <cmath>
#include <limits>

#include "game/Rules.h"
#include "game/Score.h"
#include "game/ScoreAnnotation.h"
#include "game/Song.h"
#include "scene/Globals.h"

namespace {

// Truncates; what an int cannot hold becomes the nearest int, what is no number the lowest.
int toInt(double value) {
    if (!(value > std::numeric_limits<int>::min())) {
        return std::numeric_limits<int>::min();
    }
    if (value >= std::numeric_limits<int>::max()) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(value);
}

}  // namespace

int Song::slotAt(double t) const {
    return toInt(std::round(slotsPerSecond * t));
}

void Song::updateScore(Score& score, double t, const NoteState& state) {
    const int current = slotAt(t);
    if (current < 0 || static_cast<std::size_t>(current) >= slots.size()) {
        return;
    }
    const auto slot = static_cast<std::size_t>(current);
    std::bitset<Notes::noteCount> expected;

    for (std::size_t i = 0; i < slots[slot].size(); ++i) {
        const NoteMark& mark = slots[slot][i];
        award({slot, i}, mark.length, rules::awardPoints, score, state);
        expected.set(static_cast<std::size_t>(mark.note));
    }
    // Notes of earlier slots earn the award for each slot of their length, notes of this slot earn it once.
    for (int back = std::min(current, rules::lookBackSlots); back > 0; --back) {
        const std::size_t start = slot - static_cast<std::size_t>(back);
        for (std::size_t i = 0; i < slots[start].size(); ++i) {
            const NoteMark& mark = slots[start][i];
            if (mark.length > back) {
                const auto length = static_cast<float>(mark.length);
                award({start, i}, length, rules::awardPoints * length, score, state);
                expected.set(static_cast<std::size_t>(mark.note));
            }
        }
    }

    const auto opened =
        static_cast<float>(rules::slotOpensSeconds(static_cast<double>(static_cast<float>(current))));
    if (!(t - static_cast<double>(opened) > rules::graceFraction * rules::secondsPerSlot)) {
        return;
    }
    for (std::int32_t note = 0; note < Notes::noteCount; ++note) {
        if (static_cast<double>(state.downCount(note)) > rules::wrongHoldSeconds &&
            !expected.test(static_cast<std::size_t>(note))) {
            penalise(slot, note, score);
        }
    }
}

void Song::award(const MarkPlace& place, double length, float points, Score& score, const NoteState& state) {
    NoteMark& mark = slots[place.slot][place.index];
    const auto needed = static_cast<float>(rules::neededSeconds(length));
    if (state.downCount(mark.note) > needed && !mark.hit) {
        mark.hit = true;
        fading.push_back(place);
        give(points, place.slot, getNoteHeight(mark.note), score);
    }
}

void Song::penalise(std::size_t slot, const Notes::NoteID& note, Score& score) {
    std::vector<NoteMark>& marks = slots[slot];
    marks.emplace_back(note, 1);
    marks.back().wrong = true;
    marks.back().hit = true;
    // The number floats over the mark whose index is the wrong note's number, if the slot has that many.
    const auto index = static_cast<std::size_t>(note);
    const NoteMark& place = index < marks.size() ? marks[index] : marks.back();
    give(rules::penaltyPoints, slot, getNoteHeight(place.note), score);
}

void Song::give(float points, std::size_t slot, float height, Score& score) {
    const FFont font = Globals::getInstance().getScoreFont();
    scene.addObject(boost::make_shared<ScoreAnnotation>(static_cast<float>(slot), height, font,
                                                        toInt(static_cast<double>(points))));
    score.addToScore(points);
}

void Song::animate(double dtSeconds) {
    scene.animate(dtSeconds);
}

bool Song::complete(double t) const {
    return slotAt(t) >= static_cast<std::int64_t>(slots.size()) + rules::slotsAfterTheEnd;
}
