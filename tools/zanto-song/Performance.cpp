#include "tools/zanto-song/Performance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "game/Rules.h"
#include "game/Song.h"

namespace {

constexpr double shortestSoundSeconds = 0.05;

constexpr std::array<int, Notes::noteCount> semitonesAboveC = {0, 2, 4, 5, 7, 9, 11};
constexpr double semitonesFromC4ToA4 = 9.0;
constexpr double semitonesPerOctave = 12.0;
constexpr double pitchOfA4Hz = 440.0;

}  // namespace

double pitchOf(const Notes::NoteID& note, int octave) {
    const double semitones = semitonesPerOctave * (octave - 4) +
                             semitonesAboveC.at(static_cast<std::size_t>(note)) - semitonesFromC4ToA4;
    return pitchOfA4Hz * std::pow(2.0, semitones / semitonesPerOctave);
}

double songSeconds(const Song& song) {
    return rules::leadInSeconds +
           (static_cast<double>(song.getSlots().size()) + rules::slotsAfterTheEnd) * rules::secondsPerSlot;
}

std::vector<PlayedNote> perform(const Song& song, const PlayingStyle& style) {
    const double end = songSeconds(song);
    std::vector<PlayedNote> played;
    double opening = firstSlotSeconds;
    for (const std::vector<Song::NoteMark>& slot : song.getSlots()) {
        for (const Song::NoteMark& mark : slot) {
            if (mark.length <= 0) {
                continue;
            }
            const double start = std::max(opening - style.aheadSeconds, 0.0);
            const double stop =
                std::min(opening - style.aheadSeconds + mark.length * rules::secondsPerSlot, end);
            const double sounding = std::max(stop - style.gapSeconds - start, shortestSoundSeconds);
            played.push_back({mark.note, pitchOf(mark.note, style.octave), start, sounding});
        }
        opening += rules::secondsPerSlot;
    }
    return played;
}
