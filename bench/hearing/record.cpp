// Records what the game hears of the bench's players, for zanto-hearing-figures to replay. Recordings that
// are there already are kept.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "bench/hearing/SongRun.h"
#include "bench/hearing/Take.h"

namespace {

bool isMissing(const std::string& path) {
    return !std::filesystem::exists(path);
}

void recordTakes(Studio& studio, const Player& player, const std::string& path) {
    std::vector<Recording> recordings;
    for (const Take& take : takesOf(player)) {
        const std::vector<float> sound = studio.sound(player, take);
        recordings.push_back(listen(sound, take.minDecibel));
        recordings.back().lateDb = static_cast<float>(lateLevelDb(sound, take.attack()));
    }
    writeRecordings(path, recordings);
}

void recordSongs(Studio& studio, std::size_t place, const std::vector<ShippedSong>& songs,
                 const std::string& path) {
    const Player& player = orchestra()[place];
    std::vector<Recording> recordings;
    for (const Piece& piece : piecesOf(place, songs.size())) {
        const Song& song = *songs[piece.song].song;
        recordings.push_back(listen(studio.sound(player, performance(song, piece.octave, piece.gapSeconds),
                                                 performanceSeconds(song), piece.touch),
                                    usualMinDecibel));
    }
    writeRecordings(path, recordings);
}

void recordQuiets(const std::string& path) {
    std::vector<Recording> recordings;
    for (const Quiet& quiet : quiets()) {
        recordings.push_back(listen(Studio::sound(quiet), quiet.minDecibel));
    }
    writeRecordings(path, recordings);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 4) {
        std::cerr
            << "usage: zanto-hearing-record DATA-FOLDER RECORDINGS-FOLDER (PLAYER-NUMBER | nobody)...\n";
        return 2;
    }
    // The analysis prints what it hears in every frame.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    try {
        Studio studio;
        const std::vector<ShippedSong> songs = shippedSongs(argv[1]);
        for (int i = 3; i < argc; ++i) {
            const std::string stem = std::string(argv[2]) + "/" + argv[i];
            if (argv[i] == std::string("nobody")) {
                if (isMissing(stem + ".takes")) {
                    recordQuiets(stem + ".takes");
                }
                continue;
            }
            const std::size_t place = std::stoul(argv[i]);
            const Player& player = orchestra().at(place);
            if (isMissing(stem + ".takes")) {
                recordTakes(studio, player, stem + ".takes");
            }
            if (isMissing(stem + ".songs")) {
                recordSongs(studio, place, songs, stem + ".songs");
            }
            std::cerr << player.name << '\n';
        }
    } catch (const std::exception& error) {
        std::cerr << "zanto-hearing-record: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
