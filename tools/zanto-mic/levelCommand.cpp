#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Ear.h"
#include "tools/common/Text.h"
#include "tools/zanto-mic/Listener.h"
#include "tools/zanto-mic/commands.h"

const char* const micLevelUsage =
    "zanto-mic level [--seconds N] [--ear EAR] [--data FOLDER]\n"
    "    A meter of the game's own hearing: the loudest level, the noise, the notes. The bar reaches from "
    "-100 to\n"
    "    0 dB, its mark stands at the least level that the game listens to. Ctrl-C ends it.\n"
    "    --seconds N     for so long; without a terminal, 10 unless said otherwise\n"
    "    --ear EAR       the ear that listens, plain or fine\n"
    "    --data FOLDER   where the game's notes.txt is, if it is not found\n";

std::atomic<bool> micInterrupted{false};

namespace {

constexpr double lowestDb = -100.0;
constexpr int barWidth = 40;
constexpr std::size_t lineWidth = 100;  // blanks out what an earlier line left behind
constexpr long stepsPerLine = 20;       // where there is no terminal

int position(double levelDb) {
    const double share = (std::max(levelDb, lowestDb) - lowestDb) / -lowestDb;
    return std::clamp(static_cast<int>(std::lround(share * barWidth)), 0, barWidth);
}

std::string bar(double levelDb, double minDecibel) {
    std::string text(barWidth, '.');
    const int reached = position(levelDb);
    std::fill(text.begin(), text.begin() + reached, '#');
    text[static_cast<std::size_t>(std::min(position(minDecibel), barWidth - 1))] = '|';
    return "[" + text + "]";
}

std::string levelText(double levelDb) {
    return padLeft(std::isfinite(levelDb) ? fixed(levelDb, 1) : "silent", 6);
}

std::string lineOf(const Moment& moment, double minDecibel) {
    std::string notes;
    for (const Notes::NoteID& note : moment.notes) {
        notes += (notes.empty() ? "" : " ") + Notes::idToName(note);
    }
    return "peak " + levelText(moment.loudestDb) + " dB  noise " + levelText(moment.noiseDb) + " dB  " +
           bar(moment.loudestDb, minDecibel) + (moment.peakSample >= 0.999 ? " CLIPS" : "") +
           (notes.empty() ? "" : "  " + notes);
}

// Without a terminal: the loudest moment of each second.
void meter(Listener& listener, double seconds, bool isTerminal) {
    Moment held = {lowestDb, 0.0, 0.0, 0.0, {}, {}};
    const long steps = std::lround(seconds / Listener::stepSeconds);
    for (long step = 0; step < steps && !micInterrupted; ++step) {
        const Moment moment = listener.next();
        if (isTerminal) {
            std::cout << '\r' << padRight(lineOf(moment, listener.minDecibel()), lineWidth) << std::flush;
            continue;
        }
        if (step % stepsPerLine == 0 || moment.loudestDb > held.loudestDb) {
            held = moment;
        }
        if ((step + 1) % stepsPerLine == 0) {
            std::cout << lineOf(held, listener.minDecibel()) << '\n' << std::flush;
        }
    }
    if (isTerminal) {
        std::cout << '\n';
    }
}

}  // namespace

int micLevelCommand(const CommandArguments& arguments, Microphone& microphone) {
    const Arguments given(arguments, {}, {"--seconds", "--ear", "--data"});
    given.expectNoFiles();
    chooseEar(given);
    const bool isTerminal = isatty(STDOUT_FILENO) == 1;
    const double seconds =
        given.number("--seconds", 0.1, 1e9, "a number from 0.1").value_or(isTerminal ? 1e9 : 10.0);
    Listener listener(microphone, requireDataFolder(given.value("--data")));
    meter(listener, seconds, isTerminal);
    return statusDone;
}
