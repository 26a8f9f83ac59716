#include "game/Song.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr std::streamsize lineBufferSize = 1024;  // characters, with the terminator

constexpr char const* blanks = " \t\n\v\f\r";

// What atoi gives, for lengths beyond an int as well.
int readLength(char const* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

// Reads the notes of one line. False at a token that is no note; the empty one behind trailing blanks is
// none.
bool readSlot(char const* text, std::vector<Song::NoteMark>& marks) {
    while (*text != '\0') {
        text += std::strspn(text, blanks);
        std::size_t const size = std::strcspn(text, blanks);
        Notes::NoteID const note = Notes::nameToId(std::string(text, std::min<std::size_t>(size, 1)));
        if (note == -1) {
            return false;
        }
        marks.emplace_back(note, size > 1 ? readLength(text + 1) : 1);
        text += size;
    }
    return true;
}

}  // namespace

Song::NoteMark::NoteMark(Notes::NoteID const& note_, int length_)
    : note(note_), length(length_), brightness(1.0f), hit(false), wrong(false) {
}

Song::Song() : slotsPerSecond(2.0) {
}

bool Song::load(char const* path) {
    slots.clear();
    fading.clear();
    std::ifstream in(path);
    return load(in);
}

bool Song::load(std::ifstream& in) {
    bool const complete = read(in);
    indexTrack();
    return complete;
}

bool Song::read(std::ifstream& in) {
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
    char line[lineBufferSize];
    in.getline(line, lineBufferSize);

    std::vector<NoteMark> marks;
    while (in.good()) {
        in.getline(line, lineBufferSize);
        marks.clear();
        if (!readSlot(line, marks)) {
            std::cerr << "Song: Got invalid note." << std::endl;
            return false;
        }
        slots.push_back(marks);
    }
    return true;
}
