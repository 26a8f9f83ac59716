#include "tools/zanto-song/Transcription.h"

#include <algorithm>
#include <cmath>

#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/songText.h"

namespace {

// Times in frames, hundredths of a second.
constexpr std::size_t shortestRun = 8;  // of a note
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

// A strike is a peak of the spectrum's rise, which is a share of the sound. Wind and plucked strings show in
// it; a bow shows more in the noise of weak lines.
constexpr std::size_t reach = 6;  // of a peak to both sides, in frames
constexpr float leastRise = 0.12f;
constexpr float softRise = 0.2f;
constexpr float strongRise = 0.33f;
constexpr float certainRise = 0.55f;
constexpr float strongScratchDb = 6.3f;
constexpr float usualRise = 0.3f;
constexpr float usualScratchDb = 6.0f;
constexpr double onBeat = 0.12;           // slots
constexpr std::size_t tremoloReach = 70;  // frames
constexpr float aboveTremolo = 1.1f;

constexpr int phaseParts = 48;        // of a slot, that the beat is tried at
constexpr double mostMisfit = 0.25;   // slots, that one note counts
constexpr double lengthWeight = 0.1;  // of a misfit at an end; players let go before the beat
constexpr double rareStep = 0.06;
constexpr double oddStep = 0.1;
constexpr double rareMetre = 0.5;  // slots of misfit: two notes off the beat
constexpr double tempoStep = 0.1;
constexpr double tempoMargin = 2.0;

constexpr std::size_t fewestNotes = 4;
constexpr double mostUnevenness = 0.12;  // slots; chance gives 0.25
constexpr double sureStart = 0.3;        // slots from the nearest one
constexpr double sureLength = 0.35;

struct Event {
    int note;
    double start;  // frames
    double end;
};

struct Beat {
    double period;  // frames
    double phase;
    double misfit;
};

double away(double value) {
    return std::abs(value - std::round(value));
}

class Events {
public:
    // Once the beat is known, what is struck again is struck on it.
    explicit Events(const std::vector<ListenedFrame>& frames_, const Beat* beat_ = nullptr)
        : frames(frames_), beat(beat_) {
        findStrikes();
    }

    std::vector<Event> find() const {
        std::vector<Event> events;
        for (int note = 0; note < Notes::noteCount; ++note) {
            findRuns(note, events);
        }
        std::sort(events.begin(), events.end(),
                  [](const Event& a, const Event& b) { return a.start < b.start; });
        return events;
    }

private:
    bool isHeard(int note, std::size_t frame) const { return (frames[frame].notes >> note & 1) != 0; }
    float level(int note, std::size_t frame) const {
        return frames[std::min(frame, frames.size() - 1)].levelsDb.at(static_cast<std::size_t>(note));
    }

    // The moments at which the sound rises most.
    void findStrikes() {
        for (std::size_t frame = reach; frame + reach < frames.size(); ++frame) {
            if (isPeak(frame) && isStrike(frame)) {
                strikes.push_back(frame);
            }
        }
    }

    bool isStrike(std::size_t frame) const {
        const float rise = frames[frame].rise;
        if (beat == nullptr) {
            return rise > strongRise || scratchAround(frame) > strongScratchDb;
        }
        if (rise > certainRise) {
            return true;
        }
        if (!isOnBeat(frame) || rise < softRise) {
            return false;
        }
        // A tremolo's strokes lie off the beat as well.
        const std::size_t begin = frame - std::min(frame, tremoloReach);
        const std::size_t end = std::min(frame + tremoloReach, frames.size() - reach);
        for (std::size_t at = std::max(begin, reach); at < end; ++at) {
            if (!isOnBeat(at) && isPeak(at) && strengthAt(at) * aboveTremolo > strengthAt(frame)) {
                return false;
            }
        }
        return true;
    }

    bool isOnBeat(std::size_t frame) const {
        return away((static_cast<double>(frame) - beat->phase) / beat->period) < onBeat;
    }

    float strengthAt(std::size_t frame) const {
        return frames[frame].rise / usualRise + scratchAround(frame) / usualScratchDb;
    }

    bool isPeak(std::size_t frame) const {
        const float rise = frames[frame].rise;
        bool is = rise > leastRise;
        for (std::size_t at = frame - reach; at <= frame + reach && is; ++at) {
            is = frames[at].rise < rise || (frames[at].rise == rise && at >= frame);
        }
        return is;
    }

    float scratchAround(std::size_t frame) const {
        float most = 0.0f;
        for (std::size_t at = frame - 3; at <= frame + 3; ++at) {
            most = std::max(most, frames[at].scratchDb);
        }
        return most;
    }

    bool isStruckIn(std::size_t from, std::size_t to) const {
        const auto strike = std::lower_bound(strikes.begin(), strikes.end(), from);
        return strike != strikes.end() && *strike <= to;
    }

    // A note that is not heard for a while sounds on all the same when nothing else has begun.
    bool isOnlyLost(std::size_t end, std::size_t frame) const {
        if (frame - end > longestLoss || isStruckIn(end - std::min(end, shortestRun), frame)) {
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
               (frames[end].notes & ~known) == 0 && !isStruckIn(end - reach, end)) {
            ++end;
        }
        return end;
    }

    // When a note was let go that the ear lost at `lost`: where its level began to fall steeply. A damped
    // string may be heard for half a second more.
    double endOf(int note, double start, std::size_t lost) const {
        const std::size_t end = lost < memory ? lost : fadesUntil(note, lost);
        const std::size_t earliest = static_cast<std::size_t>(start) + shortestRun + fallFrames;
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
        return static_cast<double>(falling - fallFrames / 2);
    }

