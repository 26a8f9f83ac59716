#include "tools/zanto-song/Arrange.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "tools/common/Text.h"

namespace {

constexpr double secondsPerSlot = 0.5;
constexpr int longestLength = 5;  // slots, that the game can judge
constexpr std::size_t slotsPerBar = 4;

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
    constexpr std::array<char const*, 12> names = {"C",  "C#", "D",  "D#", "E",  "F",
                                                   "F#", "G",  "G#", "A",  "A#", "B"};
    int const index = ((pitch % 12) + 12) % 12;
    return names.at(static_cast<std::size_t>(index)) + std::to_string((pitch - index) / 12 - 1);
}

double nearestSlot(double quarters, double slot) {
    return std::round(quarters / slot);
}

bool fits(double quarters, double slot) {
    double const tolerance =
        std::min(std::max(toleranceShare * slot, leastTolerance), mostToleranceShare * slot);
    return std::abs(quarters - nearestSlot(quarters, slot) * slot) <= tolerance;
}

bool fitsAll(SheetVoice const& voice, double slot, bool withLengths) {
    return std::all_of(voice.notes.begin(), voice.notes.end(), [&](SheetNote const& note) {
        return fits(note.start, slot) && (!withLengths || fits(note.start + note.length, slot));
    });
}

// Of the slots that fit, the one whose tempo is nearest to the music's; 0 when none fits.
double chooseSlot(SheetVoice const& voice, SheetMusic const& sheet) {
    for (bool const withLengths : {true, false}) {
        double chosen = 0.0;
        double least = std::numeric_limits<double>::infinity();
        for (double const slot : slotChoices) {
            double const seconds = slot * 60.0 / sheet.quartersPerMinute;
            double const distance = std::abs(std::log2(seconds / secondsPerSlot));
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

std::ptrdiff_t naturalsAfter(SheetVoice const& voice, int semitones) {
    return std::count_if(voice.notes.begin(), voice.notes.end(),
                         [&](SheetNote const& note) { return naturalAt(note.pitch + semitones) != -1; });
}

// The least shift after which most notes are naturals; of two the one upwards.
int chooseSemitones(SheetVoice const& voice) {
    int chosen = 0;
    for (int const semitones : {0, 1, -1, 2, -2, 3, -3, 4, -4, 5, -5, 6}) {
        if (naturalsAfter(voice, semitones) > naturalsAfter(voice, chosen)) {
            chosen = semitones;
        }
    }
    return chosen;
}

class Arranger {
public:
    Arranger(SheetVoice const& voice_, double slotQuarters, int semitones) : voice(voice_) {
        result.slotQuarters = slotQuarters;
        result.semitones = semitones;
    }

    Arrangement run() {
        dropLeadingBars();
        for (SheetNote const& note : voice.notes) {
            place(note);
        }
        std::size_t end = 0;
        for (std::size_t slot = 0; slot < result.slots.size(); ++slot) {
            for (Arrangement::Mark const& mark : result.slots[slot]) {
                end = std::max(end, slot + static_cast<std::size_t>(mark.length));
            }
        }
        result.slots.resize(end);
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
    void place(SheetNote const& note);
    void lose(SheetNote const& note, std::string const& what) {
        result.lost.push_back(note.place + ": " + what);
    }

    SheetVoice const& voice;
    Arrangement result{};
    std::size_t dropped = 0;  // slots
    std::array<Last, 7> last{};
};

void Arranger::dropLeadingBars() {
    double const first = nearestSlot(voice.notes.front().start, result.slotQuarters);
    std::size_t const bars = static_cast<std::size_t>(std::max(first, 0.0)) / slotsPerBar;
    dropped = bars * slotsPerBar;
    if (bars > 0) {
        result.lost.push_back(counted(dropped, "slot") + " of rest at the beginning");
    }
}

void Arranger::place(SheetNote const& note) {
    std::string const name = pitchName(note.pitch);
    Notes::NoteID const natural = naturalAt(note.pitch + result.semitones);
    if (natural == -1) {
        lose(note, name + " is no natural here and became a rest");
        return;
    }
    double const slotQuarters = result.slotQuarters;
    double const start = nearestSlot(note.start, slotQuarters);
    double const stop = std::max(nearestSlot(note.start + note.length, slotQuarters), start + 1.0);
    auto const slot = static_cast<std::size_t>(std::max(start, 0.0)) - dropped;
    int length = static_cast<int>(std::min(stop - start, 1e6));
    Last& before = last.at(static_cast<std::size_t>(natural));
    if (before.end > slot) {
        Arrangement::Mark& earlier = result.slots[before.slot][before.index];
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

std::string Arrangement::text() const {
    std::string text = "120 4\n";
    for (std::vector<Mark> const& slot : slots) {
        std::string line;
        for (Mark const& mark : slot) {
            line += (line.empty() ? "" : " ") + Notes::idToName(mark.note) +
                    (mark.length == 1 ? "" : std::to_string(mark.length));
        }
        text += line + "\n";
    }
    return text;
}

std::optional<Arrangement> arrange(SheetVoice const& voice, SheetMusic const& sheet,
                                   ArrangeWishes const& wishes, std::string& problem) {
    if (voice.notes.empty()) {
        problem = "there is no note in it";
        return std::nullopt;
    }
    double const slot = wishes.slotQuarters.value_or(chooseSlot(voice, sheet));
    if (slot <= 0.0) {
        problem =
            "its rhythm fits no even slots; if you know better, say what note a slot is, as in --slot 1/8";
        return std::nullopt;
    }
    int const semitones = wishes.semitones.value_or(chooseSemitones(voice));
    Arrangement arrangement = Arranger(voice, slot, semitones).run();
    if (2 * arrangement.kept < voice.notes.size()) {
        problem = "only " + std::to_string(arrangement.kept) + " of its " +
                  counted(voice.notes.size(), "note") +
                  " would find a place; what is left would not be the tune";
        return std::nullopt;
    }
    return arrangement;
}
