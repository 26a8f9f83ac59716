#include "tools/zanto-song/Arrange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "game/Rules.h"
#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/loadSong.h"

namespace {

using rules::secondsPerSlot;
using rules::slotsPerBar;

// Whole notes down to 32nds, with the dotted ones and the triplets. Quarter notes.
constexpr std::array<double, 12> slotChoices = {4.0,       3.0, 2.0,       1.5,  1.0,       0.75,
                                                2.0 / 3.0, 0.5, 1.0 / 3.0, 0.25, 1.0 / 6.0, 0.125};
// Players and programs begin notes a little beside the beat.
constexpr double toleranceShare = 0.1;
constexpr double leastTolerance = 0.025;  // quarter notes
constexpr double mostToleranceShare = 0.24;

constexpr std::array<int, 12> naturalOf = {0, -1, 1, -1, 2, 3, -1, 4, -1, 5, -1, 6};

Notes::NoteID naturalAt(int pitch) {
    return naturalOf.at(static_cast<std::size_t>(((pitch % 12) + 12) % 12));
}

std::string pitchName(int pitch) {
    constexpr std::array<const char*, 12> names = {"C",  "C#", "D",  "D#", "E",  "F",
                                                   "F#", "G",  "G#", "A",  "A#", "B"};
    const int index = ((pitch % 12) + 12) % 12;
    return names.at(static_cast<std::size_t>(index)) + std::to_string((pitch - index) / 12 - 1);
}

double nearestSlot(double quarters, double slot) {
    return std::round(quarters / slot);
}

bool fits(double quarters, double slot) {
    const double tolerance =
        std::min(std::max(toleranceShare * slot, leastTolerance), mostToleranceShare * slot);
    return std::abs(quarters - nearestSlot(quarters, slot) * slot) <= tolerance;
}

bool fitsAll(const SheetVoice& voice, double slot, bool withLengths) {
    return std::all_of(voice.notes.begin(), voice.notes.end(), [&](const SheetNote& note) {
        return fits(note.start, slot) && (!withLengths || fits(note.start + note.length, slot));
    });
}

// Of the slots that fit, the one whose tempo is nearest to the music's; 0 when none fits.
double chooseSlot(const SheetVoice& voice, const SheetMusic& sheet) {
    for (const bool withLengths : {true, false}) {
        double chosen = 0.0;
        double least = std::numeric_limits<double>::infinity();
        for (const double slot : slotChoices) {
            const double seconds = slot * 60.0 / sheet.quartersPerMinute;
            const double distance = std::abs(std::log2(seconds / secondsPerSlot));
            if (distance < least - 1e-9 && fitsAll(voice, slot, withLengths)) {
                chosen = slot;
                least = distance;
            }
        }
        // Lengths as a player held them need not fit; those on paper must.
        if (chosen > 0.0 || sheet.lengthsAreExact) {
            return chosen;
        }
    }
    return 0.0;
}

std::ptrdiff_t naturalsAfter(const SheetVoice& voice, int semitones) {
    return std::count_if(voice.notes.begin(), voice.notes.end(),
                         [&](const SheetNote& note) { return naturalAt(note.pitch + semitones) != -1; });
}

// The least shift after which most notes are naturals; of two the one upwards.
int chooseSemitones(const SheetVoice& voice) {
    int chosen = 0;
    for (const int semitones : {0, 1, -1, 2, -2, 3, -3, 4, -4, 5, -5, 6}) {
        if (naturalsAfter(voice, semitones) > naturalsAfter(voice, chosen)) {
            chosen = semitones;
        }
    }
    return chosen;
}

class Arranger {
public:
    Arranger(const SheetVoice& voice_, double slotQuarters, int semitones) : voice(voice_) {
        result.slotQuarters = slotQuarters;
        result.semitones = semitones;
    }

