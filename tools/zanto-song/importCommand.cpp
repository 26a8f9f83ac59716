#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Arrange.h"
#include "tools/zanto-song/Command.h"
#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/SongCheck.h"

char const* const importUsage =
    "zanto-song import FILE -o OUT.txt [--voice N | --voice all] [--tune N] [--slot 1/N] [--transpose N]\n"
    "    Makes a song of a MIDI file (.mid), a tune in ABC notation (.abc) or sheet music (.musicxml, "
    ".xml).\n"
    "    It chooses what note a slot is and a key in which the notes are naturals, and says which notes, "
    "lengths\n"
    "    and other things it could not keep. It leaves out and never makes up: where it would have to guess, "
    "it\n"
    "    refuses and says what to choose.\n"
    "    --voice N       which voice, if there are several; all puts them together\n"
    "    --tune N        which tune of an ABC file of several, by its X: number\n"
    "    --slot 1/N      a slot is an Nth note: 1/4 a quarter note, 1/8 an eighth note, 1/12 one of a "
    "triplet of\n"
    "                    eighth notes\n"
    "    --transpose N   by so many semitones, -24 to 24, instead of those that suit best\n"
    "    Status 0 when all was kept, 1 when something was not or the file was refused.\n"
    "    Try it: zanto-song import tune.abc -o tune.txt && zanto-song show tune.txt -o tune.png\n";

namespace {

struct ImportOptions {
    std::string source;
    std::string song;
    std::optional<std::string> voice;
    std::optional<int> tune;
    ArrangeWishes wishes;
};

int fail(int status, std::string const& message) {
    std::cerr << "zanto-song import: " << message << std::endl;
    return status;
}

// "1/8" as half a quarter note.
std::optional<double> parseSlot(std::string const& text) {
    constexpr int finest = 64;
    if (text.rfind("1/", 0) != 0) {
        return std::nullopt;
    }
    std::optional<int> const parts = parseWhole(text.substr(2), 1, finest);
    return parts ? std::optional<double>(4.0 / *parts) : std::nullopt;
}

// Empty when the arguments make sense.
std::string takeArguments(CommandArguments const& arguments, ImportOptions& options) {
    Arguments const given(arguments, {}, {"-o", "--voice", "--tune", "--slot", "--transpose"});
    if (!given.problem().empty()) {
        return given.problem();
    }
    if (given.files().size() != 1) {
        return given.files().empty() ? "which file?" : "one file at a time";
    }
    options.source = given.files().front();
    if (!given.value("-o")) {
        return "where to? -o OUT.txt is missing";
    }
    options.song = *given.value("-o");
    options.voice = given.value("--voice");
    if (options.voice && *options.voice != "all" && !parseWhole(*options.voice, 1, 9999)) {
        return "--voice wants a number from 1, or all";
    }
    if (auto const tune = given.value("--tune"); tune && !(options.tune = parseWhole(*tune, 0, 99999999))) {
        return "--tune wants the number of a tune";
    }
    if (auto const slot = given.value("--slot"); slot && !(options.wishes.slotQuarters = parseSlot(*slot))) {
        return "--slot wants a note value from 1/1 to 1/64";
    }
    if (auto const by = given.value("--transpose");
        by && !(options.wishes.semitones = parseWhole(*by, -24, 24))) {
        return "--transpose wants whole semitones, -24 to 24";
    }
    return "";
}

std::optional<SheetMusic> readSheet(ImportOptions const& options, std::string& problem) {
    std::string ending = std::filesystem::path(options.source).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(options.source, ignored)) {
        problem = "there is no such file";
        return std::nullopt;
    }
    if (ending == ".mid" || ending == ".midi" || ending == ".kar") {
        return readMidi(options.source, problem);
    }
    if (ending == ".abc") {
        return readAbc(options.source, options.tune, problem);
    }
    if (ending == ".musicxml" || ending == ".xml") {
        return readMusicXml(options.source, problem);
    }
    problem = ending == ".mxl"
                  ? "this is compressed MusicXML; save it as plain .musicxml, or unpack it with unzip"
                  : "its name must end in .mid, .abc or .musicxml, after what is in it";
    return std::nullopt;
}

