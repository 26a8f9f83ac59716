#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/QuietDescriptor.h"
#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Ear.h"
#include "tools/common/Files.h"
#include "tools/zanto-song/EmbeddedSound.h"
#include "tools/zanto-song/SoundRecording.h"
#include "tools/zanto-song/Take.h"
#include "tools/zanto-song/TakePage.h"
#include "tools/zanto-song/TakePicture.h"
#include "tools/zanto-song/TakeReport.h"
#include "tools/zanto-song/commands.h"
#include "tools/zanto-song/loadSong.h"

namespace {

constexpr const char* usage =
    "zanto-song perform FILE RECORDING... [--start SECONDS] [--ear EAR] [--data FOLDER] [--json | --csv]\n"
    "                   [--picture OUT.svg|OUT.png] [--report OUT.html [--with-sound]] [--force]\n"
    "    Plays recordings to the game and says what score each would have got, what became of every note\n"
    "    and where every penalty came from. The game's clock is a virtual one here, so this takes a "
    "fraction\n"
    "    of the time that playing takes, and the same recording always gets the same score.\n"
    "    RECORDING is a sound file: WAV, FLAC, Ogg or MP3. It is to begin when the song does, two seconds\n"
    "    before the middle of the first slot, as those of zanto-song render do.\n"
    "    --start SECONDS   the song begins this far into the recording\n"
    "    --ear EAR         the ear that listens, plain or fine\n"
    "    --data FOLDER     where the game's notes.txt is, if it is not found\n"
    "    --json, --csv     the same for programs and for spreadsheets\n"
    "    --picture OUT     draw what was due, what was heard, awards and penalties on the staff\n"
    "    --report OUT      a page for a browser: all takes in a table, their pictures, what would have "
    "earned\n"
    "                      more. It needs nothing but itself\n"
    "    --with-sound      put the recordings into the page\n"
    "    --force           replace OUT if there is such a file\n"
    "    ZANTO_MIN_DECIBEL means what it means to the game. Status 1 if a file cannot be read.\n"
    "    Try it: zanto-song render song.txt -o take.wav && zanto-song perform song.txt take.wav\n";

constexpr double longestStartSeconds = 86400.0;

// The game's classes say what is wrong with the player's settings.
void tellAboutSettings(const std::filesystem::path& dataFolder) {
    const QuietDescriptor quietOutput(1);
    const WorkingFolder inData(dataFolder);
    const NoteEstimation estimation;
}

// The take of one recording. What the game's classes print on the way is dropped.
Take takeOf(const std::string& songPath, const std::string& path, double startSeconds,
            const std::filesystem::path& dataFolder) {
    SoundRecording recording(path);
    Song song;
    loadSong(songPath, song);
    const QuietDescriptor quietOutput(1);
    const QuietDescriptor quietErrors(2);
    const WorkingFolder inData(dataFolder);
    Take take = playTake(song, recording, startSeconds);
    if (take.recordedSeconds <= startSeconds) {
        throw Failure("it is over before the song begins");
    }
    recording.expectAudible();
    return take;
}

Page pictureOf(const std::string& title, const std::vector<NamedTake>& takes) {
    std::vector<Page> strips;
    for (const NamedTake& named : takes) {
        const std::vector<Page> more = drawTake(title, named);
        strips.insert(strips.end(), more.begin(), more.end());
    }
    strips.push_back(takeLegend());
    return onSheets(strips);
}

// A take whose sound cannot be had stays in the report without it.
std::string soundOf(const std::string& path, int& status) {
    std::string sound;
    status =
        std::max(status, runCommand("zanto-song perform: " + path, [&] {
                     try {
                         sound = embeddedSound(path);
                     } catch (const Failure& failure) {
                         throw Failure(std::string("its sound is left out of the report: ") + failure.what());
                     }
                     return statusDone;
                 }));
    return sound;
}

std::string pageOf(const std::string& songPath, const std::vector<NamedTake>& takes, bool withSound,
                   int& status) {
    const Judge judge = [&](const std::vector<HeardFrame>& frames) {
        const QuietDescriptor quietErrors(2);  // a typeface that is not here
        Song song;
        loadSong(songPath, song);
        return rescore(song, frames);
    };
    std::vector<ShownTake> shown;
    shown.reserve(takes.size());
    for (const NamedTake& named : takes) {
        shown.push_back(
            {named, adviceFor(named.take, judge), withSound ? soundOf(named.recording, status) : ""});
    }
    return htmlReport(titleOf(songPath), shown);
}

int perform(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--json", "--csv", "--force", "--with-sound"},
                          {"--start", "--ear", "--data", "--picture", "--report"});
    if (given.files().size() < 2) {
        throw WrongUse(given.files().empty() ? "which song?" : "which recording?");
    }
    if (given.has("--json") && given.has("--csv")) {
        throw WrongUse("--json or --csv, not both");
    }
    const std::optional<std::string> picture = given.value("--picture");
    const std::optional<std::string> page = given.value("--report");
    if (picture) {
        expectPictureName("--picture", *picture);
    }
    if (page && std::filesystem::u8path(*page).extension() != ".html") {
        throw WrongUse("--report wants a name that ends in .html");
    }
    if (given.has("--with-sound") && !page) {
        throw WrongUse("--with-sound belongs to --report");
    }
    chooseEar(given);
    const double start =
        given.number("--start", 0.0, longestStartSeconds, "seconds, 0 to 86400").value_or(0.0);
    const std::filesystem::path dataFolder = requireDataFolder(given.value("--data"));
    const std::string& songPath = given.files().front();
    Song song;
    loadSong(songPath, song);
    // Before anything is listened to, so that a name that cannot be had is told at once.
    std::optional<NewFile> pictureFile;
    std::optional<NewFile> pageFile;
    if (picture) {
        pictureFile.emplace(*picture, given.has("--force"), given.files());
    }
    if (page) {
        pageFile.emplace(*page, given.has("--force"), given.files());
    }
    tellAboutSettings(dataFolder);
    std::vector<NamedTake> takes;
    int status = statusDone;
    for (auto path = given.files().begin() + 1; path != given.files().end(); ++path) {
        // One recording that cannot be read does not keep the others from being graded.
        const int taken = runCommand("zanto-song perform: " + *path, [&] {
            takes.push_back({*path, takeOf(songPath, *path, start, dataFolder)});
            return statusDone;
        });
        status = std::max(status, taken);
    }
    const auto report = given.has("--json") ? jsonReport : (given.has("--csv") ? csvReport : textReport);
    std::cout << report(songPath, takes);
    if (picture && !takes.empty()) {
        pictureFile->write(toPicture(pictureOf(titleOf(songPath), takes), *picture, given.value("--data")));
        pictureFile->keep();
    }
    if (page && !takes.empty()) {
        pageFile->write(pageOf(songPath, takes, given.has("--with-sound"), status));
        pageFile->keep();
    }
    return status;
}

}  // namespace

const Command performCommand = {"perform", usage, perform};
