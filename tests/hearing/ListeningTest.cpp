#include "tools/zanto-song/Listening.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "audio/QuietDescriptor.h"
#include "bench/hearing/SongRun.h"
#include "bench/hearing/Take.h"
#include "tools/common/Command.h"
#include "tools/zanto-song/SoundRecording.h"
#include "tools/zanto-song/Transcription.h"

namespace {

constexpr std::array<double, 5> tempi = {80.0, 95.0, 110.0, 125.0, 140.0};

/// How many notes more may be missed, and how many more others heard, than were measured.
constexpr std::size_t margin = 5;

struct Case {
    const char* player;
    std::size_t right;   ///< notes with their lengths, as measured
    std::size_t others;  ///< heard besides
};

class Samples : public SampleSource {
public:
    explicit Samples(std::vector<float> samples_) : samples(std::move(samples_)) {}
    std::size_t read(float* into, std::size_t count) override {
        const std::size_t taken = std::min(count, samples.size() - used);
        std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(used), taken, into);
        used += taken;
        return taken;
    }

private:
    std::vector<float> samples;
    std::size_t used = 0;
};

// Slot from the first note's, note, length.
using Written = std::multiset<std::tuple<std::size_t, int, int>>;

Written writtenIn(const Song& song) {
    Written written;
    std::size_t first = song.getSlots().size();
    for (std::size_t slot = 0; slot < song.getSlots().size(); ++slot) {
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            first = std::min(first, slot);
            written.insert({slot - first, mark.note, mark.length});
        }
    }
    return written;
}

Written heardIn(Studio& studio, const Player& player, const Song& song, int octave, double tempo) {
    const double slotSeconds = 60.0 / tempo;
    std::vector<NoteEvent> notes = performance(song, octave, 0.0);
    const double begin = notes.front().startSeconds;
    for (NoteEvent& note : notes) {
        note.startSeconds = 1.0 + (note.startSeconds - begin) * 2.0 * slotSeconds;
        note.endSeconds = 1.0 + (note.endSeconds - begin) * 2.0 * slotSeconds - detachedGapSeconds;
    }
    const double seconds = 2.0 + static_cast<double>(song.getSlots().size()) * slotSeconds;
    Samples sound(studio.sound(player, notes, seconds));
    Written written;
    try {
        for (const HeardNote& note : transcribe(listenTo(sound), std::nullopt).notes) {
            written.insert({note.slot, note.note, note.length});
        }
    } catch (const Failure&) {
    }
    return written;
}

}  // namespace

class Listening : public testing::TestWithParam<Case> {};

TEST_P(Listening, AnInstrumentInTwoOctavesAtFiveTempiIsWrittenDown) {
    const Player& player = *std::find_if(orchestra().begin(), orchestra().end(),
                                         [](const Player& one) { return one.name == GetParam().player; });
    Studio studio;
    std::size_t wanted = 0;
    std::size_t right = 0;
    std::size_t others = 0;
    std::size_t turn = 0;
    for (const int octave : {4, 5}) {
        for (const ShippedSong& shipped : shippedSongs(".")) {
            const QuietDescriptor quiet(1);
            const double tempo = tempi.at(turn++ % tempi.size());
            const Written song = writtenIn(*shipped.song);
            const Written heard = heardIn(studio, player, *shipped.song, octave, tempo);
            Written both;
            std::set_intersection(song.begin(), song.end(), heard.begin(), heard.end(),
                                  std::inserter(both, both.end()));
            wanted += song.size();
            right += both.size();
            others += heard.size() - both.size();
            if (both.size() < song.size()) {
                std::cerr << shipped.title << ", octave " << octave << ", " << tempo
                          << " a minute: " << both.size() << " of " << song.size() << ", "
                          << heard.size() - both.size() << " others\n";
            }
        }
        ++turn;  // each song in another tempo the next time
    }
    std::cout << player.name << ": " << right << " of " << wanted << " notes with their lengths, " << others
              << " others\n";
    EXPECT_GE(right + margin, GetParam().right);
    EXPECT_LE(others, GetParam().others + margin);
}

INSTANTIATE_TEST_SUITE_P(SampledInstruments, Listening,
                         testing::Values(Case{"grand piano", 3734, 0}, Case{"nylon guitar", 3693, 52},
                                         Case{"clarinet", 3734, 0}, Case{"violin", 3730, 22},
                                         Case{"trumpet", 3733, 1}, Case{"flute", 3730, 6}),
                         [](const testing::TestParamInfo<Case>& listened) {
                             std::string name = listened.param.player;
                             std::replace(name.begin(), name.end(), ' ', '_');
                             return name;
                         });
