#include <algorithm>
#include <array>
#include <iostream>
#include <optional>
#include <string>

#include "game/Rules.h"
#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Practice.h"
#include "tools/zanto-song/commands.h"
#include "tools/zanto-song/loadSong.h"

namespace {

constexpr const char* usage =
    "zanto-song practise SONG -o OUT.txt [--bars A-B | --slots A-B] [--notes X-Y] [--slower N] [--repeat N]\n"
    "                    [--force]\n"
    "    Makes a song of a stretch of another one, to practise that, and says what it had to change.\n"
    "    --bars A-B     the bars from A to B, counted from 1; a bar is four slots whatever the tune's "
    "metre,\n"
    "                   as the game and zanto-song show draw it\n"
    "    --slots A-B    the slots from A to B instead, counted from 0 as zanto-song perform counts them\n"
    "    --notes X-Y    only the notes from X up to Y, such as C-G, or G-D for G, A, B, C and D\n"
    "    --slower N     N slots for each slot, 1 to 5: half the tempo for 2\n"
    "    --repeat N     the stretch N times, 1 to 99, with a bar of rest between\n"
    "    --force        replace OUT.txt if there is such a file\n"
    "    Try it: zanto-song practise song.txt -o slow.txt --bars 5-8 --slower 2\n";

constexpr std::size_t slotsPerBar = rules::slotsPerBar;
constexpr int mostCounted = static_cast<int>(mostSlots);

struct Range {
    std::size_t first;
    std::size_t last;
};

// "5-8", or "5" for 5-5.
std::optional<Range> parseRange(const std::string& text, int least) {
    const std::size_t dash = text.find('-');
    const std::optional<int> first = parseWhole(text.substr(0, dash), least, mostCounted);
    const std::optional<int> last =
        dash == std::string::npos ? first : parseWhole(text.substr(dash + 1), least, mostCounted);
    if (!first || !last || *first > *last) {
        return std::nullopt;
    }
    return Range{static_cast<std::size_t>(*first), static_cast<std::size_t>(*last)};
}

std::optional<Range> rangeOf(const Arguments& given, const std::string& option, int least,
                             const std::string& example) {
    const std::optional<std::string> text = given.value(option);
    const std::optional<Range> range = text ? parseRange(*text, least) : std::nullopt;
    if (text && !range) {
        throw WrongUse(option + " wants numbers from " + std::to_string(least) + ", such as " + example);
    }
    return range;
}

void chooseStretch(const Arguments& given, const Song& song, const std::string& path,
                   PracticeWishes& wishes) {
    const std::optional<Range> bars = rangeOf(given, "--bars", 1, "5-8");
    const std::optional<Range> slots = rangeOf(given, "--slots", 0, "16-31");
    if (bars && slots) {
        throw WrongUse("--bars and --slots are two ways to say the same; use one");
    }
    const std::size_t songSlots = slotsWithNotes(song);
    const std::size_t songBars = (songSlots + slotsPerBar - 1) / slotsPerBar;
    if (bars && bars->last > songBars) {
        throw Failure(path + ": there is no bar " + std::to_string(bars->last) + "; the song has " +
                      counted(songBars, "bar") + " of four slots");
    }
    if (slots && slots->last >= songSlots) {
        throw Failure(path + ": there is no slot " + std::to_string(slots->last) + "; the song has " +
                      counted(songSlots, "slot") + ", counted from 0");
    }
    wishes.begin = bars ? (bars->first - 1) * slotsPerBar : slots ? slots->first : 0;
    wishes.end = bars ? std::min(bars->last * slotsPerBar, songSlots) : slots ? slots->last + 1 : songSlots;
}

// "C-G", going up and on at C after B, or "C" for C-C.
void chooseNotes(const Arguments& given, PracticeWishes& wishes) {
    const std::string text = given.value("--notes").value_or("C-B");
    const Notes::NoteID lowest = Notes::nameToId(text.substr(0, 1));
    const bool isRange = text.size() == 3 && text[1] == '-';
    const Notes::NoteID highest = Notes::nameToId(isRange ? text.substr(2) : text);
    if (lowest == -1 || highest == -1) {
        throw WrongUse("--notes wants notes from C to B, such as C-G");
    }
    for (std::int32_t note = lowest;; note = (note + 1) % Notes::noteCount) {
        wishes.notes.at(static_cast<std::size_t>(note)) = true;
        if (note == highest) {
            return;
        }
    }
}

void expectSize(std::size_t slots, std::size_t bytes) {
    if (slots > mostSlots || bytes > mostSongBytes) {
        throw Failure("that would be more than a song may have, " + std::to_string(mostSlots) +
                      " slots and 1 MiB; ask for less");
    }
}

int practise(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--force"},
                          {"-o", "--bars", "--slots", "--notes", "--slower", "--repeat"});
    const std::string& path = given.onlyFile("song");
    const std::optional<std::string> out = given.value("-o");
    if (!out) {
        throw WrongUse("where to? -o OUT.txt is missing");
    }
    PracticeWishes wishes;
    chooseNotes(given, wishes);
    wishes.slower = given.whole("--slower", 1, longestLength, "a whole number, 1 to 5").value_or(1);
    wishes.repeat = given.whole("--repeat", 1, 99, "a whole number, 1 to 99").value_or(1);
    Song song;
    loadSong(path, song);
    chooseStretch(given, song, path, wishes);
    const auto times = static_cast<std::size_t>(wishes.slower) * static_cast<std::size_t>(wishes.repeat);
    expectSize((wishes.end - wishes.begin) * times, 0);
    const Practice practice = makePractice(song, wishes);
    if (practice.notes == 0) {
        throw Failure(path + ": none of the notes asked for begins in that stretch");
    }
    const std::string text = songText(practice.slots);
    expectSize(practice.slots.size(), text.size());
    NewFile file(*out, given.has("--force"), {path});
    file.write(text);
    file.keep();
    const std::string often =
        wishes.repeat == 1 ? "" : ' ' + counted(static_cast<std::size_t>(wishes.repeat), "time");
    std::cout << *out << ": " << counted(practice.notes, "note") << often << ", "
              << counted(practice.slots.size(), "slot") << '\n';
    for (const std::string& change : practice.changes) {
        std::cout << "    " << change << '\n';
    }
    return statusDone;
}

}  // namespace

const Command practiseCommand = {"practise", usage, practise};
