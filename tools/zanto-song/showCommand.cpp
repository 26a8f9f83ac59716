#include <string>

#include "game/Song.h"
#include "tools/common/Arguments.h"
#include "tools/common/Files.h"
#include "tools/zanto-song/SongPage.h"
#include "tools/zanto-song/commands.h"
#include "tools/zanto-song/loadSong.h"

namespace {

constexpr const char* usage =
    "zanto-song show FILE -o OUT.png|OUT.svg [--title TEXT] [--bars N] [--night] [--data FOLDER] [--force]\n"
    "    Draws the song's staff as the game does, for paper: in lines, with the bars' numbers and the "
    "notes'\n"
    "    names. The page is A4; a song that is too long for it makes it longer.\n"
    "    --title TEXT   instead of the song's name in the listing, or else the file's\n"
    "    --bars N       bars of four slots to a line, 2 to 16, instead of as many as fit well\n"
    "    --night        white on black, as in the game\n"
    "    --data FOLDER  where the game's data is, if it is not found; PNG takes the typeface from there\n"
    "    --force        replace the file if there is one of that name\n"
    "    Try it: zanto-song show song.txt -o song.svg\n";

int show(const CommandArguments& arguments) {
    const Arguments given(arguments, {"--night", "--force"}, {"-o", "--title", "--bars", "--data"});
    const std::string& path = given.onlyFile("song");
    const std::string out = given.value("-o").value_or("");
    expectPictureName("where to? -o", out);
    PageStyle style;
    style.title = given.value("--title").value_or(titleOf(path));
    style.night = given.has("--night");
    style.barsPerLine = given.whole("--bars", 2, 16, "a whole number, 2 to 16").value_or(style.barsPerLine);
    Song song;
    loadSong(path, song);
    const Page page = layOut(song, style);
    NewFile file(out, given.has("--force"), {path});
    file.write(toPicture(page, out, given.value("--data")));
    file.keep();
    return statusDone;
}

}  // namespace

const Command showCommand = {"show", usage, show};
