// Any bytes as a song file: Song::load reads what the plain reading of the format reads, and zanto-song finds
// an error in the file exactly when the game refuses it.

#include <algorithm>
#include <sstream>

#include "game/Song.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/MemoryFile.h"
#include "tests/game/PlainSong.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"

namespace {

bool alike(Song::NoteMark const& left, Song::NoteMark const& right) {
    return left.note == right.note && left.length == right.length && left.brightness == right.brightness &&
           left.hit == right.hit && left.wrong == right.wrong;
}

bool alike(std::vector<std::vector<Song::NoteMark>> const& left,
           std::vector<std::vector<Song::NoteMark>> const& right) {
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(), [](auto const& slot, auto const& other) {
            return std::equal(slot.begin(), slot.end(), other.begin(), other.end(),
                              [](auto const& mark, auto const& twin) { return alike(mark, twin); });
        });
}

bool reportsAnError(std::string const& contents) {
    std::vector<Problem> const problems = checkSong(contents);
    return std::any_of(problems.begin(), problems.end(),
                       [](Problem const& problem) { return problem.severity == Problem::Severity::error; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static MemoryFile const file;
    static Song song;  // each file takes the place of the one before
    std::string const contents(reinterpret_cast<char const*>(data), size);
    file.write(contents);

    bool const loaded = song.load(file.path());
    PlainSong plain;
    std::istringstream in(contents);
    std::ostringstream report;
    require(loaded == plain.load(in, report), "both readings accept the same files");
    require(alike(song.getSlots(), plain.slots), "both readings give the same song");
    require(loaded == !reportsAnError(contents),
            "an error is reported exactly when the game refuses the song");

    MendedSong const mended = mendSong(contents);
    require(mendSong(mended.contents).contents == mended.contents, "mending twice is mending once");
    return 0;
}
