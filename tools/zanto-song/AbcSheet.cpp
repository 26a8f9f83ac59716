#include <algorithm>
#include <sstream>

#include "tools/common/Command.h"
#include "tools/common/Files.h"
#include "tools/common/RunProgram.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

struct TuneBook {
    std::vector<std::string> tunes;  // "1 (The title)"
    std::size_t graceNotes = 0;
    bool hasChordSymbols = false;
};

// The little that one has to know of the notation to say what its reader leaves out.
TuneBook lookThrough(const std::string& contents, std::optional<int> tune) {
    std::istringstream in(contents);
    TuneBook book;
    const std::string wanted = tune ? std::to_string(*tune) : "";
    bool isWanted = true;
    std::string line;
    while (std::getline(in, line)) {
        if (line.rfind("X:", 0) == 0) {
            std::istringstream number(line.substr(2));
            std::string word;
            number >> word;
            book.tunes.push_back(word);
            isWanted = !tune || word == wanted;
            continue;
        }
        if (line.rfind("T:", 0) == 0 && !book.tunes.empty() &&
            book.tunes.back().find('(') == std::string::npos) {
            const std::string title = line.substr(std::min(line.find_first_not_of(" \t", 2), line.size()));
            book.tunes.back() += " (" + title.substr(0, title.find_last_not_of(" \t\r") + 1) + ")";
        }
        const bool isField = line.size() > 1 && line[1] == ':' && line[0] != '|';
        if (!isWanted || isField || line.rfind('%', 0) == 0) {
            continue;
        }
        book.graceNotes += static_cast<std::size_t>(std::count(line.begin(), line.end(), '{'));
        book.hasChordSymbols = book.hasChordSymbols || line.find('"') != std::string::npos;
    }
    return book;
}

// The lines of what abc2midi says that begin with `word`.
std::vector<std::string> linesWith(const std::string& text, const std::string& word) {
    std::vector<std::string> found;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.rfind(word, 0) == 0) {
            found.push_back(line);
        }
    }
    return found;
}

std::string listed(const std::vector<std::string>& tunes) {
    std::string list;
    for (const std::string& tune : tunes) {
        list += "\n    " + tune;
    }
    return list;
}

}  // namespace

SheetMusic readAbc(const std::string& path, std::optional<int> tune) {
    const TuneBook book = lookThrough(readFile(path, mostSheetBytes), tune);
    if (book.tunes.empty()) {
        throw Failure("there is no tune in it: each begins with a line X: and its number");
    }
    if (book.tunes.size() > 1 && !tune) {
        throw Failure("there are several tunes in it; choose one with --tune and its number:" +
                      listed(book.tunes));
    }
    const bool isThere = std::any_of(book.tunes.begin(), book.tunes.end(), [&](const std::string& entry) {
        return tune && entry.substr(0, entry.find(' ')) == std::to_string(*tune);
    });
    if (tune && !isThere) {
        throw Failure("there is no tune " + std::to_string(*tune) + " in it; choose one of" +
                      listed(book.tunes));
    }
    // In memory: a folder for temporary files may be missing, and would be left behind by Ctrl-C.
    const MemoryFile midi;
    std::vector<std::string> command = {"abc2midi", path.front() == '-' ? "./" + path : path};
    if (tune) {
        command.push_back(std::to_string(*tune));
    }
    command.insert(command.end(), {"-o", midi.path(), "-NGRA", "-NGUI", "-NFER", "-NFNP", "-NCOM"});
    const std::optional<ProgramResult> converted = runProgram(command);
    if (!converted) {
        throw Failure("reading it takes the program abc2midi; install the package abcmidi");
    }
    const std::vector<std::string> errors = linesWith(converted->out, "Error");
    const std::string contents = midi.contents();
    if (converted->status != 0 || !errors.empty() || contents.empty()) {
        throw Failure("abc2midi does not understand it:" + listed(errors));
    }
    SheetMusic sheet = readMidi(contents);
    sheet.lengthsAreExact = true;
    sheet.remarks = linesWith(converted->out, "Warning");
    if (book.graceNotes > 0) {
        sheet.lost.push_back(counted(book.graceNotes, "group") + " of grace notes");
    }
    if (book.hasChordSymbols) {
        sheet.lost.emplace_back("chord symbols and other texts over the notes");
    }
    return sheet;
}
