#include "tools/zanto-notes/notesCommand.h"

#include <cstddef>
#include <optional>
#include <ostream>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"
#include "tools/zanto-notes/TableModel.h"
#include "tools/zanto-notes/Transposition.h"

namespace {

constexpr int statusDone = 0;
constexpr int statusFailed = 1;
constexpr int statusWrongUse = 2;

constexpr double lowestA4Hz = 380.0;
constexpr double highestA4Hz = 480.0;
constexpr int mostSemitones = 36;

constexpr char const* usage =
    "zanto-notes: writes the note table of the game, notes.txt, to standard output.\n"
    "\n"
    "zanto-notes [--a4 HZ] [--transpose SEMITONES | --instrument NAME] [--range LOW HIGH]\n"
    "  --a4 HZ                the pitch of A4, 380 to 480; 440 if not given\n"
    "  --transpose SEMITONES  how far a written note sounds from its name, -36 to 36: with -2 a sounding B\n"
    "                         flat is a C\n"
    "  --instrument NAME      the same by the instrument's name\n"
    "  --range LOW HIGH       the sounding notes to be heard; C3 B5 if not given\n"
    "  --help, --version      tell about the program\n"
    "\n";

/// `--range LOW HIGH` as one option with one value, "LOW HIGH".
std::vector<std::string> joinRange(std::vector<std::string> const& arguments) {
    std::vector<std::string> joined;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        joined.push_back(arguments[i]);
        if (arguments[i] == "--range" && i + 2 < arguments.size()) {
            joined.push_back(arguments[i + 1] + ' ' + arguments[i + 2]);
            i += 2;
        }
    }
    return joined;
}

std::string knownInstruments() {
    std::string names;
    for (Transposition const& transposition : transpositions()) {
        names += (names.empty() ? "" : ", ") + transposition.instrument;
    }
    return names;
}

/// Each of these sets what its option asks for in `model` and gives what is wrong with the option, if
/// anything is.

std::string setTuning(std::string const& value, TableModel& model) {
    std::optional<double> const a4Hz = parseNumber(value, lowestA4Hz, highestA4Hz);
    if (!a4Hz) {
        return "--a4: " + quoted(value) + " is no tuning from " + fixed(lowestA4Hz, 0) + " to " +
               fixed(highestA4Hz, 0) + " Hz";
    }
    model.a4Hz = *a4Hz;
    return "";
}

std::string setTransposition(std::string const& value, TableModel& model) {
    std::optional<int> const semitones = parseWhole(value, -mostSemitones, mostSemitones);
    if (!semitones) {
        return "--transpose: " + quoted(value) + " is no whole number from -" +
               std::to_string(mostSemitones) + " to " + std::to_string(mostSemitones);
    }
    model.transposeSemitones = *semitones;
    return "";
}

std::string setInstrument(std::string const& value, TableModel& model) {
    std::optional<int> const semitones = transpositionOf(value);
    if (!semitones) {
        return "--instrument: " + quoted(value) + " is not one of " + knownInstruments();
    }
    model.transposeSemitones = *semitones;
    return "";
}

std::string setRange(std::string const& value, TableModel& model) {
    std::size_t const blank = value.find(' ');
    if (blank == std::string::npos) {
        return "--range: two notes are needed, such as C3 B5";
    }
    for (std::string const& name : {value.substr(0, blank), value.substr(blank + 1)}) {
        std::optional<int> const pitch = parsePitch(name);
        if (!pitch) {
            return "--range: " + quoted(name) + " is no note such as C4, F#3 or Bb5";
        }
        double const pitchHz = pitchFrequencyHz(model.a4Hz, *pitch);
        if (pitchHz < lowestScannedHz() || pitchHz > highestScannedHz()) {
            return "--range: " + name + " at " + fixed(pitchHz, 1) + " Hz is outside of what is scanned, " +
                   fixed(lowestScannedHz(), 1) + " to " + fixed(highestScannedHz(), 1) + " Hz";
        }
    }
    model.lowestPitch = *parsePitch(value.substr(0, blank));
    model.highestPitch = *parsePitch(value.substr(blank + 1));
    if (model.lowestPitch > model.highestPitch) {
        return "--range: " + value.substr(0, blank) + " is above " + value.substr(blank + 1);
    }
    return "";
}

std::string readModel(Arguments const& given, TableModel& model) {
    struct Option {
        char const* name;
        std::string (*set)(std::string const& value, TableModel& model);
    };
    // The range is judged in the tuning that was asked for.
    static constexpr Option options[] = {{"--a4", setTuning},
                                         {"--transpose", setTransposition},
                                         {"--instrument", setInstrument},
                                         {"--range", setRange}};
    if (given.value("--transpose") && given.value("--instrument")) {
        return "--instrument: not together with --transpose";
    }
    for (Option const& option : options) {
        if (std::optional<std::string> const value = given.value(option.name)) {
            std::string problem = option.set(*value, model);
            if (!problem.empty()) {
                return problem;
            }
        }
    }
    return "";
}

}  // namespace

int notesCommand(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err) {
    Arguments const given(joinRange(arguments), {"--help", "--version"},
                          {"--a4", "--transpose", "--instrument", "--range"});
    TableModel model;
    std::string problem = given.problem();
    if (problem.empty() && !given.files().empty()) {
        problem = quoted(given.files().front()) + " is none of its options";
    }
    if (problem.empty() && given.has("--help")) {
        out << usage << "Instruments: " << knownInstruments() << ".\n";
        return statusDone;
    }
    if (problem.empty() && given.has("--version")) {
        out << "zanto-notes " << ZANTO_VERSION << '\n';
        return statusDone;
    }
    if (problem.empty()) {
        problem = readModel(given, model);
    }
    if (!problem.empty()) {
        err << "zanto-notes: " << problem << std::endl;
        return statusWrongUse;
    }
    writeTable(out, tableRows(model));
    if (!out.flush()) {
        err << "zanto-notes: the table cannot be written" << std::endl;
        return statusFailed;
    }
    return statusDone;
}
