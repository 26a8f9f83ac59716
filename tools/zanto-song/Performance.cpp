#include "tools/zanto-song/Performance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "game/Song.h"

namespace {

constexpr double shortestSoundSeconds = 0.05;
constexpr double leadInSeconds = 2.0;  // before the centre of slot 0
constexpr double slotsAfterTheEnd = 4.0;

constexpr std::array<int, 7> semitonesAboveC = {0, 2, 4, 5, 7, 9, 11};
constexpr double semitonesFromC4ToA4 = 9.0;
constexpr double semitonesPerOctave = 12.0;
constexpr double pitchOfA4Hz = 440.0;

}  // namespace

double pitchOf(Notes::NoteID const& note, int octave) {
    double const semitones = semitonesPerOctave * (octave - 4) +
                             semitonesAboveC.at(static_cast<std::size_t>(note)) - semitonesFromC4ToA4;
    return pitchOfA4Hz * std::pow(2.0, semitones / semitonesPerOctave);
}

double songSeconds(Song const& song) {
    return leadInSeconds + (static_cast<double>(song.getSlots().size()) + slotsAfterTheEnd) * secondsPerSlot;
}

std::vector<PlayedNote> perform(Song const& song, PlayingStyle const& style) {
    double const end = songSeconds(song);
    std::vector<PlayedNote> played;
    double opening = firstSlotSeconds;
    for (std::vector<Song::NoteMark> const& slot : song.getSlots()) {
        for (Song::NoteMark const& mark : slot) {
            if (mark.length <= 0) {
                continue;
            }
            double const start = std::max(opening - style.aheadSeconds, 0.0);
            double const stop = std::min(opening - style.aheadSeconds + mark.length * secondsPerSlot, end);
            double const sounding = std::max(stop - style.gapSeconds - start, shortestSoundSeconds);
            played.push_back({mark.note, pitchOf(mark.note, style.octave), start, sounding});
        }
        opening += secondsPerSlot;
    }
    return played;
}
