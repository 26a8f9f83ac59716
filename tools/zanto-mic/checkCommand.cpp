#include <cmath>
#include <iostream>

#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/Ear.h"
#include "tools/zanto-mic/Listener.h"
#include "tools/zanto-mic/MicCheck.h"
#include "tools/zanto-mic/commands.h"

const char* const micCheckUsage =
    "zanto-mic check [--ear EAR] [--data FOLDER]\n"
    "    Five seconds of quiet, then a note: says whether it was heard, how far it stood above the noise, "
    "what it\n"
    "    was taken for, whether the level is too high or too low, and which ZANTO_MIN_DECIBEL to use.\n"
    "    Listens with both ears, and says so when the fine one would serve better.\n"
    "    --ear EAR       the ear that you play with, plain or fine\n"
    "    --data FOLDER   where the game's notes.txt is, if it is not found\n"
    "    Status 0 when one can play as it is, 1 when something is to be done.\n";

namespace {

constexpr double settlingSeconds = 0.5;  // a recording begins with clicks, and the buffer is not full yet
constexpr double quietSeconds = 5.0;
constexpr double noteSeconds = 5.0;

std::vector<Moment> listen(Listener& listener, double seconds) {
    const auto steps = static_cast<std::size_t>(std::lround(seconds / Listener::stepSeconds));
    std::vector<Moment> moments;
    moments.reserve(steps);
    while (moments.size() < steps) {
        moments.push_back(listener.next());
    }
    return moments;
}

}  // namespace

int micCheckCommand(const CommandArguments& arguments, Microphone& microphone) {
    const Arguments given(arguments, {}, {"--ear", "--data"});
    given.expectNoFiles();
    chooseEar(given);
    Listener listener(microphone, requireDataFolder(given.value("--data")));
    const std::string monitor = monitorWords(microphone);
    std::cout << monitor << "Please be quiet for five seconds ..." << std::endl;
    listen(listener, settlingSeconds);
    const std::vector<Moment> quiet = listen(listener, quietSeconds);
    std::cout << "Now play or sing one note, and hold it until this is over (five seconds) ..." << std::endl;
    const std::vector<Moment> note = listen(listener, noteSeconds);
    const MicFindings findings = judge(quiet, note, listener.minDecibel());
    std::cout << '\n' << inWords(findings);
    return isFine(findings) && monitor.empty() ? statusDone : statusFailed;
}
