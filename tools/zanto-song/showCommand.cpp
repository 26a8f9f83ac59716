#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <string>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/DataFolder.h"
#include "tools/common/QuietStream.h"
#include "tools/zanto-song/Command.h"
#include "tools/zanto-song/SongPage.h"

char const* const showUsage =
    "zanto-song show FILE -o OUT.png|OUT.svg [--title TEXT] [--bars N] [--night] [--data FOLDER]\n"
    "    Draws the song's staff as the game does, for paper: in lines, with the bars' numbers and the "
    "notes'\n"
    "    names. The page is A4; a song that is too long for it makes it longer.\n"
    "    --title TEXT   instead of the song's name in the listing, or else the file's\n"
    "    --bars N       bars of four slots to a line, 2 to 16, instead of as many as fit well\n"
    "    --night        white on black, as in the game\n"
    "    --data FOLDER  where the game's data is, if it is not found; PNG takes the typeface from there\n"
    "    Try it: zanto-song show song.txt -o song.svg\n";

namespace {

namespace fs = std::filesystem;

constexpr double pixelsPerMillimetre = 200.0 / 25.4;  // 200 to the inch

int fail(int status, std::string const& message) {
    std::cerr << "zanto-song show: " << message << std::endl;
    return status;
}

// The name that the listing beside the song shows for it, else the file's own.
std::string titleOf(fs::path const& path) {
    std::string title = path.stem().string();
    std::ifstream listing(path.parent_path() / "listing.txt");
    std::string name;
    std::string file;
    while (listing >> name >> file) {
        if (file == path.filename().string()) {
            title = name;
            break;
        }
    }
    std::replace(title.begin(), title.end(), '_', ' ');
    return title;
}

bool loadQuietly(Song& song, std::string const& path) {
    QuietErrors const quiet;
    return song.load(path.c_str());
}

std::string writeSvg(Page const& page, std::string const& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << toSvg(page);
    return out.flush() ? "" : "cannot be written";
}

}  // namespace

int showCommand(CommandArguments const& arguments) {
    Arguments const given(arguments, {"--night"}, {"-o", "--title", "--bars", "--data"});
    if (!given.problem().empty()) {
        return fail(statusWrongUse, given.problem());
    }
    if (given.files().size() != 1) {
        return fail(statusWrongUse, given.files().empty() ? "which song?" : "one song at a time");
    }
    std::string const out = given.value("-o").value_or("");
    std::string const kind = fs::path(out).extension().string();
    if (kind != ".png" && kind != ".svg") {
        return fail(statusWrongUse, "where to? -o wants a name that ends in .png or .svg");
    }
    PageStyle style;
    std::string const& path = given.files().front();
    style.title = given.value("--title").value_or(titleOf(path));
    style.night = given.has("--night");
    if (auto const bars = given.value("--bars")) {
        std::optional<int> const number = parseWhole(*bars, 2, 16);
        if (!number) {
            return fail(statusWrongUse, "--bars wants a whole number, 2 to 16");
        }
        style.barsPerLine = *number;
    }
    Song song;
    if (!loadQuietly(song, path)) {
        return fail(statusFailed, path + ": does not load; zanto-song check says why");
    }
    Page const page = layOut(song, style);
    fs::path const data = findDataFolder(given.value("--data")).value_or(".");
    std::string const problem =
        kind == ".svg" ? writeSvg(page, out)
                       : writePng(page, pixelsPerMillimetre, (data / "Fonts" / "Vera.ttf").string(), out);
    return problem.empty() ? statusDone : fail(statusFailed, out + ": " + problem);
}