    void findRuns(int note, std::vector<Event>& events) const {
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
        for (const std::size_t strike : strikes) {
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
    void split(int note, std::size_t begin, std::size_t end, std::vector<Event>& events) const {
        double start = beginOf(begin);
        for (const std::size_t strike : strikes) {
            const auto at = static_cast<double>(strike);
            if (at >= start + settling && strike + shortestRun <= end && isAttacked(note, strike)) {
                events.push_back({note, start, at});
                start = at;
            }
        }
        events.push_back({note, start, endOf(note, start, end)});
    }

    const std::vector<ListenedFrame>& frames;
    const Beat* beat;
    std::vector<std::size_t> strikes;
};

// How unusual the steps from one beginning to the next are: music goes in twos and fours, or all of it in
// threes.
double oddness(const std::vector<long>& steps) {
    double inTwos = 0.0;
    double inThrees = rareMetre;
    for (const long slots : steps) {
        const bool isShort = slots <= 2;
        const bool isThrees = slots == 3 || slots == 6;
        inTwos += isShort || slots == 4 || slots == 8 ? 0.0 : (isThrees ? rareStep : oddStep);
        inThrees += isShort || isThrees || slots == 12 ? 0.0 : oddStep;
    }
    return std::min(inTwos, inThrees);
}

Beat fit(const std::vector<Event>& events, double period) {
    const auto misfitOf = [&](double time) { return std::min(away(time / period), mostMisfit); };
    Beat best{period, 0.0, 1e9};
    for (int part = 0; part < phaseParts; ++part) {
        const double phase = period * part / phaseParts;
        double misfit = 0.0;
        for (const Event& event : events) {
            misfit += misfitOf(event.start - phase);
        }
        if (misfit < best.misfit) {
            best = {period, phase, misfit};
        }
    }
    double before = events.front().start;
    std::vector<long> steps;
    for (const Event& event : events) {
        best.misfit += lengthWeight * misfitOf(event.end - event.start);
        const long slots = std::lround((event.start - before) / period);
        if (slots > 0) {
            steps.push_back(slots);
            before = event.start;
        }
    }
    best.misfit += oddness(steps);
    return best;
}

constexpr double framesPerMinute = 60.0 * listenedFramesPerSecond;

Beat findBeat(const std::vector<Event>& events) {
    Beat best{0.0, 0.0, 1e9};
    const int steps =
        static_cast<int>(std::lround((fastestTempo - slowestTempo + 2.0 * tempoMargin) / tempoStep));
    for (int step = 0; step <= steps; ++step) {
        const double tempo = slowestTempo - tempoMargin + step * tempoStep;
        const Beat beat = fit(events, framesPerMinute / tempo);
        if (beat.misfit < best.misfit) {
            best = beat;
        }
    }
    return best;
}

HeardNote noteOf(const Event& event, const Beat& beat, double first) {
    const double slot = (event.start - beat.phase) / beat.period - first;
    const double length = (event.end - event.start) / beat.period;
    HeardNote note{};
    note.note = event.note;
    note.slot = static_cast<std::size_t>(std::max(std::lround(slot), 0L));
    note.length = static_cast<int>(std::clamp(std::lround(length), 1L, static_cast<long>(longestLength)));
    note.startSeconds = event.start / listenedFramesPerSecond;
    note.endSeconds = event.end / listenedFramesPerSecond;
    note.isSureOfStart = away(slot) < sureStart;
    note.isSureOfLength = away(length) < sureLength && length < longestLength + 0.5;
    return note;
}

// A note ends where it is struck again, and is written once in a slot.
void place(const HeardNote& note, std::vector<HeardNote>& notes) {
    const auto before = std::find_if(notes.rbegin(), notes.rend(),
                                     [&](const HeardNote& other) { return other.note == note.note; });
    if (before == notes.rend() || before->slot < note.slot) {
        if (before != notes.rend()) {
            before->length = std::min(before->length, static_cast<int>(note.slot - before->slot));
        }
        notes.push_back(note);
        return;
    }
    before->length = std::max(before->length, note.length);
    before->endSeconds = note.endSeconds;
    before->isSureOfLength = false;
}

}  // namespace

Transcription transcribe(const std::vector<ListenedFrame>& frames, const std::optional<double>& tempo) {
    std::vector<Event> events = Events(frames).find();
    if (events.size() < fewestNotes) {
        throw Failure("it is no melody: " + counted(events.size(), "note") + " heard in it");
    }
    const Beat beat = tempo ? fit(events, framesPerMinute / *tempo) : findBeat(events);
    events = Events(frames, &beat).find();
    Transcription written{};
    written.slotSeconds = beat.period / listenedFramesPerSecond;
    const double first = std::round((events.front().start - beat.phase) / beat.period);
    written.firstSlotSeconds = (beat.phase + first * beat.period) / listenedFramesPerSecond;
    for (const Event& event : events) {
        const HeardNote note = noteOf(event, beat, first);
        written.unevenness +=
            away((event.start - beat.phase) / beat.period) / static_cast<double>(events.size());
        place(note, written.notes);
    }
    if (written.unevenness > mostUnevenness) {
        throw Failure(std::string("it is no melody: its notes keep to no beat") +
                      (tempo ? " of that tempo" : ""));
    }
    std::stable_sort(written.notes.begin(), written.notes.end(),
                     [](const HeardNote& a, const HeardNote& b) { return a.slot < b.slot; });
    return written;
}

std::string songOf(const Transcription& transcription) {
    WrittenSlots slots;
    for (const HeardNote& note : transcription.notes) {
        slots.resize(std::max(slots.size(), note.slot + 1));
        slots[note.slot].push_back({note.note, note.length});
    }
    endWithLastNote(slots);
    return songText(slots);
}
