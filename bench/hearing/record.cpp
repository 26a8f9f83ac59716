// Records what the game hears of the bench's players, for zanto-hearing-page to replay. Recordings that are
// there already are kept.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "bench/hearing/SongRun.h"
#include "bench/hearing/Take.h"

namespace {

constexpr char const* soundfontPath = "/usr/share/sounds/sf2/FluidR3_GM.sf2";

bool isMissing(std::string const& path) {
    return !std::filesystem::exists(path);
}

void recordTakes(Studio& studio, Player const& player, std::string const& path) {
    std::vector<Recording> recordings;
    for (Take const& take : takesOf(player)) {
        bool const peer =
            take.trial == Trial::plain || take.trial == Trial::noisy || take.trial == Trial::chord;
        recordings.push_back(listen(studio.sound(player, take), take.minDecibel, peer));
    }
    writeRecordings(path, recordings);
}

void recordSongs(Studio& studio, Player const& player, std::vector<ShippedSong> const& songs,
                 std::string const& path) {
    std::vector<Recording> recordings;
    for (Piece const& piece : piecesOf(player, songs.size())) {
        Song const& song = *songs[piece.song].song;
        recordings.push_back(listen(
            studio.sound(player, performance(song, piece.octave, piece.gapSeconds), performanceSeconds(song)),
            usualMinDecibel, false));
    }
    writeRecordings(path, recordings);
}

void recordQuiets(std::string const& path) {
    std::vector<Recording> recordings;
    for (Quiet const& quiet : quiets()) {
        recordings.push_back(listen(Studio::sound(quiet), quiet.minDecibel, true));
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
    // The game's analysis says on standard output what it hears in every frame.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    try {
        Studio studio(soundfontPath);
        std::vector<ShippedSong> const songs = shippedSongs(argv[1]);
        for (int i = 3; i < argc; ++i) {
            std::string const stem = std::string(argv[2]) + "/" + argv[i];
            if (argv[i] == std::string("nobody")) {
                if (isMissing(stem + ".takes")) {
                    recordQuiets(stem + ".takes");
                }
                continue;
            }
            Player const& player = orchestra().at(std::stoul(argv[i]));
            if (isMissing(stem + ".takes")) {
                recordTakes(studio, player, stem + ".takes");
            }
            if (isMissing(stem + ".songs")) {
                recordSongs(studio, player, songs, stem + ".songs");
            }
            std::cerr << player.name << '\n';
        }
    } catch (std::exception const& error) {
        std::cerr << "zanto-hearing-record: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
