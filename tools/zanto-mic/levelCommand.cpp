#include <unistd.h>

#include <cmath>
#include <iostream>

#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Ear.h"
#include "tools/zanto-mic/LevelLine.h"
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

constexpr long stepsPerLine = 20;  // where there is no terminal

// Without a terminal: the loudest moment of each second.
void meter(Listener& listener, double seconds, bool isTerminal) {
    Moment held = {-100.0, 0.0, 0.0, 0.0, {}, {}};
    const long steps = std::lround(seconds / Listener::stepSeconds);
    for (long step = 0; step < steps && !micInterrupted; ++step) {
        const Moment moment = listener.next();
        if (isTerminal) {
            std::cout << '\r' << levelLine(moment, listener.minDecibel()) << std::flush;
            continue;
        }
        if (step % stepsPerLine == 0 || moment.loudestDb > held.loudestDb) {
            held = moment;
        }
        if ((step + 1) % stepsPerLine == 0) {
            std::cout << levelText(held, listener.minDecibel()) << '\n' << std::flush;
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
