#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Arrange.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/commands.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* usage =
    "zanto-song import FILE -o OUT.txt [--voice N | --voice all] [--tune N] [--slot 1/N] [--transpose N]\n"
    "                  [--force]\n"
    "    Makes a song of a MIDI file (.mid), a tune in ABC notation (.abc) or sheet music (.musicxml, "
    ".xml).\n"
    "    It chooses what note a slot is and a key in which the notes are naturals, and says which notes, "
    "lengths\n"
    "    and other things it could not keep. It leaves out and never makes up: where it would have to guess, "
    "it\n"
    "    refuses and says what to choose.\n"
    "    --voice N       which voice, if there are several; all puts them together\n"
    "    --tune N        which tune of an ABC file of several, by its X: number; 4.2 for the second "
    "4\n"
    "    --slot 1/N      a slot is an Nth note: 1/4 a quarter note, 1/8 an eighth note, 1/12 one of a "
    "triplet of\n"
    "                    eighth notes\n"
    "    --transpose N   by so many semitones, -24 to 24, instead of those that suit best\n"
    "    --force         replace OUT.txt if there is such a file\n"
    "    Status 0 when all was kept, 1 when something was not or the file was refused.\n"
    "    Try it: zanto-song import tune.abc -o tune.txt && zanto-song show tune.txt -o tune.png\n";

struct ImportOptions {
    std::string source;
    std::string song;
    bool mayReplace = false;
    std::optional<std::string> voice;
    std::string tune;
    ArrangeWishes wishes;
};

// "1/8" as half a quarter note.
std::optional<double> parseSlot(const std::string& text) {
    constexpr int finest = 64;
    if (text.rfind("1/", 0) != 0) {
        return std::nullopt;
    }
    const std::optional<int> parts = parseWhole(text.substr(2), 1, finest);
    return parts ? std::optional<double>(4.0 / *parts) : std::nullopt;
}

ImportOptions readOptions(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--force"}, {"-o", "--voice", "--tune", "--slot", "--transpose"});
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
    if (const auto slot = given.value("--slot"); slot && !(options.wishes.slotQuarters = parseSlot(*slot))) {
        throw WrongUse("--slot wants a note value from 1/1 to 1/64");
    }
    options.wishes.semitones = given.whole("--transpose", -24, 24, "whole semitones, -24 to 24");
    return options;
}

SheetMusic readSheet(const ImportOptions& options) {
    std::string ending = fs::path(options.source).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const std::string contents = readFile(options.source, mostSheetBytes);
    if (ending == ".mid" || ending == ".midi" || ending == ".kar") {
        return readMidi(contents);
    }
    if (ending == ".abc") {
        return readAbc(contents, options.tune);
    }
    if (ending == ".musicxml" || ending == ".xml") {
        return readMusicXml(contents);
    }
    throw Failure(ending == ".mxl"
                      ? "this is compressed MusicXML; save it as plain .musicxml, or unpack it with unzip"
                      : "its name must end in .mid, .abc or .musicxml, after what is in it");
}

SheetVoice together(const SheetMusic& sheet) {
    SheetVoice all{"all voices", {}};
    for (const SheetVoice& voice : sheet.voices) {
        all.notes.insert(all.notes.end(), voice.notes.begin(), voice.notes.end());
    }
    std::stable_sort(all.notes.begin(), all.notes.end(),
                     [](const SheetNote& left, const SheetNote& right) { return left.start < right.start; });
    return all;
}

SheetVoice chooseVoice(const SheetMusic& sheet, const std::optional<std::string>& wanted) {
    if (sheet.voices.empty()) {
        throw Failure("there is no note in it");
    }
    if (wanted == "all") {
        return together(sheet);
    }
    const std::size_t count = sheet.voices.size();
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
        problem +=
            "\n    " + std::to_string(i + 1) + "  " + voice.name + ", " + counted(voice.notes.size(), "note");
    }
    throw Failure(problem);
}

std::string slotName(double quarters) {
    const double parts = 4.0 / quarters;
    const bool isPlain = std::abs(parts - std::round(parts)) < 1e-6;
    return isPlain ? "1/" + fixed(parts, 0) : fixed(quarters, 2) + "/4";
}

void report(const ImportOptions& options, const SheetMusic& sheet, const SheetVoice& voice,
            const Arrangement& arrangement) {
    const double played = arrangement.slotQuarters * 120.0;
    std::cout << options.song << ": " << arrangement.kept << " of " << counted(voice.notes.size(), "note")
              << " of " << quoted(voice.name) << ", " << counted(arrangement.slots.size(), "slot") << '\n'
              << "A slot is a " << slotName(arrangement.slotQuarters) << " note: " << fixed(played, 0)
              << " quarter notes a minute, " << fixed(sheet.quartersPerMinute, 0) << " in the original.\n";
    if (arrangement.semitones != 0) {
        std::cout << "Transposed " << (arrangement.semitones > 0 ? "up " : "down ")
                  << counted(static_cast<std::size_t>(std::abs(arrangement.semitones)), "semitone") << ".\n";
    }
    for (const std::string& remark : sheet.remarks) {
        std::cout << "The reader says: " << cleanUtf8(remark) << '\n';
    }
    if (!sheet.lost.empty() || !arrangement.lost.empty()) {
        std::cout << "Not kept:\n";
    }
    for (const auto* const lost : {&sheet.lost, &arrangement.lost}) {
        for (const std::string& line : *lost) {
            std::cout << "    " << cleanUtf8(line) << '\n';
        }
    }
    for (const Problem& problem : checkSong(songText(arrangement.slots))) {
        std::cout << options.song << ':' << problem.line << ':' << problem.column
                  << ": warning: " << problem.text << " [" << problem.code << "]\n";
    }
}

int import(const CommandArguments& arguments) {
    const ImportOptions options = readOptions(arguments);
    SheetMusic sheet;
    SheetVoice voice;
    Arrangement arrangement;
    try {
        sheet = readSheet(options);
        voice = chooseVoice(sheet, options.voice);
        arrangement = arrange(voice, sheet, options.wishes);
    } catch (const Failure& failure) {
        throw Failure(options.source + ": " + failure.what());
    }
    NewFile song(options.song, options.mayReplace, {options.source});
    song.write(songText(arrangement.slots));
    song.keep();
    report(options, sheet, voice, arrangement);
    return sheet.lost.empty() && arrangement.lost.empty() ? statusDone : statusFailed;
}

}  // namespace

const Command importCommand = {"import", usage, import};
