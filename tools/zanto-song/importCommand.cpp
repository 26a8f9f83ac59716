#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <string>

#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Arrange.h"
#include "tools/zanto-song/Melody.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/SlotChoice.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/commands.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* usage =
    "zanto-song import FILE -o OUT.txt [--voice N | --voice all] [--melody] [--tune N] [--slot 1/N] "
    "[--round]\n"
    "                  [--transpose N] [--all] [--force]\n"
    "    Makes a song of a MIDI file (.mid), a tune in ABC notation (.abc) or sheet music (.musicxml, .xml, "
    ".mxl).\n"
    "    It chooses what note a slot is and a key in which the notes are naturals, and says which notes, "
    "lengths\n"
    "    and other things it could not keep. It leaves out and never makes up: where it would have to guess, "
    "it\n"
    "    refuses and says what to choose.\n"
    "    --voice N       which voice, if there are several; all puts them together\n"
    "    --melody        the highest notes alone, out of chords and accompaniment; of all voices unless "
    "--voice\n"
    "                    names one\n"
    "    --tune N        which tune of an ABC file of several, by its X: number; 4.2 for the second 4\n"
    "    --slot 1/N      a slot is an Nth note: 1/4 a quarter note, 3/8 a dotted one, 1/12 one of a triplet "
    "of\n"
    "                    eighth notes\n"
    "    --round         moves a few notes onto the slots, so that they do not slow down all the others\n"
    "    --transpose N   by so many semitones, -24 to 24, instead of those that suit best\n"
    "    --all           lists each thing that was not kept, not only the first ten\n"
    "    --force         replace OUT.txt if there is such a file\n"
    "    Status 0 when all was kept, 1 when something was not or the file was refused.\n"
    "    Try it: zanto-song import tune.abc -o tune.txt && zanto-song show tune.txt -o tune.png\n";

constexpr std::size_t linesBeforeSummary = 10;

struct ImportOptions {
    std::string source;
    std::string song;
    bool mayReplace = false;
    std::optional<std::string> voice;
    std::string tune;
    bool onlyMelody = false;
    bool listsAll = false;
    ArrangeWishes wishes;
};

ImportOptions readOptions(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--force", "--melody", "--round", "--all"},
                          {"-o", "--voice", "--tune", "--slot", "--transpose"});
    ImportOptions options;
    options.source = given.onlyFile("file");
    if (!given.value("-o")) {
        throw WrongUse("where to? -o OUT.txt is missing");
    }
    options.song = *given.value("-o");
    options.mayReplace = given.has("--force");
    options.voice = given.value("--voice");
    if (options.voice && *options.voice != "all" && !parseWhole(*options.voice, 1, 9999)) {
        throw WrongUse("--voice wants a number from 1, or all");
    }
    options.tune = given.value("--tune").value_or("");
    if (given.value("--tune") && !parseNumber(options.tune, 0.0, 99999999.9)) {
        throw WrongUse("--tune wants the number of a tune, as 4, or 4.2 for the second one of that number");
    }
    if (const auto slot = given.value("--slot"); slot && !(options.wishes.slotQuarters = slotOfName(*slot))) {
        throw WrongUse("--slot wants a note value as 1/8 or 3/8, of numbers up to 64");
    }
    options.wishes.mayRound = given.has("--round");
    options.onlyMelody = given.has("--melody");
    options.listsAll = given.has("--all");
    options.wishes.semitones = given.whole("--transpose", -24, 24, "whole semitones, -24 to 24");
    return options;
}

SheetMusic readSheet(const ImportOptions& options) {
    std::string ending = fs::u8path(options.source).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const std::string contents = readFile(options.source, mostSheetBytes);
    if (contents.empty()) {
        throw Failure("the file is empty");
    }
    if (ending == ".mid" || ending == ".midi" || ending == ".kar") {
        return readMidi(contents);
    }
    if (ending == ".abc") {
        return readAbc(contents, options.tune);
    }
    if (ending == ".musicxml" || ending == ".xml") {
        return readMusicXml(contents);
    }
    if (ending == ".mxl") {
        return readCompressedMusicXml(contents);
    }
    throw Failure("its name must end in .mid, .abc, .musicxml or .mxl, after what is in it");
}

SheetVoice together(const SheetMusic& sheet) {
    SheetVoice all{"all voices", {}};
    for (const SheetVoice& voice : sheet.voices) {
        all.notes.insert(all.notes.end(), voice.notes.begin(), voice.notes.end());
    }
    sortNotes(all.notes);
    return all;
}

SheetVoice chooseVoice(const SheetMusic& sheet, const std::optional<std::string>& wanted, bool onlyMelody) {
    if (sheet.voices.empty()) {
        throw Failure("there is no note in it");
    }
    const std::size_t count = sheet.voices.size();
    if (wanted == "all" || (!wanted && onlyMelody && count > 1)) {
        return together(sheet);
    }
    if (!wanted && count == 1) {
        return sheet.voices.front();
    }
    const std::size_t number =
        wanted ? static_cast<std::size_t>(parseWhole(*wanted, 1, 9999).value_or(0)) : 0;
    if (number >= 1 && number <= count) {
        return sheet.voices[number - 1];
    }
    std::string problem = "there " + std::string(count == 1 ? "is " : "are ") + counted(count, "voice") +
                          " in it; choose with --voice:";
    for (std::size_t i = 0; i < count; ++i) {
        const SheetVoice& voice = sheet.voices[i];
        const auto [lowest, highest] = std::minmax_element(
            voice.notes.begin(), voice.notes.end(),
            [](const SheetNote& left, const SheetNote& right) { return left.pitch < right.pitch; });
        problem += "\n    " + std::to_string(i + 1) + "  " + cleanUtf8(voice.name) + ", " +
                   counted(voice.notes.size(), "note") + ", " + pitchName(lowest->pitch) + " to " +
                   pitchName(highest->pitch) +
                   (voice.instrument.empty() ? "" : ", " + cleanUtf8(voice.instrument));
    }
    throw Failure(problem);
}

