#include "game/Song.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

constexpr std::streamsize lineBufferSize = 1024;  // characters, with the terminator

// What atoi gives, for lengths beyond an int as well.
int readLength(char const* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

}  // namespace

Song::NoteMark::NoteMark(Notes::NoteID const& note_, int length_)
    : note(note_), length(length_), brightness(1.0f), hit(false), wrong(false) {
}

Song::Song() : slotsPerSecond(2.0) {
}

bool Song::load(char const* path) {
    slots.clear();
    std::ifstream in(path);
    return load(in);
}

bool Song::load(std::ifstream& in) {
    if (!in.good()) {
        std::cerr << "Song: input is not good." << std::endl;
        return false;
    }
    int timing[2];
    in >> timing[0] >> timing[1];
    if (!in.good()) {
        std::cerr << "Error loading timing information." << std::endl;
        return false;
    }
    char buffer[lineBufferSize];
    in.getline(buffer, lineBufferSize);

    while (in.good()) {
        in.getline(buffer, lineBufferSize);
        std::vector<NoteMark> slot;
        std::string const text(buffer);
        if (!text.empty()) {
            std::istringstream line(text);
            while (line.good()) {
                std::string token;
                line >> token;
                int length = 1;
                if (token.size() > 1) {
                    length = readLength(token.c_str() + 1);
                    token.resize(1);
                }
                Notes::NoteID const note = Notes::nameToId(token);
                if (note == -1) {
                    std::cerr << "Song: Got invalid note." << std::endl;
                    return false;
                }
                slot.emplace_back(note, length);
            }
        }
        slots.push_back(slot);
    }
    return true;
}
