// Writes the pages about how well the game hears from the recordings of zanto-hearing-record.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "bench/hearing/Page.h"

namespace {

void writePage(std::string const& templatePath, std::string const& path, Figures const& figures) {
    std::string const page = fillIn(readText(templatePath), figures);
    std::ofstream out(path);
    out << page;
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 4 || argc % 2 != 1) {
        std::cerr << "usage: zanto-hearing-page DATA-FOLDER RECORDINGS-FOLDER (TEMPLATE PAGE)...\n";
        return 2;
    }
    // The game's analysis says on standard output what it hears in every frame.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    // The recordings hold no peaks below the threshold that they were made with.
    ::unsetenv("ZANTO_MIN_DECIBEL");
    try {
        std::string const data = argv[1];
        std::string const shippedTable = readText(data + "/notes.txt");
        std::vector<ShippedSong> const songs = shippedSongs(data);
        Archive const archive(argv[2], songs);
        Figures figures;
        addNoteFigures(archive, shippedTable, figures);
        addTableFigures(archive, shippedTable, songs, figures);
        addSongFigures(archive, shippedTable, songs, figures);
        for (int i = 3; i < argc; i += 2) {
            writePage(argv[i], argv[i + 1], figures);
        }
    } catch (std::exception const& error) {
        std::cerr << "zanto-hearing-page: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