SheetVoice together(SheetMusic const& sheet) {
    SheetVoice all{"all voices", {}};
    for (SheetVoice const& voice : sheet.voices) {
        all.notes.insert(all.notes.end(), voice.notes.begin(), voice.notes.end());
    }
    std::stable_sort(all.notes.begin(), all.notes.end(),
                     [](SheetNote const& left, SheetNote const& right) { return left.start < right.start; });
    return all;
}

std::optional<SheetVoice> chooseVoice(SheetMusic const& sheet, std::optional<std::string> const& wanted,
                                      std::string& problem) {
    if (sheet.voices.empty()) {
        problem = "there is no note in it";
        return std::nullopt;
    }
    if (wanted == "all") {
        return together(sheet);
    }
    std::size_t const count = sheet.voices.size();
    if (!wanted && count == 1) {
        return sheet.voices.front();
    }
    std::size_t const number =
        wanted ? static_cast<std::size_t>(parseWhole(*wanted, 1, 9999).value_or(0)) : 0;
    if (number >= 1 && number <= count) {
        return sheet.voices[number - 1];
    }
    problem = "there " + std::string(count == 1 ? "is " : "are ") + counted(count, "voice") +
              " in it; choose with --voice:";
    for (std::size_t i = 0; i < count; ++i) {
        SheetVoice const& voice = sheet.voices[i];
        problem +=
            "\n    " + std::to_string(i + 1) + "  " + voice.name + ", " + counted(voice.notes.size(), "note");
    }
    return std::nullopt;
}

std::string slotName(double quarters) {
    double const parts = 4.0 / quarters;
    bool const isPlain = std::abs(parts - std::round(parts)) < 1e-6;
    return isPlain ? "1/" + fixed(parts, 0) : fixed(quarters, 2) + "/4";
}

void report(ImportOptions const& options, SheetMusic const& sheet, SheetVoice const& voice,
            Arrangement const& arrangement) {
    double const played = arrangement.slotQuarters * 120.0;
    std::cout << options.song << ": " << arrangement.kept << " of " << counted(voice.notes.size(), "note")
              << " of " << quoted(voice.name) << ", " << counted(arrangement.slots.size(), "slot") << '\n'
              << "A slot is a " << slotName(arrangement.slotQuarters) << " note: " << fixed(played, 0)
              << " quarter notes a minute, " << fixed(sheet.quartersPerMinute, 0) << " in the original.\n";
    if (arrangement.semitones != 0) {
        std::cout << "Transposed " << (arrangement.semitones > 0 ? "up " : "down ")
                  << counted(static_cast<std::size_t>(std::abs(arrangement.semitones)), "semitone") << ".\n";
    }
    for (std::string const& remark : sheet.remarks) {
        std::cout << "The reader says: " << cleanUtf8(remark) << '\n';
    }
    if (!sheet.lost.empty() || !arrangement.lost.empty()) {
        std::cout << "Not kept:\n";
    }
    for (auto const* const lost : {&sheet.lost, &arrangement.lost}) {
        for (std::string const& line : *lost) {
            std::cout << "    " << cleanUtf8(line) << '\n';
        }
    }
    for (Problem const& problem : checkSong(arrangement.text())) {
        std::cout << options.song << ':' << problem.line << ':' << problem.column
                  << ": warning: " << problem.text << " [" << problem.code << "]\n";
    }
}

}  // namespace

int importCommand(CommandArguments const& arguments) {
    ImportOptions options;
    if (std::string const problem = takeArguments(arguments, options); !problem.empty()) {
        return fail(statusWrongUse, problem);
    }
    std::string problem;
    std::optional<SheetMusic> const sheet = readSheet(options, problem);
    if (!sheet) {
        return fail(statusFailed, options.source + ": " + problem);
    }
    std::optional<SheetVoice> const voice = chooseVoice(*sheet, options.voice, problem);
    if (!voice) {
        return fail(statusFailed, options.source + ": " + problem);
    }
    std::optional<Arrangement> const arrangement = arrange(*voice, *sheet, options.wishes, problem);
    if (!arrangement) {
        return fail(statusFailed, options.source + ": " + problem);
    }
    std::ofstream out(options.song, std::ios::binary | std::ios::trunc);
    out << arrangement->text();
    if (!out.flush()) {
        return fail(statusFailed, options.song + ": cannot be written");
    }
    report(options, *sheet, *voice, *arrangement);
    return sheet->lost.empty() && arrangement->lost.empty() ? statusDone : statusFailed;
}
