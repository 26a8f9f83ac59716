#include "tools/zanto-song/HeardEvents.h"

#include <algorithm>
#include <cmath>

namespace {

// Times in frames, hundredths of a second.
// Of a note. What seems a clear beginning is heard two frames sooner, and so for longer, than others.
constexpr std::size_t shortestRun = 10;
constexpr std::size_t longestBreak = 2;
constexpr std::size_t longestLoss = 100;  // of a note that sounds on
constexpr std::size_t memory = 30;        // of what sounded before it was lost
constexpr double beginDelay = 5.0;        // by which the ear trails a note's beginning
constexpr std::size_t endDelay = 6;       // and its end
constexpr double farthestStrike = 9.0;    // from where a note seems to begin
constexpr double settling = 12.0;         // of a beginning, in which nothing is struck again
constexpr std::size_t attack = 12;        // in which the level of a struck note rises
constexpr float leastAttackDb = 2.0f;
constexpr std::size_t fallFrames = 8;  // that a fall of the level is measured over, as long as the window
constexpr float letGoDb =
    0.6f * fallFrames;                 // in these: a string that rings on loses less than 60 dB a second
constexpr std::size_t fallReach = 10;  // from a note's end, in which it was let go
constexpr std::size_t longestFade = 500;

class Events {
public:
    Events(const std::vector<ListenedFrame>& frames_, const Beat* beat)
        : frames(frames_), strikes(frames_, beat) {}

    std::vector<HeardEvent> find() const {
        std::vector<HeardEvent> events;
        for (int note = 0; note < Notes::noteCount; ++note) {
            findRuns(note, events);
        }
        std::sort(events.begin(), events.end(),
                  [](const HeardEvent& a, const HeardEvent& b) { return a.start < b.start; });
        return events;
    }

private:
    bool isHeard(int note, std::size_t frame) const { return (frames[frame].notes >> note & 1) != 0; }
    float level(int note, std::size_t frame) const {
        return frames[std::min(frame, frames.size() - 1)].levelsDb.at(static_cast<std::size_t>(note));
    }

    // A note that is not heard for a while sounds on all the same when nothing else has begun.
    bool isOnlyLost(std::size_t end, std::size_t frame) const {
        // A clear beginning is heard before its strike is at its height.
        const std::size_t until = frame + static_cast<std::size_t>(farthestStrike - beginDelay);
        if (frame - end > longestLoss || strikes.anyIn(end - std::min(end, shortestRun), until)) {
            return false;
        }
        unsigned before = 0;
        for (std::size_t at = end - std::min(end, memory); at < end; ++at) {
            before |= frames[at].notes;
        }
        for (int other = 0; other < Notes::noteCount; ++other) {
            if (isHeard(other, frame) && (before >> other & 1u) == 0 && hasRisen(other, frame)) {
                return false;
            }
        }
        return true;
    }

    // A note that the ear has just made out may have sounded before.
    bool hasRisen(int note, std::size_t heard) const {
        while (heard > 0 && isHeard(note, heard - 1)) {
            --heard;
        }
        return level(note, heard) - level(note, heard - std::min(heard, attack)) > leastAttackDb;
    }

    float fallTo(int note, std::size_t frame) const {
        return level(note, frame - std::min(frame, fallFrames)) - level(note, frame);
    }

    // Until when a note that was lost among weak sounds fades on, alone and slowly.
    std::size_t fadesUntil(int note, std::size_t lost) const {
        std::size_t end = lost;
        const std::size_t most = std::min(frames.size(), lost + longestFade);
        const unsigned known = frames[lost - 1].notes;
        while (end < most && fallTo(note, end) < letGoDb && level(note, end) < level(note, end - memory) &&
               (frames[end].notes & ~known) == 0 && !strikes.anyIn(end - Strikes::reach, end)) {
            ++end;
        }
        return end;
    }

    // When a note was let go that the ear lost at `lost`: where its level began to fall steeply. A damped
    // string may be heard for half a second more.
    double endOf(int note, double start, std::size_t lost) const {
        const std::size_t end = lost < memory ? lost : fadesUntil(note, lost);
        const std::size_t earliest =
            static_cast<std::size_t>(std::max(start, 0.0)) + shortestRun + fallFrames;
        std::size_t falling = end;
        while (falling > earliest && falling + fallReach > end && fallTo(note, falling) < letGoDb) {
            --falling;
        }
        if (fallTo(note, falling) < letGoDb) {
            return static_cast<double>(end - endDelay);
        }
        while (falling > earliest && fallTo(note, falling) >= letGoDb) {
            --falling;
        }
        const std::size_t middle = falling - fallFrames / 2;
        return static_cast<double>(middle);
    }

    void findRuns(int note, std::vector<HeardEvent>& events) const {
        for (std::size_t frame = 0; frame < frames.size();) {
            if (!isHeard(note, frame)) {
                ++frame;
                continue;
            }
            const std::size_t begin = frame;
            std::size_t end = frame;
            while (frame < frames.size() && (frame - end <= longestBreak || isOnlyLost(end, frame))) {
                end = isHeard(note, frame) ? frame + 1 : end;
                ++frame;
            }
            if (end - begin >= shortestRun) {
                split(note, begin, end, events);
            }
        }
    }

    // The strike nearest to where a note seems to begin.
    double beginOf(std::size_t heard) const {
        const double seeming = static_cast<double>(heard) - beginDelay;
        double begin = seeming;
        double nearest = farthestStrike;
        for (const std::size_t strike : strikes.frames()) {
            const double distance = std::abs(static_cast<double>(strike) - seeming);
            if (distance < nearest) {
                nearest = distance;
                begin = static_cast<double>(strike);
            }
        }
        return begin;
    }

    bool isAttacked(int note, std::size_t strike) const {
        float least = level(note, strike);
        for (std::size_t at = strike - 4; at <= strike + 4; ++at) {
            least = std::min(least, level(note, at));
        }
        float most = least;
        for (std::size_t at = strike + 2; at <= strike + attack; ++at) {
            most = std::max(most, level(note, at));
        }
        return most - least > leastAttackDb;
    }

    // A run into the notes that were struck in it.
    void split(int note, std::size_t begin, std::size_t end, std::vector<HeardEvent>& events) const {
        double start = beginOf(begin);
        for (const std::size_t strike : strikes.frames()) {
            const auto at = static_cast<double>(strike);
            if (at >= start + settling && strike + shortestRun <= end && isAttacked(note, strike)) {
                events.push_back({note, start, at});
                start = at;
            }
        }
        events.push_back({note, start, endOf(note, start, end)});
    }

    const std::vector<ListenedFrame>& frames;
    const Strikes strikes;
};

}  // namespace

std::vector<HeardEvent> findEvents(const std::vector<ListenedFrame>& frames, const Beat* beat) {
    return Events(frames, beat).find();
}
