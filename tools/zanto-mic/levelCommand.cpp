#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>

#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Text.h"
#include "tools/zanto-mic/Command.h"
#include "tools/zanto-mic/Listener.h"
#include "tools/zanto-mic/Microphone.h"

char const* const micLevelUsage =
    "zanto-mic level [--seconds N] [--data FOLDER]\n"
    "    A meter of the game's own hearing: the loudest level, the noise, the notes. The bar reaches from "
    "-100 to\n"
    "    0 dB, its mark stands at the least level that the game listens to. Ctrl-C ends it.\n"
    "    --seconds N     for so long; without a terminal, 10 unless said otherwise\n"
    "    --data FOLDER   where the game's notes.txt is, if it is not found\n";

std::atomic<bool> micInterrupted{false};

namespace {

constexpr double lowestDb = -100.0;
constexpr int barWidth = 40;
constexpr std::size_t lineWidth = 100;  // blanks out what an earlier line left behind
constexpr long stepsPerLine = 20;       // where there is no terminal

int fail(int status, std::string const& message) {
    std::cerr << "zanto-mic level: " << message << std::endl;
    return status;
}

int position(double levelDb) {
    double const share = (std::max(levelDb, lowestDb) - lowestDb) / -lowestDb;
    return std::clamp(static_cast<int>(std::lround(share * barWidth)), 0, barWidth);
}

std::string bar(double levelDb, double minDecibel) {
    std::string text(barWidth, '.');
    int const reached = position(levelDb);
    std::fill(text.begin(), text.begin() + reached, '#');
    text[static_cast<std::size_t>(std::min(position(minDecibel), barWidth - 1))] = '|';
    return "[" + text + "]";
}

std::string levelText(double levelDb) {
    return padLeft(std::isfinite(levelDb) ? fixed(levelDb, 1) : "silent", 6);
}

std::string lineOf(Moment const& moment, double minDecibel) {
    std::string notes;
    for (Notes::NoteID const& note : moment.notes) {
        notes += (notes.empty() ? "" : " ") + Notes::idToName(note);
    }
    return "peak " + levelText(moment.loudestDb) + " dB  noise " + levelText(moment.noiseDb) + " dB  " +
           bar(moment.loudestDb, minDecibel) + (moment.peakSample >= 0.999 ? " CLIPS" : "") +
           (notes.empty() ? "" : "  " + notes);
}

// Without a terminal: the loudest moment of each second.
void meter(Listener& listener, double seconds, bool isTerminal) {
    Moment held = {lowestDb, 0.0, 0.0, 0.0, {}};
    long const steps = std::lround(seconds / Listener::stepSeconds);
    for (long step = 0; step < steps && !micInterrupted; ++step) {
        Moment const moment = listener.next();
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

int micLevelCommand(MicArguments const& arguments, Microphone& microphone) {
    Arguments const given(arguments, {}, {"--seconds", "--data"});
    if (!given.problem().empty() || !given.files().empty()) {
        return fail(micWrongUse, given.problem().empty() ? "it takes no files" : given.problem());
    }
    bool const isTerminal = isatty(STDOUT_FILENO) == 1;
    std::optional<double> const seconds =
        parseNumber(given.value("--seconds").value_or(isTerminal ? "1e9" : "10"), 0.1, 1e9);
    if (!seconds) {
        return fail(micWrongUse, "--seconds wants a number from 0.1");
    }
    std::optional<std::filesystem::path> const data = findDataFolder(given.value("--data"));
    if (!data) {
        return fail(micProblem, "the game's notes.txt is not found; say where it is with --data FOLDER");
    }
    std::string problem;
    if (!microphone.start(problem)) {
        std::cout << problem << '\n';
        return micProblem;
    }
    Listener listener(microphone, *data);
    meter(listener, *seconds, isTerminal);
    return micFine;
}
