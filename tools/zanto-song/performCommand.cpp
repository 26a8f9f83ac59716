#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/QuietStream.h"
#include "tools/zanto-song/Command.h"
#include "tools/zanto-song/SoundRecording.h"
#include "tools/zanto-song/Take.h"
#include "tools/zanto-song/TakeReport.h"

char const* const performUsage =
    "zanto-song perform FILE RECORDING... [--start SECONDS] [--data FOLDER] [--json | --csv]\n"
    "    Plays recordings to the game and says what score each would have got, what became of every note\n"
    "    and where every penalty came from. The game's clock is a virtual one here, so this takes a "
    "fraction\n"
    "    of the time that playing takes, and the same recording always gets the same score.\n"
    "    RECORDING is a sound file: WAV, FLAC, Ogg or MP3. It is to begin when the song does, two seconds\n"
    "    before the middle of the first slot, as those of zanto-song render do.\n"
    "    --start SECONDS   the song begins this far into the recording\n"
    "    --data FOLDER     where the game's notes.txt is, if it is not found\n"
    "    --json, --csv     the same for programs and for spreadsheets\n"
    "    ZANTO_MIN_DECIBEL means what it means to the game. Status 1 if a file cannot be read.\n"
    "    Try it: zanto-song render song.txt -o take.wav && zanto-song perform song.txt take.wav\n";

namespace {

constexpr double longestStartSeconds = 86400.0;

int fail(int status, std::string const& message) {
    std::cerr << "zanto-song perform: " << message << std::endl;
    return status;
}

// The take of one recording, none with a reason when a file cannot be read. What the game's classes print on
// the way is dropped.
std::optional<Take> take(std::string const& songPath, std::string const& path, double startSeconds,
                         std::filesystem::path const& dataFolder, std::string& problem) {
    std::optional<SoundRecording> const recording = readRecording(path, problem);
    if (!recording) {
        return std::nullopt;
    }
    if (startSeconds >= recording->seconds()) {
        problem = "it is over before the song begins";
        return std::nullopt;
    }
    QuietDescriptor const quietOutput(1);
    QuietDescriptor const quietErrors(2);
    Song song;
    song.load(songPath.c_str());
    WorkingFolder const inData(dataFolder);
    return playTake(song, *recording, startSeconds);
}

bool loads(std::string const& songPath) {
    QuietErrors const quiet;
    return Song().load(songPath.c_str());
}

}  // namespace

int performCommand(CommandArguments const& arguments) {
    Arguments const given(arguments, {"--json", "--csv"}, {"--start", "--data"});
    if (!given.problem().empty()) {
        return fail(statusWrongUse, given.problem());
    }
    if (given.files().size() < 2) {
        return fail(statusWrongUse, given.files().empty() ? "which song?" : "which recording?");
    }
    if (given.has("--json") && given.has("--csv")) {
        return fail(statusWrongUse, "--json or --csv, not both");
    }
    std::optional<double> const start =
        parseNumber(given.value("--start").value_or("0"), 0.0, longestStartSeconds);
    if (!start) {
        return fail(statusWrongUse, "--start wants seconds, 0 and more");
    }
    std::optional<std::filesystem::path> const dataFolder = findDataFolder(given.value("--data"));
    if (!dataFolder) {
        return fail(statusFailed, "the game's notes.txt is not found; say where it is with --data FOLDER");
    }
    std::string const& song = given.files().front();
    if (!loads(song)) {
        return fail(statusFailed, song + ": does not load; zanto-song check says why");
    }
    std::vector<NamedTake> takes;
    int status = statusDone;
    for (auto path = given.files().begin() + 1; path != given.files().end(); ++path) {
        std::string problem;
        if (std::optional<Take> played = take(song, *path, *start, *dataFolder, problem)) {
            takes.push_back({*path, std::move(*played)});
        } else {
            status = fail(statusFailed, *path + ": " + problem);
        }
    }
    if (given.has("--json")) {
        std::cout << jsonReport(song, takes);
    } else if (given.has("--csv")) {
        std::cout << csvReport(song, takes);
    } else {
        std::cout << textReport(song, takes);
    }
    return status;
}
