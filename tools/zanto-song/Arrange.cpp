#include "tools/zanto-song/Arrange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "game/Rules.h"
#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SlotChoice.h"
#include "tools/zanto-song/loadSong.h"

namespace {

using rules::slotsPerBar;

constexpr double nearly = 1e-6;  // quarter notes

std::ptrdiff_t naturalsAfter(const SheetVoice& voice, int semitones) {
    return std::count_if(voice.notes.begin(), voice.notes.end(), [&](const SheetNote& note) {
        return Notes::ofSemitone(note.pitch + semitones) != -1;
    });
}

// The smallest shift after which most notes are naturals; of two equal ones, the one upwards.
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
    Arranger(const SheetVoice& voice_, double slotQuarters, int semitones, bool lengthsAreExact_)
        : voice(voice_), begins(slotsOfNotes(voice_, slotQuarters)), lengthsAreExact(lengthsAreExact_) {
        result.slotQuarters = slotQuarters;
        result.semitones = semitones;
    }

    Arrangement run() {
        dropLeadingBars();
        for (std::size_t index = 0; index < begins.size(); ++index) {
            const SheetNote& note = voice.notes[index];
            if (begins[index] && !fitsSlots(note.start, result.slotQuarters)) {
                moved[note.start] = *begins[index];
            }
        }
        for (std::size_t index = 0; index < begins.size(); ++index) {
            if (begins[index]) {
                place(voice.notes[index], *begins[index]);
            } else {
                lose(voice.notes[index], "finds no slot of its own and was left out");
            }
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
    void place(const SheetNote& note, double start);
    double endOf(const SheetNote& note, double start) const;
    void lose(const SheetNote& note, const std::string& what, const std::string& kind = "") {
        result.lost.push_back({note.place + ": " + pitchName(note.pitch) + " " + what,
                               "a note " + (kind.empty() ? what : kind)});
    }

    const SheetVoice& voice;
    std::vector<std::optional<double>> begins;  // the slots of its notes
    bool lengthsAreExact;
    std::map<double, double> moved;  // the slots of notes that fit none, by their start
    Arrangement result{};
    std::size_t dropped = 0;  // slots
    std::array<Last, 7> last{};
};

void Arranger::dropLeadingBars() {
    double first = static_cast<double>(mostSlots);
    for (const std::optional<double>& slot : begins) {
        first = std::min(first, slot.value_or(first));
    }
    const std::size_t bars = static_cast<std::size_t>(first) / slotsPerBar;
    dropped = bars * slotsPerBar;
    if (bars > 0) {
        const std::string text = counted(dropped, "slot") + " of rest at the beginning";
        result.lost.push_back({text, text});
    }
}

// A note that ends where a note begins that was moved ends there still.
double Arranger::endOf(const SheetNote& note, double start) const {
    const double end = note.start + note.length;
    const auto next = moved.lower_bound(end - nearly);
    const bool isMoved = next != moved.end() && next->first < end + nearly;
    return std::max(isMoved ? next->second : nearestSlot(end, result.slotQuarters), start + 1.0);
}

void Arranger::place(const SheetNote& note, double start) {
    const Notes::NoteID natural = Notes::ofSemitone(note.pitch + result.semitones);
    if (natural == -1) {
        lose(note, "is no natural here and became a rest");
        return;
    }
    const double slotQuarters = result.slotQuarters;
    const double stop = endOf(note, start);
    const auto slot = static_cast<std::size_t>(start) - dropped;
    int length = static_cast<int>(std::min(stop - start, static_cast<double>(mostSlots)));
    Last& before = last.at(static_cast<std::size_t>(natural));
    if (before.end > slot) {
        WrittenNote& earlier = result.slots[before.slot][before.index];
        if (before.slot == slot) {
            lose(note, "is the same note in another octave, or the same note again within a slot");
            return;
        }
        earlier.length = static_cast<int>(slot - before.slot);
        lose(note, "begins while the same note sounds, which was cut short for it");
    }
    if (!fitsSlots(note.start, slotQuarters)) {
        lose(note, "was moved by " + fixed(std::abs(note.start / slotQuarters - start), 2) + " slots",
             "was moved");
    } else if (lengthsAreExact && note.length > 0.0 && !fitsSlots(note.start + note.length, slotQuarters)) {
        lose(note,
             "lasts " + fixed(note.length / slotQuarters, 2) + " slots and was written with " +
                 std::to_string(length),
             "has another length");
    }
    if (length > longestLength) {
        lose(note,
             "sounds for " + std::to_string(length) + " slots and was written with " +
                 std::to_string(longestLength) + ", the longest that can be judged",
             "is longer than " + std::to_string(longestLength) + " slots, the longest that can be judged");
        length = longestLength;
    }
    if (result.slots.size() <= slot) {
        result.slots.resize(slot + 1);
    }
    result.slots[slot].push_back({natural, length});
    before = {slot + static_cast<std::size_t>(length), slot, result.slots[slot].size() - 1};
    ++result.kept;
}

double chooseSlot(const SheetVoice& voice, const SheetMusic& sheet, const ArrangeWishes& wishes) {
    if (wishes.slotQuarters) {
        return *wishes.slotQuarters;
    }
    const std::optional<SlotChoice> rounding = roundingSlot(voice, sheet);
    if (const std::optional<SlotChoice> chosen = wishes.mayRound ? rounding : fittingSlot(voice, sheet)) {
        return chosen->quarters;
    }
    const std::size_t misfits = rounding ? rounding->misfits : fewestMisfits(voice, sheet);
    const std::string way = std::to_string(misfits) + " of its " + counted(voice.notes.size(), "note") +
                            (misfits == 1 ? " stands" : " stand") + " in the way";
    throw Failure(
        "its rhythm fits no even slots: " +
        (rounding ? way + " of " + slotName(rounding->quarters) + "; --round moves " +
                        (misfits == 1 ? "it" : "them") + ", or say what note a slot is, as in --slot 1/8"
                  : "at least " + way + "; if you know better, say what note a slot is, as in --slot 1/8"));
}

}  // namespace

Arrangement arrange(const SheetVoice& voice, const SheetMusic& sheet, const ArrangeWishes& wishes) {
    if (voice.notes.empty()) {
        throw Failure("there is no note in it");
    }
    const double slot = chooseSlot(voice, sheet, wishes);
    for (const SheetNote& note : voice.notes) {
        if (!(note.start / slot < static_cast<double>(mostSlots))) {
            throw Failure(note.place + " would come after more than " + std::to_string(mostSlots) +
                          " slots, which is 11 hours");
        }
    }
    const int semitones = wishes.semitones.value_or(chooseSemitones(voice));
    Arrangement arrangement = Arranger(voice, slot, semitones, sheet.lengthsAreExact).run();
    if (2 * arrangement.kept < voice.notes.size()) {
        throw Failure("only " + std::to_string(arrangement.kept) + " of its " +
                      counted(voice.notes.size(), "note") +
                      " would find a place; what is left would not be the tune");
    }
    return arrangement;
}
