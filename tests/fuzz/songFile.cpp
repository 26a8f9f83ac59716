// Any bytes as a song file: Song::load reads what the plain reading of the format reads, and zanto-song finds
// an error in the file exactly when the game refuses it.

#include <algorithm>
#include <sstream>

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

bool alike(const std::vector<std::vector<Song::NoteMark>>& left,
           const std::vector<std::vector<Song::NoteMark>>& right) {
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(), [](const auto& slot, const auto& other) {
            return std::equal(slot.begin(), slot.end(), other.begin(), other.end(),
                              [](const auto& mark, const auto& twin) { return alike(mark, twin); });
        });
}

bool reportsAnError(const std::string& contents) {
    const std::vector<Problem> problems = checkSong(contents);
    return std::any_of(problems.begin(), problems.end(),
                       [](const Problem& problem) { return problem.severity == Problem::Severity::error; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    static Song song;  // each file takes the place of the one before
    const std::string contents(reinterpret_cast<const char*>(data), size);
    file.write(contents);

    const bool loaded = song.load(file.path());
    PlainSong plain;
    std::istringstream in(contents);
    std::ostringstream report;
    require(loaded == plain.load(in, report), "both readings accept the same files");
    require(alike(song.getSlots(), plain.slots), "both readings give the same song");
    require(loaded == !reportsAnError(contents),
            "an error is reported exactly when the game refuses the song");

    const MendedSong mended = mendSong(contents);
    require(mendSong(mended.contents).contents == mended.contents, "mending twice is mending once");
    return 0;
}
