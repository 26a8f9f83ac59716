// Any bytes as a song file: Song::load reads what the plain reading of the format reads, and zanto-song finds
// an error in the file exactly when the game refuses it.

#include <algorithm>
#include <iostream>
#include <sstream>
#include <tuple>

#include "game/Song.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/InputFile.h"
#include "tests/game/PlainSong.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"

namespace {

bool alike(const Song::NoteMark& left, const Song::NoteMark& right) {
    return left.note == right.note && left.length == right.length && left.brightness == right.brightness &&
           left.hit == right.hit && left.wrong == right.wrong;
}

bool areAlike(const std::vector<Song::NoteMark>& left, const std::vector<Song::NoteMark>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), alike);
}

bool isBefore(const Problem& left, const Problem& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
}

/// Loads it as the game does; `report` is what it says.
bool load(Song& song, const std::string& contents, std::string& report) {
    static const InputFile file;
    file.write(contents);
    std::ostringstream said;
    std::streambuf* const before = std::cerr.rdbuf(said.rdbuf());
    const bool loaded = song.load(file.path());
    std::cerr.rdbuf(before);
    report = said.str();
    return loaded;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Song song;  // each file takes the place of the one before
    const std::string contents(reinterpret_cast<const char*>(data), size);
    std::string said;
    const bool loaded = load(song, contents, said);
    PlainSong plain;
    std::istringstream in(contents);
    std::ostringstream report;
    require(loaded == plain.load(in, report), "both readings accept the same files");
    require(said == report.str(), "both readings report the same");
    require(std::equal(song.getSlots().begin(), song.getSlots().end(), plain.slots.begin(), plain.slots.end(),
                       areAlike),
            "both readings give the same song");

    const std::vector<Problem> problems = checkSong(contents);
    const bool hasError = std::any_of(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.severity == Problem::Severity::error;
    });
    require(loaded == !hasError, "an error is reported exactly when the game refuses the song");
    require(std::is_sorted(problems.begin(), problems.end(), isBefore), "problems stand by their places");

    const MendedSong mended = mendSong(contents);
    require(mended.changes.empty() == (mended.contents == contents), "every change is told");
    require(mendSong(mended.contents).contents == mended.contents, "mending twice is mending once");
    // A line that the game cuts hides what comes after it, until mending makes it short.
    require(!loaded || size > 1000 || load(song, mended.contents, said), "mending breaks no song");
    return 0;
}
