#include <iostream>
#include <string>

#include "audio/QuietDescriptor.h"
#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Listening.h"
#include "tools/zanto-song/SoundRecording.h"
#include "tools/zanto-song/Transcription.h"
#include "tools/zanto-song/commands.h"

namespace {

constexpr const char* usage =
    "zanto-song listen RECORDING -o OUT.txt [--tempo N] [--force]\n"
    "    Writes down as a song what was played, by the fine ear: naturals of any octave, each in the slot "
    "that\n"
    "    its beginning is nearest to, for the number of slots that it lasted. Says what was unsure, and "
    "where.\n"
    "    Play one slot to a beat, 80 to 140 a minute, and strike each note anew.\n"
    "    --tempo N    slots a minute, 30 to 300, instead of finding the beat\n"
    "    --force      replace OUT.txt if there is such a file\n"
    "    Status 1 if something was unsure, or when it is no melody.\n"
    "    Try it: zanto-song render song.txt -o take.wav && zanto-song listen take.wav -o heard.txt\n";

constexpr double secondsPerMinute = 60.0;
constexpr int longestHours = 4;  // all of it is in memory

std::vector<ListenedFrame> framesOf(const std::string& path) {
    SoundRecording recording(path);
    if (recording.seconds() > longestHours * 3600.0) {
        throw Failure("it is longer than " + std::to_string(longestHours) + " hours");
    }
    const QuietDescriptor quietOutput(1);
    std::vector<ListenedFrame> frames = listenTo(recording);
    recording.expectAudible();
    return frames;
}

std::string remarkOn(const HeardNote& note) {
    std::string remark = "    slot " + std::to_string(note.slot) + ", at " + fixed(note.startSeconds, 2) +
                         " s: " + Notes::idToName(note.note) +
                         (note.length == 1 ? "" : std::to_string(note.length));
    remark += note.isSureOfStart ? "" : " begins between two slots";
    remark += note.isSureOfStart || note.isSureOfLength ? "" : ", and";
    remark += note.isSureOfLength ? "" : " may have another length";
    return remark + "\n";
}

int listen(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--force"}, {"-o", "--tempo"});
    const std::string& path = given.onlyFile("recording");
    const std::optional<std::string> out = given.value("-o");
    if (!out) {
        throw WrongUse("where to? -o OUT.txt is missing");
    }
    const std::optional<double> tempo = given.number("--tempo", 30.0, 300.0, "slots a minute, 30 to 300");
    NewFile file(*out, given.has("--force"), {path});
    Transcription written;
    const int status = runCommand("zanto-song listen: " + path, [&] {
        written = transcribe(framesOf(path), tempo);
        return statusDone;
    });
    if (status != statusDone) {
        return status;
    }
    file.write(songOf(written));
    file.keep();
    std::string unsure;
    for (const HeardNote& note : written.notes) {
        unsure += note.isSureOfStart && note.isSureOfLength ? "" : remarkOn(note);
    }
    std::cout << *out << ": " << counted(written.notes.size(), "note") << ", "
              << fixed(secondsPerMinute / written.slotSeconds, 1) << " slots a minute, the first at "
              << fixed(written.firstSlotSeconds, 2) << " s\n"
              << (unsure.empty() ? "" : "Unsure:\n") << unsure;
    return unsure.empty() ? statusDone : statusFailed;
}

}  // namespace

const Command listenCommand = {"listen", usage, listen};