    Arrangement run() {
        dropLeadingBars();
        for (const SheetNote& note : voice.notes) {
            place(note);
        }
        endWithLastNote(result.slots);
        return std::move(result);
    }

private:
    // The slot in which the natural that sounds last ends, and where it stands.
    struct Last {
        std::size_t end = 0;
        std::size_t slot = 0;
        std::size_t index = 0;
    };

    void dropLeadingBars();
    void place(const SheetNote& note);
    void lose(const SheetNote& note, const std::string& what) {
        result.lost.push_back(note.place + ": " + what);
    }

    const SheetVoice& voice;
    Arrangement result{};
    std::size_t dropped = 0;  // slots
    std::array<Last, 7> last{};
};

void Arranger::dropLeadingBars() {
    const double first = nearestSlot(voice.notes.front().start, result.slotQuarters);
    const std::size_t bars = static_cast<std::size_t>(std::max(first, 0.0)) / slotsPerBar;
    dropped = bars * slotsPerBar;
    if (bars > 0) {
        result.lost.push_back(counted(dropped, "slot") + " of rest at the beginning");
    }
}

void Arranger::place(const SheetNote& note) {
    const std::string name = pitchName(note.pitch);
    const Notes::NoteID natural = naturalAt(note.pitch + result.semitones);
    if (natural == -1) {
        lose(note, name + " is no natural here and became a rest");
        return;
    }
    const double slotQuarters = result.slotQuarters;
    const double start = nearestSlot(note.start, slotQuarters);
    const double stop = std::max(nearestSlot(note.start + note.length, slotQuarters), start + 1.0);
    const auto slot = static_cast<std::size_t>(std::max(start, 0.0)) - dropped;
    int length = static_cast<int>(std::min(stop - start, static_cast<double>(mostSlots)));
    Last& before = last.at(static_cast<std::size_t>(natural));
    if (before.end > slot) {
        WrittenNote& earlier = result.slots[before.slot][before.index];
        if (before.slot == slot) {
            lose(note, name + " is the same note in another octave, or the same note again within a slot");
            return;
        }
        earlier.length = static_cast<int>(slot - before.slot);
        lose(note, name + " begins while the same note sounds, which was cut short for it");
    }
    if (!fits(note.start, slotQuarters)) {
        lose(note,
             name + " was moved by " + fixed(std::abs(note.start / slotQuarters - start), 2) + " slots");
    }
    if (length > longestLength) {
        lose(note, name + " sounds for " + std::to_string(length) + " slots and was written with " +
                       std::to_string(longestLength) + ", the longest that can be judged");
        length = longestLength;
    }
    if (result.slots.size() <= slot) {
        result.slots.resize(slot + 1);
    }
    result.slots[slot].push_back({natural, length});
    before = {slot + static_cast<std::size_t>(length), slot, result.slots[slot].size() - 1};
    ++result.kept;
}

}  // namespace

Arrangement arrange(const SheetVoice& voice, const SheetMusic& sheet, const ArrangeWishes& wishes) {
    if (voice.notes.empty()) {
        throw Failure("there is no note in it");
    }
    const double slot = wishes.slotQuarters.value_or(chooseSlot(voice, sheet));
    if (slot <= 0.0) {
        throw Failure(
            "its rhythm fits no even slots; if you know better, say what note a slot is, as in --slot 1/8");
    }
    for (const SheetNote& note : voice.notes) {
        if (!(note.start / slot < static_cast<double>(mostSlots))) {
            throw Failure(note.place + " would come after more than " + std::to_string(mostSlots) +
                          " slots, which is 11 hours");
        }
    }
    const int semitones = wishes.semitones.value_or(chooseSemitones(voice));
    Arrangement arrangement = Arranger(voice, slot, semitones).run();
    if (2 * arrangement.kept < voice.notes.size()) {
        throw Failure("only " + std::to_string(arrangement.kept) + " of its " +
                      counted(voice.notes.size(), "note") +
                      " would find a place; what is left would not be the tune");
    }
    return arrangement;
}
