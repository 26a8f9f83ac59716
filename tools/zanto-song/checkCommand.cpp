#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/common/JsonWriter.h"
#include "tools/common/QuietStream.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/ListingCheck.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"
#include "tools/zanto-song/commands.h"

namespace {

constexpr const char* usage =
    "zanto-song check FILE... [--fix] [--json]\n"
    "zanto-song check --listing FILE... [--json]\n"
    "    Says all that is wrong with songs, one line for each fault, with its place and how to mend it.\n"
    "    An error is what makes the game refuse a song; a warning is what it accepts and you hardly meant,\n"
    "    such as C#, which is a C of no length.\n"
    "    --listing   the files are listings of songs; one called listing.txt is taken for one anyway\n"
    "    --fix       mend line ends, blanks at the end of lines and lower-case notes; the file as it was is\n"
    "                kept beside it, with .bak behind its name\n"
    "    --json      the same for programs\n"
    "    Try it: zanto-song check Songs/*.txt\n";

namespace fs = std::filesystem;

struct FileReport {
    std::string path;
    std::vector<Problem> problems;
    std::vector<SongChange> changes;
    std::string backup;  // empty when nothing was changed
};

Problem unreadable(const std::string& path, const std::string& reason) {
    std::error_code ignored;
    const bool isFolder = fs::is_directory(fs::u8path(path), ignored);
    const std::string hint = isFolder
                                 ? "name the files in it, such as " + (fs::u8path(path) / "*.txt").string()
                                 : "look at its name, and at its permissions";
    return {1, 1, Problem::Severity::error, "unreadable", reason, hint};
}

Problem tooLarge() {
    return {1,
            1,
            Problem::Severity::warning,
            "file-large",
            "the file is larger than " + std::to_string(mostSongBytes >> 20) +
                " MiB: the game may load it, but it was not checked",
            "split the song"};
}

// Writes the contents to a name that is not taken yet; gives that name.
std::string keepBackup(const std::string& path, const std::string& contents) {
    std::string backup = path + ".bak";
    std::error_code ignored;
    for (int number = 2; fs::exists(fs::symlink_status(fs::u8path(backup), ignored)); ++number) {
        backup = path + ".bak" + std::to_string(number);
    }
    NewFile file(backup, false);
    file.write(contents);
    file.keep();
    return backup;
}

// Mends the file in place.
void fix(std::string& contents, FileReport& report) {
    MendedSong mended = mendSong(contents);
    if (mended.changes.empty()) {
        return;
    }
    NewFile file(report.path, true);
    file.write(mended.contents);
    report.backup = keepBackup(report.path, contents);
    file.keep();
    contents = std::move(mended.contents);
    report.changes = std::move(mended.changes);
}

void fixIfPossible(std::string& contents, FileReport& report) {
    try {
        fix(contents, report);
    } catch (const Failure& failure) {
        report.problems.push_back(
            {1, 1, Problem::Severity::error, "unwritable",
             std::string("it cannot be mended: ") + failure.what(),
             "look at the permissions of the file and its folder, and for room on the disk"});
    }
}

SongState stateOf(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        return SongState::missing;
    }
    Song song;
    const QuietErrors quiet;
    return song.load(path.string().c_str()) ? SongState::fine : SongState::faulty;
}

void print(const FileReport& report) {
    if (!report.changes.empty()) {
        std::cout << report.path << ": mended; as it was, it is kept in " << report.backup << '\n';
    }
    for (const SongChange& change : report.changes) {
        std::cout << report.path << ':' << change.line << ": " << change.what << '\n'
                  << "    - " << quoted(change.before) << '\n'
                  << "    + " << quoted(change.after) << '\n';
    }
    for (const Problem& problem : report.problems) {
        const bool isError = problem.severity == Problem::Severity::error;
        std::cout << report.path << ':' << problem.line << ':' << problem.column << ": "
                  << (isError ? "error: " : "warning: ") << cleanUtf8(problem.text) << " [" << problem.code
                  << "]\n"
                  << "    hint: " << cleanUtf8(problem.hint) << '\n';
    }
}

struct Totals {
    std::size_t errors = 0;
    std::size_t warnings = 0;
};

Totals count(const std::vector<FileReport>& reports) {
    Totals totals;
    for (const FileReport& report : reports) {
        for (const Problem& problem : report.problems) {
            ++(problem.severity == Problem::Severity::error ? totals.errors : totals.warnings);
        }
    }
    return totals;
}

void printJson(const std::vector<FileReport>& reports, const Totals& totals) {
    JsonWriter json;
    json.openObject();
    json.key("errors").value(totals.errors).key("warnings").value(totals.warnings);
    json.key("files").openArray();
    for (const FileReport& report : reports) {
        json.openObject().key("file").value(report.path);
        if (!report.changes.empty()) {
            json.key("backup").value(report.backup).key("changes").openArray();
            for (const SongChange& change : report.changes) {
                json.openObject().key("line").value(change.line).key("what").value(change.what);
                json.key("before").value(change.before).key("after").value(change.after).close();
            }
            json.close();
        }
        json.key("problems").openArray();
        for (const Problem& problem : report.problems) {
            json.openObject().key("line").value(problem.line).key("column").value(problem.column);
            json.key("severity").value(problem.severity == Problem::Severity::error ? "error" : "warning");
            json.key("code").value(problem.code).key("text").value(problem.text);
            json.key("hint").value(problem.hint).close();
        }
        json.close().close();
    }
    json.close().close();
    std::cout << json.text() << '\n';
}

std::vector<Problem> problemsOf(const std::string& contents, const std::string& path, bool isListing) {
    if (!isListing) {
        return checkSong(contents);
    }
    const fs::path folder = fs::u8path(path).parent_path();
    return checkListing(contents, [&](const std::string& name) {
        try {
            return stateOf(folder / fs::u8path(name));
        } catch (const fs::filesystem_error&) {  // no UTF-8, where names of files are UTF-16
            return SongState::missing;
        }
    });
}

int check(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--fix", "--json", "--listing"}, {});
    if (given.files().empty()) {
        throw WrongUse("which files?");
    }
    const bool allListings = given.has("--listing");
    if (allListings && given.has("--fix")) {
        throw WrongUse("--fix mends songs; a listing has nothing that it could mend");
    }
    std::vector<FileReport> reports;
    for (const std::string& path : given.files()) {
        const bool isListing = allListings || fs::u8path(path).filename() == "listing.txt";
        FileReport report{path, {}, {}, ""};
        try {
            if (whyUnreadable(path, anySize).empty() && fs::file_size(fs::u8path(path)) > mostSongBytes) {
                report.problems.push_back(tooLarge());
                reports.push_back(std::move(report));
                continue;
            }
            std::string contents = readFile(path, mostSongBytes);
            if (given.has("--fix") && !isListing) {
                fixIfPossible(contents, report);
            }
            const std::vector<Problem> found = problemsOf(contents, path, isListing);
            report.problems.insert(report.problems.end(), found.begin(), found.end());
        } catch (const Failure& failure) {
            report.problems.push_back(unreadable(path, failure.what()));
        }
        reports.push_back(std::move(report));
    }
    const Totals totals = count(reports);
    if (given.has("--json")) {
        printJson(reports, totals);
    } else {
        for (const FileReport& report : reports) {
            print(report);
        }
        std::cout << counted(reports.size(), "file") << ": " << counted(totals.errors, "error") << ", "
                  << counted(totals.warnings, "warning") << '\n';
    }
    return totals.errors + totals.warnings == 0 ? statusDone : statusFailed;
}

}  // namespace

const Command checkCommand = {"check", usage, check};
