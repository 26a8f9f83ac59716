#include "tools/zanto-notes/notesCommand.h"

#include <cstddef>
#include <iostream>
#include <optional>

#include "tools/common/Arguments.h"
#include "tools/common/Text.h"
#include "tools/zanto-notes/TableModel.h"
#include "tools/zanto-notes/Transposition.h"

namespace {

constexpr double lowestA4Hz = 380.0;
constexpr double highestA4Hz = 480.0;
constexpr int mostSemitones = 36;

constexpr const char* usage =
    "zanto-notes: writes the note table of the game, notes.txt, to standard output.\n"
    "\n"
    "zanto-notes [--a4 HZ] [--transpose SEMITONES | --instrument NAME] [--range LOW HIGH]\n"
    "  --a4 HZ                the pitch of A4, 380 to 480; 440 if not given\n"
    "  --transpose SEMITONES  how far a written note sounds from its name, -36 to 36: with -2 a sounding B\n"
    "                         flat is a C\n"
    "  --instrument NAME      the same by the instrument's name\n"
    "  --range LOW HIGH       the sounding notes to be heard; C3 B5 if not given\n"
    "  --help                 print this text\n"
    "  --version              print the version\n"
    "\n";

/// `--range LOW HIGH` as one option with one value, "LOW HIGH".
std::vector<std::string> joinRange(const std::vector<std::string>& arguments) {
    std::vector<std::string> joined;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        joined.push_back(arguments[i]);
        if (arguments[i] == "--") {
            joined.insert(joined.end(), arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                          arguments.end());
            break;
        }
        if (arguments[i] == "--range" && i + 2 < arguments.size()) {
            joined.push_back(arguments[i + 1] + ' ' + arguments[i + 2]);
            i += 2;
        }
    }
    return joined;
}

std::string knownInstruments() {
    std::string names;
    for (const Transposition& transposition : transpositions()) {
        names += (names.empty() ? "" : ", ") + transposition.instrument;
    }
    return names;
}

/// Each of these sets what its option asks for in `model`.

void setTuning(const std::string& value, TableModel& model) {
    const std::optional<double> a4Hz = parseNumber(value, lowestA4Hz, highestA4Hz);
    if (!a4Hz) {
        throw WrongUse("--a4: " + quoted(value) + " is no tuning from " + fixed(lowestA4Hz, 0) + " to " +
                       fixed(highestA4Hz, 0) + " Hz");
    }
    model.a4Hz = *a4Hz;
}

void setTransposition(const std::string& value, TableModel& model) {
    const std::optional<int> semitones = parseWhole(value, -mostSemitones, mostSemitones);
    if (!semitones) {
        throw WrongUse("--transpose: " + quoted(value) + " is no whole number from -" +
                       std::to_string(mostSemitones) + " to " + std::to_string(mostSemitones));
    }
    model.transposeSemitones = *semitones;
}

void setInstrument(const std::string& value, TableModel& model) {
    const std::optional<int> semitones = transpositionOf(value);
    if (!semitones) {
        throw WrongUse("--instrument: " + quoted(value) + " is not one of " + knownInstruments());
    }
    model.transposeSemitones = *semitones;
}

/// The pitch of a note name, within what is scanned in the model's tuning.
int scannedPitch(const std::string& name, const TableModel& model) {
    const std::optional<int> pitch = parsePitch(name);
    if (!pitch) {
        throw WrongUse("--range: " + quoted(name) + " is no note such as C4, F#3 or Bb5");
    }
    const double pitchHz = pitchFrequencyHz(model.a4Hz, *pitch);
    if (pitchHz < lowestScannedHz() || pitchHz > highestScannedHz()) {
        throw WrongUse("--range: " + name + " at " + fixed(pitchHz, 1) +
                       " Hz is outside of what is scanned, " + fixed(lowestScannedHz(), 1) + " to " +
                       fixed(highestScannedHz(), 1) + " Hz");
    }
    return *pitch;
}

void setRange(const std::string& value, TableModel& model) {
    const std::size_t blank = value.find(' ');
    if (blank == std::string::npos) {
        throw WrongUse("--range: two notes are needed, such as C3 B5");
    }
    const std::string low = value.substr(0, blank);
    const std::string high = value.substr(blank + 1);
    model.lowestPitch = scannedPitch(low, model);
    model.highestPitch = scannedPitch(high, model);
    if (model.lowestPitch > model.highestPitch) {
        throw WrongUse("--range: " + low + " is above " + high);
    }
}

TableModel readModel(const Arguments& given) {
    struct Option {
        const char* name;
        void (*set)(const std::string& value, TableModel& model);
    };
    // The range is judged in the tuning that was asked for.
    static constexpr Option options[] = {{"--a4", setTuning},
                                         {"--transpose", setTransposition},
                                         {"--instrument", setInstrument},
                                         {"--range", setRange}};
    if (given.value("--transpose") && given.value("--instrument")) {
        throw WrongUse("--instrument: not together with --transpose");
    }
    TableModel model;
    for (const Option& option : options) {
        if (const std::optional<std::string> value = given.value(option.name)) {
            option.set(*value, model);
        }
    }
    return model;
}

}  // namespace

int notesCommand(const CommandArguments& arguments) {
    const Arguments given(joinRange(arguments), {"--help", "--version"},
                          {"--a4", "--transpose", "--instrument", "--range"});
    given.expectNoFiles();
    if (given.has("--help")) {
        std::cout << usage << "Instruments: " << knownInstruments() << ".\n";
    } else if (given.has("--version")) {
        std::cout << "zanto-notes " << ZANTO_VERSION << '\n';
    } else {
        writeTable(std::cout, tableRows(readModel(given)));
    }
    return statusDone;
}
