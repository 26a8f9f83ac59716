#include <iostream>
#include <string>
#include <vector>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/Text.h"
#include "tools/common/WavFile.h"
#include "tools/zanto-song/Instrument.h"
#include "tools/zanto-song/Performance.h"
#include "tools/zanto-song/Render.h"
#include "tools/zanto-song/commands.h"
#include "tools/zanto-song/loadSong.h"

namespace {

constexpr const char* usage =
    "zanto-song render FILE -o OUT.wav [--instrument NAME] [--octave N] [--ahead SECONDS] [--gap SECONDS]\n"
    "                  [--metronome] [--force]\n"
    "    Writes the song as sound: 48000 Hz, one channel, 16 bit. The sound starts with the game's two\n"
    "    seconds of lead-in, so that one who starts both at once is in time.\n"
    "    --instrument NAME   flute (unless said otherwise), clarinet, organ, piano, music-box or sine\n"
    "    --octave N          the octave of the note C, 2 to 7; 5 unless said otherwise: C5 to B5. The\n"
    "                        game hears hardly any note of octaves 6 and 7\n"
    "    --ahead SECONDS     begin each note this much before its slot opens, -1 to 1; 0.08 unless said\n"
    "                        otherwise, which makes up for the time that hearing a note takes\n"
    "    --gap SECONDS       end each note this much earlier still, 0 to 0.4; 0.12 unless said otherwise\n"
    "    --metronome         tick whenever a slot opens\n"
    "    --force             replace OUT.wav if there is such a file\n";

constexpr std::size_t blockSamples = 4096;
constexpr int highestHeardOctave = 5;

void writeSound(Renderer& renderer, const NewFile& out, const std::string& path) {
    WavFile file(out, path);
    std::vector<float> block(blockSamples);
    while (const std::size_t count = renderer.next(block)) {
        file.write(block, count);
    }
    file.close();
}

int render(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--metronome", "--force"},
                          {"-o", "--instrument", "--octave", "--ahead", "--gap"});
    const std::string& path = given.onlyFile("song");
    const std::optional<std::string> out = given.value("-o");
    if (!out) {
        throw WrongUse("where to? -o OUT.wav is missing");
    }
    const std::string instrumentName = given.value("--instrument").value_or(instruments().front().name);
    const Instrument* const instrument = findInstrument(instrumentName);
    if (instrument == nullptr) {
        throw WrongUse("there is no instrument " + quoted(instrumentName));
    }
    const PlayingStyle style{given.whole("--octave", 2, 7, "a whole number, 2 to 7").value_or(5),
                             given.number("--ahead", -1.0, 1.0, "seconds, -1 to 1").value_or(0.08),
                             given.number("--gap", 0.0, 0.4, "seconds, 0 to 0.4").value_or(0.12)};
    if (style.octave > highestHeardOctave) {
        std::cerr << "zanto-song render: the game hears hardly any note of octave " << style.octave
                  << "; it hears octaves 3 to 5 best" << std::endl;
    }
    Song song;
    loadSong(path, song);
    Renderer renderer(perform(song, style), songSeconds(song), *instrument);
    if (given.has("--metronome")) {
        renderer.addMetronome();
    }
    NewFile file(*out, given.has("--force"), {path});
    writeSound(renderer, file, *out);
    file.keep();
    return statusDone;
}

}  // namespace

const Command renderCommand = {"render", usage, render};
