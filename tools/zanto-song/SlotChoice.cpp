#include "tools/zanto-song/SlotChoice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

#include "game/Rules.h"
#include "tools/common/Arguments.h"

namespace {

// Whole notes down to 32nds, with the dotted ones and the triplets. Quarter notes.
constexpr std::array<double, 12> slotChoices = {4.0,       3.0, 2.0,       1.5,  1.0,       0.75,
                                                2.0 / 3.0, 0.5, 1.0 / 3.0, 0.25, 1.0 / 6.0, 0.125};
constexpr double toleranceShare = 0.1;
constexpr double leastTolerance = 0.025;  // quarter notes
constexpr double mostToleranceShare = 0.24;
constexpr double mostMisfitShare = 0.25;
constexpr double misfitWeight = 6.0;  // octaves of tempo
constexpr int mostNameNumber = 64;

double tolerance(double slot) {
    return std::min(std::max(toleranceShare * slot, leastTolerance), mostToleranceShare * slot);
}

std::size_t misfits(const SheetVoice& voice, double slot, bool withLengths) {
    return static_cast<std::size_t>(
        std::count_if(voice.notes.begin(), voice.notes.end(), [&](const SheetNote& note) {
            return !fitsSlots(note.start, slot) ||
                   (withLengths && !fitsSlots(note.start + note.length, slot));
        }));
}

double octavesFromTempo(double slot, const SheetMusic& sheet) {
    return std::abs(std::log2(slot * 60.0 / sheet.quartersPerMinute / rules::secondsPerSlot));
}

}  // namespace

bool fitsSlots(double quarters, double slotQuarters) {
    return std::abs(quarters - nearestSlot(quarters, slotQuarters) * slotQuarters) <= tolerance(slotQuarters);
}

double nearestSlot(double quarters, double slotQuarters) {
    return std::round(quarters / slotQuarters);
}

std::optional<SlotChoice> fittingSlot(const SheetVoice& voice, const SheetMusic& sheet) {
    std::optional<SlotChoice> chosen;
    // Lengths as a player held them need not fit; those on paper must.
    for (const bool withLengths : {true, false}) {
        for (const double slot : slotChoices) {
            const bool isNearer =
                !chosen || octavesFromTempo(slot, sheet) < octavesFromTempo(chosen->quarters, sheet) - 1e-9;
            if (isNearer && misfits(voice, slot, withLengths) == 0) {
                chosen = {slot, 0};
            }
        }
        if (chosen || sheet.lengthsAreExact) {
            break;
        }
    }
    return chosen;
}

std::optional<SlotChoice> roundingSlot(const SheetVoice& voice, const SheetMusic& sheet) {
    const auto count = static_cast<double>(voice.notes.size());
    std::optional<SlotChoice> chosen;
    double least = HUGE_VAL;
    for (const double slot : slotChoices) {
        const std::size_t inTheWay = misfits(voice, slot, sheet.lengthsAreExact);
        const double share = static_cast<double>(inTheWay) / count;
        const double cost = octavesFromTempo(slot, sheet) + misfitWeight * share;
        if (share <= mostMisfitShare && cost < least - 1e-9) {
            chosen = {slot, inTheWay};
            least = cost;
        }
    }
    return chosen;
}

std::size_t fewestMisfits(const SheetVoice& voice, const SheetMusic& sheet) {
    std::size_t fewest = voice.notes.size();
    for (const double slot : slotChoices) {
        fewest = std::min(fewest, misfits(voice, slot, sheet.lengthsAreExact));
    }
    return fewest;
}

std::string slotName(double quarters) {
    for (int under = 1; under <= mostNameNumber; ++under) {
        const double over = quarters * under / 4.0;
        if (over > 0.5 && std::abs(over - std::round(over)) < 1e-6) {
            return std::to_string(std::lround(over)) + "/" + std::to_string(under);
        }
    }
    return "";
}

std::optional<double> slotOfName(const std::string& name) {
    const std::size_t slash = name.find('/');
    const std::optional<int> over = parseWhole(name.substr(0, slash), 1, mostNameNumber);
    const std::optional<int> under =
        slash == std::string::npos ? std::nullopt : parseWhole(name.substr(slash + 1), 1, mostNameNumber);
    return over && under ? std::optional<double>(4.0 * *over / *under) : std::nullopt;
}

std::vector<std::optional<double>> slotsOfNotes(const SheetVoice& voice, double slotQuarters) {
    std::vector<std::optional<double>> slots(voice.notes.size());
    std::set<double> taken;
    for (std::size_t index = 0; index < slots.size(); ++index) {
        if (const double start = voice.notes[index].start; fitsSlots(start, slotQuarters)) {
            slots[index] = nearestSlot(start, slotQuarters);
            taken.insert(*slots[index]);
        }
    }
    std::optional<std::size_t> before;  // the last note that did not fit
    for (std::size_t index = 0; index < slots.size(); ++index) {
        if (slots[index]) {
            continue;
        }
        const double start = voice.notes[index].start;
        if (before && start - voice.notes[*before].start <= tolerance(slotQuarters)) {
            slots[index] = slots[*before];  // they begin together
            continue;
        }
        before = index;
        const double nearest = nearestSlot(start, slotQuarters);
        const double other = nearest * slotQuarters > start ? nearest - 1.0 : nearest + 1.0;
        for (const double slot : {nearest, other}) {
            if (!slots[index] && slot >= 0.0 && taken.insert(slot).second) {
                slots[index] = slot;
            }
        }
    }
    return slots;
}
