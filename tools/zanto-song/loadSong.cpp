#include "tools/zanto-song/loadSong.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "game/Song.h"
#include "tools/common/Command.h"
#include "tools/common/Files.h"
#include "tools/common/QuietStream.h"

void loadSong(const std::string& path, Song& song) {
    if (const std::string reason = whyUnreadable(path, mostSongBytes); !reason.empty()) {
        throw Failure(path + ": " + reason);
    }
    const QuietErrors quiet;
    if (!song.load(path.c_str())) {
        throw Failure(path + ": does not load; zanto-song check says why");
    }
    if (song.getSlots().size() > mostSlots) {
        throw Failure(path + ": the song has more than " + std::to_string(mostSlots) +
                      " slots, which is 11 hours");
    }
}

std::string titleOf(const std::string& songPath) {
    const std::filesystem::path path = std::filesystem::u8path(songPath);
    std::string title = path.stem().string();
    const std::filesystem::path listingPath = path.parent_path() / "listing.txt";
    std::ifstream listing;
    if (whyUnreadable(listingPath.string(), mostSongBytes).empty()) {
        listing.open(listingPath);
    }
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
