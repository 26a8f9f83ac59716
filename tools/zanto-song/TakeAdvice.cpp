#include "tools/zanto-song/TakeAdvice.h"

#include <algorithm>
#include <cmath>

#include "game/Rules.h"
#include "tools/common/Text.h"

namespace {

using rules::secondsPerSlot;
using Cause = TakenPenalty::Cause;
using Outcome = TakenNote::Outcome;

constexpr std::size_t mostAdvice = 3;
constexpr long longestShift = Take::framesPerSecond / 2;
constexpr long millisecondsPerFrame = 1000 / Take::framesPerSecond;

// What was heard, to be changed.
class Change {
public:
    explicit Change(const Take& take_) : take(take_), frames(take_.frames) {}

    const std::vector<HeardFrame>& get() const { return frames; }

    /// Leaves a note out, or lets it sound.
    void set(const Notes::NoteID& note, double fromSeconds, double toSeconds, bool sounds) {
        for (std::size_t frame = frameAt(fromSeconds); frame < frameAt(toSeconds); ++frame) {
            std::uint8_t& count = frames[frame].counts.at(static_cast<std::size_t>(note));
            count = sounds ? std::max<std::uint8_t>(count, 1) : 0;
        }
    }

    /// Since when a note has been heard at a moment.
    double beginOf(const Notes::NoteID& note, double seconds) const {
        std::size_t frame = frameAt(seconds);
        while (frame > 0 && frames[frame - 1].counts.at(static_cast<std::size_t>(note)) > 0) {
            --frame;
        }
        return take.startSeconds + static_cast<double>(frame) / Take::framesPerSecond;
    }

    void shift(long later) {
        std::vector<HeardFrame> moved(frames.size());
        for (std::size_t frame = 0; frame < frames.size(); ++frame) {
            const long to = static_cast<long>(frame) + later;
            if (to >= 0 && to < static_cast<long>(frames.size())) {
                moved[static_cast<std::size_t>(to)] = frames[frame];
            }
        }
        frames = std::move(moved);
    }

private:
    std::size_t frameAt(double seconds) const {
        const double frame = (seconds - take.startSeconds) * Take::framesPerSecond;
        return static_cast<std::size_t>(
            std::lround(std::clamp(frame, 0.0, static_cast<double>(frames.size()))));
    }

    const Take& take;
    std::vector<HeardFrame> frames;
};

std::string penalties(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " penalty" : " penalties");
}

// A note of the slot where the sound of a penalty belongs, for its end.
double endOf(const Take& take, const TakenPenalty& penalty) {
    for (const TakenNote& note : take.notes) {
        if (note.slot == penalty.causeSlot && note.note == penalty.note) {
            return note.dueSeconds + note.length * secondsPerSlot;
        }
    }
    return penalty.atSeconds;
}

class Adviser {
public:
    Adviser(const Take& take_, const Judge& judge_) : take(take_), judge(judge_) {}

    std::vector<Advice> advise() {
        playAtAnotherTime();
        avoid(Cause::heldOver, "Let go of notes sooner: ");
        avoid(Cause::early, "Wait for the slot to open: ");
        avoid(Cause::notAskedFor, "Leave out what the song does not ask for: ");
        holdLonger();
        playWhatWasNotHeard();
        std::stable_sort(found.begin(), found.end(),
                         [](const Advice& a, const Advice& b) { return a.points > b.points; });
        found.resize(std::min(found.size(), mostAdvice));
        return found;
    }

private:
    void consider(const std::string& what, const Change& change) {
        const double points = judge(change.get()) - take.score;
        if (points > 0.0) {
            found.push_back({what, points});
        }
    }

    void playAtAnotherTime() {
        Advice best{"", 0.0};
        for (long shift = 1; shift <= longestShift; ++shift) {
            for (const long later : {-shift, shift}) {
                Change change(take);
                change.shift(later);
                const double points = judge(change.get()) - take.score;
                if (points > best.points) {
                    best = {"Play everything " + std::to_string(shift * millisecondsPerFrame) + " ms " +
                                (later < 0 ? "sooner" : "later"),
                            points};
                }
            }
        }
        if (best.points > 0.0) {
            found.push_back(best);
        }
    }

    void avoid(Cause cause, const std::string& what) {
        Change change(take);
        std::size_t count = 0;
        for (const TakenPenalty& penalty : take.penalties) {
            if (penalty.cause == cause) {
                const double from = cause == Cause::heldOver
                                        ? endOf(take, penalty)
                                        : change.beginOf(penalty.note, penalty.atSeconds);
                change.set(penalty.note, from, take.slotOpens(penalty.slot + 1), false);
                ++count;
            }
        }
        consider(what + penalties(count), change);
    }

    void holdLonger() {
        Change change(take);
        std::size_t count = 0;
        for (const TakenNote& note : take.notes) {
            if (note.outcome == Outcome::tooShort) {
                change.set(note.note, *note.heardSeconds, note.dueSeconds + note.length * secondsPerSlot,
                           true);
                ++count;
            }
        }
        consider("Hold notes to their end: " + counted(count, "note") + " too short", change);
    }

    void playWhatWasNotHeard() {
        Change change(take);
        std::size_t count = 0;
        for (const TakenNote& note : take.notes) {
            if (note.outcome != Outcome::awarded && note.outcome != Outcome::tooShort) {
                change.set(note.note, note.dueSeconds, note.dueSeconds + note.length * secondsPerSlot, true);
                ++count;
            }
        }
        consider("Play what was not heard: " + counted(count, "note"), change);
    }

    const Take& take;
    const Judge& judge;
    std::vector<Advice> found;
};

double middleOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

std::vector<Advice> adviceFor(const Take& take, const Judge& judge) {
    return Adviser(take, judge).advise();
}

std::optional<Timing> timingOf(const Take& take) {
    std::vector<double> late;
    for (const TakenNote& note : take.notes) {
        if (note.heardSeconds) {
            late.push_back(*note.heardSeconds - note.dueSeconds);
        }
    }
    if (late.empty()) {
        return std::nullopt;
    }
    const double middle = middleOf(late);
    for (double& value : late) {
        value = std::abs(value - middle);
    }
    return Timing{middle, middleOf(late)};
}
