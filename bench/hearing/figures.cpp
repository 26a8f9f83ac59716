// Turns the recordings of zanto-hearing-record into figures.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "bench/hearing/figures.h"

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "usage: zanto-hearing-figures DATA-FOLDER RECORDINGS-FOLDER FIGURES-FOLDER\n";
        return 2;
    }
    // The analysis prints what it hears in every frame.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    // The recordings hold no peaks below the threshold that they were made with.
    ::unsetenv("ZANTO_MIN_DECIBEL");
    try {
        const std::string data = argv[1];
        const std::string figures = argv[3];
        const std::string shippedTable = readText(data + "/notes.txt");
        const std::vector<ShippedSong> songs = shippedSongs(data);
        const Archive archive(argv[2], songs);
        writeNoteFigures(archive, shippedTable, figures);
        writeSongFigures(archive, shippedTable, songs, figures);
        writeTableFigures(archive, shippedTable, songs, figures);
    } catch (const std::exception& error) {
        std::cerr << "zanto-hearing-figures: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