// The first lines, each after `before`, and of what follows how many there are of each kind.
void list(const std::vector<Loss>& lines, const std::string& before, bool all) {
    const std::size_t shown = all ? lines.size() : std::min(lines.size(), linesBeforeSummary);
    for (std::size_t index = 0; index < shown; ++index) {
        std::cout << before << cleanUtf8(lines[index].text) << '\n';
    }
    std::map<std::string, std::size_t> more;
    for (std::size_t index = shown; index < lines.size(); ++index) {
        ++more[lines[index].kind];
    }
    if (!more.empty()) {
        std::cout << before << "and " << lines.size() - shown << " more, which --all lists:\n";
    }
    for (const auto& [kind, count] : more) {
        std::cout << before << counted(count, "time") << ": " << cleanUtf8(kind) << '\n';
    }
}

void reportRhythm(const SheetMusic& sheet, const SheetVoice& voice, const ImportOptions& options,
                  double slotQuarters) {
    constexpr double slotsPerMinute = 120.0;
    const auto say = [](double number) { return fixed(number, 0); };
    std::cout << "A slot is a " << slotName(slotQuarters) << " note: " << say(slotQuarters * slotsPerMinute)
              << " quarter notes a minute, " << say(sheet.quartersPerMinute) << " in the original.\n";
    const std::optional<SlotChoice> other = roundingSlot(voice, sheet);
    if (!options.wishes.slotQuarters && !options.wishes.mayRound && other && other->quarters > slotQuarters) {
        std::cout << "Only " << counted(other->misfits, "note") << " of it "
                  << (other->misfits == 1 ? "needs" : "need")
                  << " slots as short as that: with --round there are "
                  << say(other->quarters * slotsPerMinute) << " quarter notes a minute.\n";
    }
}

void report(const ImportOptions& options, const SheetMusic& sheet, const SheetVoice& voice,
            const Arrangement& arrangement) {
    std::cout << options.song << ": " << arrangement.kept << " of " << counted(voice.notes.size(), "note")
              << " of " << quoted(voice.name) << ", " << counted(arrangement.slots.size(), "slot") << '\n';
    reportRhythm(sheet, voice, options, arrangement.slotQuarters);
    if (arrangement.semitones != 0) {
        std::cout << "Transposed " << (arrangement.semitones > 0 ? "up " : "down ")
                  << counted(static_cast<std::size_t>(std::abs(arrangement.semitones)), "semitone") << ".\n";
    }
    std::vector<Loss> remarks;
    for (const std::string& remark : sheet.remarks) {
        remarks.push_back({remark, "a remark"});
    }
    list(remarks, "The reader says: ", options.listsAll);
    std::vector<Loss> lost;
    for (const std::string& line : sheet.lost) {
        lost.push_back({line, line});
    }
    lost.insert(lost.end(), arrangement.lost.begin(), arrangement.lost.end());
    if (!lost.empty()) {
        std::cout << "Not kept:\n";
    }
    list(lost, "    ", options.listsAll);
    std::vector<Loss> warnings;
    for (const Problem& problem : checkSong(songText(arrangement.slots))) {
        warnings.push_back({options.song + ":" + std::to_string(problem.line) + ":" +
                                std::to_string(problem.column) + ": warning: " + problem.text + " [" +
                                problem.code + "]",
                            "warning [" + std::string(problem.code) + "]"});
    }
    list(warnings, "", options.listsAll);
}

int import(const CommandArguments& arguments) {
    const ImportOptions options = readOptions(arguments);
    SheetMusic sheet;
    SheetVoice voice;
    Arrangement arrangement;
    std::size_t below = 0;
    try {
        sheet = readSheet(options);
        voice = chooseVoice(sheet, options.voice, options.onlyMelody);
        if (options.onlyMelody) {
            const std::size_t count = voice.notes.size();
            voice = melodyOf(voice);
            below = count - voice.notes.size();
        }
        arrangement = arrange(voice, sheet, options.wishes);
    } catch (const Failure& failure) {
        throw Failure(options.source + ": " + failure.what());
    }
    NewFile song(options.song, options.mayReplace, {options.source});
    song.write(songText(arrangement.slots));
    song.keep();
    report(options, sheet, voice, arrangement);
    if (options.onlyMelody) {
        std::cout << "The melody is the highest notes; " << counted(below, "note")
                  << " below were left out.\n";
    }
    return sheet.lost.empty() && arrangement.lost.empty() ? statusDone : statusFailed;
}

}  // namespace

const Command importCommand = {"import", usage, import};
