#include <sndfile.h>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "game/Song.h"
#include "tools/zanto-song/Command.h"
#include "tools/zanto-song/Instrument.h"
#include "tools/zanto-song/Performance.h"
#include "tools/zanto-song/Render.h"

char const* const renderUsage =
    "zanto-song render FILE -o OUT.wav [--instrument NAME] [--octave N] [--ahead SECONDS] [--gap SECONDS]\n"
    "                  [--metronome]\n"
    "    Writes the song as sound: 48000 Hz, one channel, 16 bit. The sound starts with the game's two\n"
    "    seconds of lead-in, so that one who starts both at once is in time.\n"
    "    --instrument NAME   flute (unless said otherwise), clarinet, organ, piano, music-box or sine\n"
    "    --octave N          the octave of the note C, 2 to 7; 5 unless said otherwise: C5 to B5\n"
    "    --ahead SECONDS     begin each note this much before its slot opens, -1 to 1; 0.08 unless said\n"
    "                        otherwise, which makes up for the time that hearing a note takes\n"
    "    --gap SECONDS       end each note this much earlier still, 0 to 0.4; 0.12 unless said otherwise\n"
    "    --metronome         tick whenever a slot opens\n";

namespace {

constexpr std::size_t blockSamples = 4096;

struct RenderOptions {
    std::string songPath;
    std::string soundPath;
    Instrument const* instrument = &instruments().front();
    PlayingStyle style{5, 0.08, 0.12};
    bool metronome = false;
};

int fail(int status, std::string const& message) {
    std::cerr << "zanto-song render: " << message << std::endl;
    return status;
}

// The whole of `text` as a number within the bounds.
template <typename Number>
bool parse(std::string const& text, Number least, Number most, Number& value) {
    char const* const end = text.data() + text.size();
    Number parsed{};
    auto const [stopped, error] = std::from_chars(text.data(), end, parsed);
    if (error != std::errc() || stopped != end || !(parsed >= least && parsed <= most)) {
        return false;
    }
    value = parsed;
    return true;
}

// Takes one option with its value. Empty when that went well, else what is wrong with it.
std::string takeOption(std::string const& option, std::string const& value, RenderOptions& options) {
    if (option == "-o") {
        options.soundPath = value;
        return value.empty() ? "-o wants a file name" : "";
    }
    if (option == "--instrument") {
        Instrument const* const found = findInstrument(value);
        if (!found) {
            return "there is no instrument \"" + value + "\"";
        }
        options.instrument = found;
        return "";
    }
    if (option == "--octave") {
        return parse(value, 2, 7, options.style.octave) ? "" : "--octave wants a whole number, 2 to 7";
    }
    if (option == "--ahead") {
        return parse(value, -1.0, 1.0, options.style.aheadSeconds) ? "" : "--ahead wants seconds, -1 to 1";
    }
    if (option == "--gap") {
        return parse(value, 0.0, 0.4, options.style.gapSeconds) ? "" : "--gap wants seconds, 0 to 0.4";
    }
    return "unknown option " + option;
}

std::string takeArguments(CommandArguments const& arguments, RenderOptions& options) {
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        std::string const& argument = arguments[index];
        if (argument == "--metronome") {
            options.metronome = true;
        } else if (argument.size() > 1 && argument.front() == '-') {
            std::string const value = index + 1 < arguments.size() ? arguments[index + 1] : "";
            if (std::string problem = takeOption(argument, value, options); !problem.empty()) {
                return problem;
            }
            ++index;
        } else if (options.songPath.empty() && !argument.empty()) {
            options.songPath = argument;
        } else {
            return "one song at a time, \"" + argument + "\" is one too many";
        }
    }
    if (options.songPath.empty()) {
        return "which song?";
    }
    return options.soundPath.empty() ? "where to? -o OUT.wav is missing" : "";
}

// Loads the song; what it prints about a fault, without the line's end, when it does not load.
std::string loadSong(Song& song, std::string const& path) {
    std::ostringstream printed;
    std::streambuf* const errors = std::cerr.rdbuf(printed.rdbuf());
    bool const loaded = song.load(path.c_str());
    std::cerr.rdbuf(errors);
    if (loaded) {
        return "";
    }
    std::string reason = printed.str();
    reason.erase(std::remove(reason.begin(), reason.end(), '\n'), reason.end());
    return reason.empty() ? "it does not load" : reason;
}

// Empty when the file is written whole.
std::string writeSound(Renderer& renderer, std::string const& path) {
    SF_INFO format{};
    format.samplerate = Renderer::sampleRate;
    format.channels = 1;
    format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> file(sf_open(path.c_str(), SFM_WRITE, &format), sf_close);
    if (!file) {
        return sf_strerror(nullptr);
    }
    std::vector<float> block(blockSamples);
    while (std::size_t const count = renderer.next(block)) {
        auto const frames = static_cast<sf_count_t>(count);
        if (sf_write_float(file.get(), block.data(), frames) != frames) {
            return sf_strerror(file.get());
        }
    }
    return sf_close(file.release()) == 0 ? "" : "the file could not be closed";
}

}  // namespace

int renderCommand(CommandArguments const& arguments) {
    RenderOptions options;
    if (std::string const problem = takeArguments(arguments, options); !problem.empty()) {
        return fail(statusWrongUse, problem);
    }
    Song song;
    if (std::string const reason = loadSong(song, options.songPath); !reason.empty()) {
        return fail(statusFailed, options.songPath + ": " + reason);
    }
    Renderer renderer(perform(song, options.style), songSeconds(song), *options.instrument);
    if (options.metronome) {
        renderer.addMetronome();
    }
    if (std::string const reason = writeSound(renderer, options.soundPath); !reason.empty()) {
        return fail(statusFailed, options.soundPath + ": " + reason);
    }
    return statusDone;
}
