#include <cmath>
#include <iostream>
#include <optional>

#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/zanto-mic/Command.h"
#include "tools/zanto-mic/Listener.h"
#include "tools/zanto-mic/MicCheck.h"
#include "tools/zanto-mic/Microphone.h"

char const* const micCheckUsage =
    "zanto-mic check [--data FOLDER]\n"
    "    Five seconds of quiet, then a note: says whether it was heard, how far it stood above the noise, "
    "what it\n"
    "    was taken for, whether the level is too high or too low, and which ZANTO_MIN_DECIBEL to use.\n"
    "    --data FOLDER   where the game's notes.txt is, if it is not found\n"
    "    Status 0 when one can play as it is, 1 when something is to be done.\n";

namespace {

constexpr double settlingSeconds =
    0.5;  // what recordings begin with: clicks, and a buffer that is not full yet
constexpr double quietSeconds = 5.0;
constexpr double noteSeconds = 5.0;

int fail(int status, std::string const& message) {
    std::cerr << "zanto-mic check: " << message << std::endl;
    return status;
}

std::vector<Moment> listen(Listener& listener, double seconds) {
    auto const steps = static_cast<std::size_t>(std::lround(seconds / Listener::stepSeconds));
    std::vector<Moment> moments;
    moments.reserve(steps);
    while (moments.size() < steps) {
        moments.push_back(listener.next());
    }
    return moments;
}

}  // namespace

int micCheckCommand(MicArguments const& arguments, Microphone& microphone) {
    Arguments const given(arguments, {}, {"--data"});
    if (!given.problem().empty() || !given.files().empty()) {
        return fail(micWrongUse, given.problem().empty() ? "it takes no files" : given.problem());
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
    std::cout << "Please be quiet for five seconds ..." << std::endl;
    listen(listener, settlingSeconds);
    std::vector<Moment> const quiet = listen(listener, quietSeconds);
    std::cout << "Now play or sing one note, and hold it until this is over (five seconds) ..." << std::endl;
    std::vector<Moment> const note = listen(listener, noteSeconds);
    MicFindings const findings = judge(quiet, note, listener.minDecibel());
    std::cout << '\n' << inWords(findings);
    return isFine(findings) ? micFine : micProblem;
}
