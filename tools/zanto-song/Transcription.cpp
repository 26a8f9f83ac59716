#include "tools/zanto-song/Transcription.h"

#include <algorithm>
#include <cmath>

#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/HeardEvents.h"
#include "tools/zanto-song/songText.h"

namespace {

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

Beat fit(const std::vector<HeardEvent>& events, double period) {
    const auto misfitOf = [&](double time) { return std::min(awayFromWhole(time / period), mostMisfit); };
    Beat best{period, 0.0, 1e9};
    for (int part = 0; part < phaseParts; ++part) {
        const double phase = period * part / phaseParts;
        double misfit = 0.0;
        for (const HeardEvent& event : events) {
            misfit += misfitOf(event.start - phase);
        }
        if (misfit < best.misfit) {
            best = {period, phase, misfit};
        }
    }
    double before = events.front().start;
    std::vector<long> steps;
    for (const HeardEvent& event : events) {
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

Beat findBeat(const std::vector<HeardEvent>& events) {
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

HeardNote noteOf(const HeardEvent& event, const Beat& beat, double first) {
    const double slot = (event.start - beat.phase) / beat.period - first;
    const double length = (event.end - event.start) / beat.period;
    HeardNote note{};
    note.note = event.note;
    note.slot = static_cast<std::size_t>(std::max(std::lround(slot), 0L));
    note.length = static_cast<int>(std::clamp(std::lround(length), 1L, static_cast<long>(longestLength)));
    note.startSeconds = event.start / listenedFramesPerSecond;
    note.endSeconds = event.end / listenedFramesPerSecond;
    note.isSureOfStart = awayFromWhole(slot) < sureStart;
    note.isSureOfLength = awayFromWhole(length) < sureLength && length < longestLength + 0.5;
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
    std::vector<HeardEvent> events = findEvents(frames);
    if (events.size() < fewestNotes) {
        throw Failure("it is no melody: " + counted(events.size(), "note") + " heard in it");
    }
    const Beat beat = tempo ? fit(events, framesPerMinute / *tempo) : findBeat(events);
    events = findEvents(frames, &beat);
    Transcription written{};
    written.slotSeconds = beat.period / listenedFramesPerSecond;
    const double first = std::round((events.front().start - beat.phase) / beat.period);
    written.firstSlotSeconds = (beat.phase + first * beat.period) / listenedFramesPerSecond;
    for (const HeardEvent& event : events) {
        const HeardNote note = noteOf(event, beat, first);
        written.unevenness +=
            awayFromWhole((event.start - beat.phase) / beat.period) / static_cast<double>(events.size());
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
