#include "tools/zanto-song/Practice.h"

#include <algorithm>
#include <cstdint>

#include "game/Rules.h"
#include "game/Song.h"
#include "tools/common/Text.h"

namespace {

using rules::slotsPerBar;

struct Counts {
    std::size_t earlier = 0;
    std::size_t noLength = 0;
    std::size_t doubled = 0;
    std::size_t cut = 0;
    std::size_t tooLong = 0;
    std::size_t separated = 0;
};

class Stretch {
public:
    Stretch(const Song& song_, const PracticeWishes& wishes_) : song(song_), wishes(wishes_) {}

    Practice make() {
        countEarlier();
        takeNotes();
        separate();
        Practice practice;
        practice.changes = describe();
        const std::size_t bar = slotsPerBar;
        const std::size_t round = ((once.size() + bar - 1) / bar + 1) * bar;
        for (int i = 0; i < wishes.repeat; ++i) {
            practice.slots.resize(static_cast<std::size_t>(i) * round);
            practice.slots.insert(practice.slots.end(), once.begin(), once.end());
        }
        endWithLastNote(practice.slots);
        practice.notes = kept;
        return practice;
    }

private:
    bool isWished(const Song::NoteMark& mark) const {
        return wishes.notes.at(static_cast<std::size_t>(mark.note));
    }

    void countEarlier();
    void takeNotes();
    void take(const Song::NoteMark& mark, std::size_t slot);
    void separate();
    std::vector<std::string> describe() const;

    const Song& song;
    const PracticeWishes& wishes;
    WrittenSlots once;  // the stretch, slowed down
    std::size_t kept = 0;
    Counts counts;
};

void Stretch::countEarlier() {
    for (std::size_t slot = 0; slot < wishes.begin; ++slot) {
        const auto left = static_cast<std::int64_t>(wishes.begin - slot);
        const std::vector<Song::NoteMark>& marks = song.getSlots()[slot];
        counts.earlier += static_cast<std::size_t>(
            std::count_if(marks.begin(), marks.end(),
                          [&](const Song::NoteMark& mark) { return isWished(mark) && mark.length > left; }));
    }
}

void Stretch::takeNotes() {
    once.resize((wishes.end - wishes.begin) * static_cast<std::size_t>(wishes.slower));
    for (std::size_t slot = wishes.begin; slot < wishes.end; ++slot) {
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            if (isWished(mark)) {
                take(mark, slot);
            }
        }
    }
}

void Stretch::take(const Song::NoteMark& mark, std::size_t slot) {
    std::vector<WrittenNote>& place = once[(slot - wishes.begin) * static_cast<std::size_t>(wishes.slower)];
    if (mark.length < 1) {
        ++counts.noLength;
        return;
    }
    if (std::any_of(place.begin(), place.end(),
                    [&](const WrittenNote& other) { return other.note == mark.note; })) {
        ++counts.doubled;
        return;
    }
    const auto left = static_cast<std::int64_t>(wishes.end - slot);
    const std::int64_t length = std::min<std::int64_t>(mark.length, left);
    const std::int64_t slowed = length * wishes.slower;
    counts.cut += mark.length > left ? 1 : 0;
    counts.tooLong += slowed > longestLength ? 1 : 0;
    place.push_back({mark.note, static_cast<int>(std::min<std::int64_t>(slowed, longestLength))});
    ++kept;
}

void Stretch::separate() {
    struct Place {
        WrittenNote* note = nullptr;
        std::size_t slot = 0;
    };
    std::array<Place, Notes::noteCount> last{};
    for (std::size_t slot = 0; slot < once.size(); ++slot) {
        for (WrittenNote& note : once[slot]) {
            Place& before = last.at(static_cast<std::size_t>(note.note));
            const int room = static_cast<int>(slot - before.slot) - (note.length > 1 ? 1 : 0);
            if (before.note != nullptr && before.note->length > std::max(room, 1)) {
                before.note->length = std::max(room, 1);
                ++counts.separated;
            }
            before = {&note, slot};
        }
    }
}

std::vector<std::string> Stretch::describe() const {
    std::vector<std::string> lines;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0) {
            lines.push_back(counted(count, "note") + ' ' + what);
        }
    };
    add(counts.earlier, "begun earlier, left out");
    add(counts.noLength, "without a length, left out");
    add(counts.doubled, "written twice in a slot, taken once");
    add(counts.cut, "cut off where the stretch ends");
    add(counts.tooLong, "shortened to " + std::to_string(longestLength) + " slots, the longest to be judged");
    add(counts.separated, "shortened so that the same note can be heard to begin again");
    return lines;
}

}  // namespace

Practice makePractice(const Song& song, const PracticeWishes& wishes) {
    return Stretch(song, wishes).make();
}
