#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/JsonWriter.h"
#include "tools/common/QuietStream.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Command.h"
#include "tools/zanto-song/ListingCheck.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"

char const* const checkUsage =
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

namespace {

namespace fs = std::filesystem;

struct FileReport {
    std::string path;
    std::vector<Problem> problems;
    std::vector<SongChange> changes;
    std::string backup;  // empty when nothing was changed
};

int fail(int status, std::string const& message) {
    std::cerr << "zanto-song check: " << message << std::endl;
    return status;
}

std::optional<std::string> readFile(fs::path const& path) {
    std::error_code ignored;
    std::ifstream in(path, std::ios::binary);
    if (!in || fs::is_directory(path, ignored)) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(in), {});
}

Problem unreadable(std::string const& path) {
    std::error_code ignored;
    std::string text = "there is no such file";
    std::string hint = "the name may be mistyped, or meant from another folder";
    if (fs::is_directory(path, ignored)) {
        text = "this is a folder";
        hint = "name the files in it, such as " + (fs::path(path) / "*.txt").string();
    } else if (fs::exists(path, ignored)) {
        text = "the file cannot be read";
        hint = "look at its permissions";
    }
    return {1, 1, Problem::Severity::error, "unreadable", text, hint};
}

// Copies the file to a name that is not taken yet; gives that name, empty when it cannot be done.
std::string keepBackup(std::string const& path) {
    std::string backup = path + ".bak";
    for (int number = 2; fs::exists(fs::symlink_status(backup)); ++number) {
        backup = path + ".bak" + std::to_string(number);
    }
    std::error_code error;
    fs::copy_file(path, backup, error);
    return error ? "" : backup;
}

// Mends the file in place. False when it could not be written.
bool fix(std::string& contents, FileReport& report) {
    MendedSong mended = mendSong(contents);
    if (mended.changes.empty()) {
        return true;
    }
    report.backup = keepBackup(report.path);
    if (report.backup.empty()) {
        return false;
    }
    std::ofstream out(report.path, std::ios::binary | std::ios::trunc);
    out << mended.contents;
    if (!out.flush()) {
        return false;
    }
    contents = std::move(mended.contents);
    report.changes = std::move(mended.changes);
    return true;
}

SongState stateOf(fs::path const& path) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        return SongState::missing;
    }
    Song song;
    QuietErrors const quiet;
    return song.load(path.c_str()) ? SongState::fine : SongState::faulty;
}

void print(FileReport const& report) {
    if (!report.changes.empty()) {
        std::cout << report.path << ": mended; as it was, it is kept in " << report.backup << '\n';
    }
    for (SongChange const& change : report.changes) {
        std::cout << report.path << ':' << change.line << ": " << change.what << '\n'
                  << "    - " << quoted(change.before) << '\n'
                  << "    + " << quoted(change.after) << '\n';
    }
    for (Problem const& problem : report.problems) {
        bool const isError = problem.severity == Problem::Severity::error;
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

Totals count(std::vector<FileReport> const& reports) {
    Totals totals;
    for (FileReport const& report : reports) {
        for (Problem const& problem : report.problems) {
            ++(problem.severity == Problem::Severity::error ? totals.errors : totals.warnings);
        }
    }
    return totals;
}

void printJson(std::vector<FileReport> const& reports, Totals const& totals) {
    JsonWriter json;
    json.openObject();
    json.key("errors").value(totals.errors).key("warnings").value(totals.warnings);
    json.key("files").openArray();
    for (FileReport const& report : reports) {
        json.openObject().key("file").value(report.path);
        if (!report.changes.empty()) {
            json.key("backup").value(report.backup).key("changes").openArray();
            for (SongChange const& change : report.changes) {
                json.openObject().key("line").value(change.line).key("what").value(change.what);
                json.key("before").value(change.before).key("after").value(change.after).close();
            }
            json.close();
        }
        json.key("problems").openArray();
        for (Problem const& problem : report.problems) {
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

std::vector<Problem> problemsOf(std::string const& contents, std::string const& path, bool isListing) {
    if (!isListing) {
        return checkSong(contents);
    }
    fs::path const folder = fs::path(path).parent_path();
    return checkListing(contents, [&](std::string const& name) { return stateOf(folder / name); });
}

}  // namespace

int checkCommand(CommandArguments const& arguments) {
    Arguments const given(arguments, {"--fix", "--json", "--listing"}, {});
    if (!given.problem().empty()) {
        return fail(statusWrongUse, given.problem());
    }
    if (given.files().empty()) {
        return fail(statusWrongUse, "which files?");
    }
    bool const allListings = given.has("--listing");
    if (allListings && given.has("--fix")) {
        return fail(statusWrongUse, "--fix mends songs; a listing has nothing that it could mend");
    }
    std::vector<FileReport> reports;
    for (std::string const& path : given.files()) {
        bool const isListing = allListings || fs::path(path).filename() == "listing.txt";
        FileReport report{path, {}, {}, ""};
        std::optional<std::string> contents = readFile(path);
        if (!contents) {
            report.problems.push_back(unreadable(path));
        } else {
            if (given.has("--fix") && !isListing && !fix(*contents, report)) {
                return fail(statusFailed,
                            path + ": cannot be mended: the folder or the file cannot be written");
            }
            report.problems = problemsOf(*contents, path, isListing);
        }
        reports.push_back(std::move(report));
    }
    Totals const totals = count(reports);
    if (given.has("--json")) {
        printJson(reports, totals);
    } else {
        for (FileReport const& report : reports) {
            print(report);
        }
        std::cout << counted(reports.size(), "file") << ": " << counted(totals.errors, "error") << ", "
                  << counted(totals.warnings, "warning") << '\n';
    }
    return totals.errors + totals.warnings == 0 ? statusDone : statusFailed;
}
