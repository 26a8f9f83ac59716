#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tools/common/RunProgram.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

namespace fs = std::filesystem;

// A folder of its own for one file, removed with it.
class ScratchFolder {
public:
    ScratchFolder() {
        std::error_code ignored;
        std::string name = (fs::temp_directory_path(ignored) / "zanto-song-XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) {
            folder = name;
        }
    }
    ~ScratchFolder() {
        if (!folder.empty()) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
        }
    }
    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;

    /// Empty when there is none.
    fs::path const& path() const { return folder; }

private:
    fs::path folder;
};

struct TuneBook {
    std::vector<std::string> tunes;  // "1 (The title)"
    std::size_t graceNotes = 0;
    bool hasChordSymbols = false;
};

// The little that one has to know of the notation to say what its reader leaves out.
std::optional<TuneBook> lookThrough(std::string const& path, std::optional<int> tune) {
    std::error_code ignored;
    std::ifstream in(path);
    if (!in || fs::is_directory(path, ignored)) {
        return std::nullopt;
    }
    TuneBook book;
    std::string const wanted = tune ? std::to_string(*tune) : "";
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
            std::string const title = line.substr(std::min(line.find_first_not_of(" \t", 2), line.size()));
            book.tunes.back() += " (" + title.substr(0, title.find_last_not_of(" \t\r") + 1) + ")";
        }
        bool const isField = line.size() > 1 && line[1] == ':' && line[0] != '|';
        if (!isWanted || isField || line.rfind('%', 0) == 0) {
            continue;
        }
        book.graceNotes += static_cast<std::size_t>(std::count(line.begin(), line.end(), '{'));
        book.hasChordSymbols = book.hasChordSymbols || line.find('"') != std::string::npos;
    }
    return book;
}

// The lines of what abc2midi says that begin with `word`.
std::vector<std::string> linesWith(std::string const& text, std::string const& word) {
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

std::string listed(std::vector<std::string> const& tunes) {
    std::string list;
    for (std::string const& tune : tunes) {
        list += "\n    " + tune;
    }
    return list;
}

}  // namespace

std::optional<SheetMusic> readAbc(std::string const& path, std::optional<int> tune, std::string& problem) {
    std::optional<TuneBook> const book = lookThrough(path, tune);
    if (!book) {
        problem = "it cannot be read";
        return std::nullopt;
    }
    if (book->tunes.empty()) {
        problem = "there is no tune in it: each begins with a line X: and its number";
        return std::nullopt;
    }
    if (book->tunes.size() > 1 && !tune) {
        problem =
            "there are several tunes in it; choose one with --tune and its number:" + listed(book->tunes);
        return std::nullopt;
    }
    bool const isThere = std::any_of(book->tunes.begin(), book->tunes.end(), [&](std::string const& entry) {
        return tune && entry.substr(0, entry.find(' ')) == std::to_string(*tune);
    });
    if (tune && !isThere) {
        problem = "there is no tune " + std::to_string(*tune) + " in it; choose one of" + listed(book->tunes);
        return std::nullopt;
    }
    ScratchFolder const scratch;
    std::string const midi = (scratch.path() / "tune.mid").string();
    std::vector<std::string> command = {"abc2midi", path.front() == '-' ? "./" + path : path};
    if (tune) {
        command.push_back(std::to_string(*tune));
    }
    command.insert(command.end(), {"-o", midi, "-NGRA", "-NGUI", "-NFER", "-NFNP", "-NCOM"});
    std::optional<ProgramResult> const converted = runProgram(command);
    if (!converted) {
        problem = "reading it takes the program abc2midi; install the package abcmidi";
        return std::nullopt;
    }
    std::vector<std::string> const errors = linesWith(converted->out, "Error");
    std::error_code ignored;
    if (converted->status != 0 || !errors.empty() || !fs::exists(midi, ignored)) {
        problem = "abc2midi does not understand it:" + listed(errors);
        return std::nullopt;
    }
    std::optional<SheetMusic> sheet = readMidi(midi, problem);
    if (!sheet) {
        return std::nullopt;
    }
    sheet->lengthsAreExact = true;
    sheet->remarks = linesWith(converted->out, "Warning");
    if (book->graceNotes > 0) {
        sheet->lost.push_back(counted(book->graceNotes, "group") + " of grace notes");
    }
    if (book->hasChordSymbols) {
        sheet->lost.emplace_back("chord symbols and other texts over the notes");
    }
    return sheet;
}
