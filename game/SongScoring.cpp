#include <algorithm>
#include <bitset>
#include <boost/make_shared.hpp>
#include <cmath>
#include <limits>

#include "game/Score.h"
#include "game/ScoreAnnotation.h"
#include "game/Song.h"
#include "scene/Globals.h"

namespace {

constexpr int noteCount = 7;

constexpr double windowOpening = -0.5;  // slots, from the slot's centre
constexpr double holdFraction = 0.95;   // of the note's length
constexpr int lookBackSlots = 4;
constexpr float awardPoints = 100.0f;

constexpr double wrongHoldSeconds = 0.35;
constexpr double graceFraction = 0.2;  // of a slot, from its opening
constexpr float penaltyPoints = -20.0f;

constexpr int slotsAfterTheEnd = 4;

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

// The seconds for which a note of `length` slots must be held: 95 % of it, less the half slot that its window
// opens early.
float holdThreshold(float slotSeconds, double length) {
    return static_cast<float>(static_cast<double>(slotSeconds / -2.0f) +
                              static_cast<double>(slotSeconds) * holdFraction * length);
}

}  // namespace

int Song::slotAt(double t) const {
    return toInt(std::round(slotsPerSecond * t));
}

void Song::updateScore(Score& score, double t, NoteState const& state) {
    int const slot = slotAt(t);
    if (slot < 0 || static_cast<std::size_t>(slot) >= slots.size()) {
        return;
    }
    std::bitset<noteCount> expected;

    for (NoteMark& mark : slots[static_cast<std::size_t>(slot)]) {
        award(mark, slot, mark.length, awardPoints, score, state);
        expected.set(static_cast<std::size_t>(mark.note));
    }
    for (int earlier = std::max(slot - lookBackSlots, 0); earlier < slot; ++earlier) {
        for (NoteMark& mark : slots[static_cast<std::size_t>(earlier)]) {
            if (static_cast<std::int64_t>(mark.length) + earlier > slot) {
                float const length = static_cast<float>(mark.length);
                award(mark, earlier, length, awardPoints * length, score, state);
                expected.set(static_cast<std::size_t>(mark.note));
            }
        }
    }

    float const slotSeconds = static_cast<float>(1.0 / slotsPerSecond);
    float const slotStart = static_cast<float>(static_cast<double>(static_cast<float>(slot) * slotSeconds) +
                                               windowOpening * static_cast<double>(slotSeconds));
    bool const graceIsOver = t - static_cast<double>(slotStart) > graceFraction * slotSeconds;
    for (int note = 0; note < noteCount; ++note) {
        if (state.downCount(note) > wrongHoldSeconds && graceIsOver &&
            !expected.test(static_cast<std::size_t>(note))) {
            penalise(slot, note, score);
        }
    }
}

void Song::award(NoteMark& mark, int slot, double length, float points, Score& score,
                 NoteState const& state) {
    float const slotSeconds = static_cast<float>(1.0 / slotsPerSecond);
    if (state.downCount(mark.note) > holdThreshold(slotSeconds, length) && !mark.hit) {
        mark.hit = true;
        give(points, slot, getNoteHeight(mark.note), score);
    }
}

void Song::penalise(int slot, Notes::NoteID const& note, Score& score) {
    std::vector<NoteMark>& marks = slots[static_cast<std::size_t>(slot)];
    marks.emplace_back(note, 1);
    marks.back().wrong = true;
    marks.back().hit = true;
    // The number floats over the slot's mark with the wrong note's own number, if there are that many.
    auto const index = static_cast<std::size_t>(note);
    NoteMark const& place = index < marks.size() ? marks[index] : marks.back();
    give(penaltyPoints, slot, getNoteHeight(place.note), score);
}

void Song::give(float points, int slot, float height, Score& score) {
    FFont const font = Globals::getInstance().getScoreFont();
    scene.addObject(
        boost::make_shared<ScoreAnnotation>(static_cast<float>(slot), height, font, toInt(points)));
    score.addToScore(points);
}

void Song::animate(double dtSeconds) {
    scene.animate(dtSeconds);
}

bool Song::complete(double t) const {
    return slotAt(t) >= static_cast<std::int64_t>(slots.size()) + slotsAfterTheEnd;
}
