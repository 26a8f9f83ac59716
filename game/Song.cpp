#include "game/Song.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr std::streamsize lineBufferSize = 1024;  // characters, with the terminator

constexpr const char* blanks = " \t\n\v\f\r";

// What atoi gives, for lengths beyond an int as well; a long is no longer than that everywhere.
int readLength(const char* text) {
    return static_cast<int>(std::strtoll(text, nullptr, 10));
}

// Reads the notes of one line. False at a token that is no note; the empty one behind trailing blanks is
// none.
bool readSlot(const char* text, std::vector<Song::NoteMark>& marks) {
    while (*text != '\0') {
        text += std::strspn(text, blanks);
        const std::size_t size = std::strcspn(text, blanks);
        const Notes::NoteID note = Notes::nameToId(std::string(text, std::min<std::size_t>(size, 1)));
        if (note == -1) {
            return false;
        }
        marks.emplace_back(note, size > 1 ? readLength(text + 1) : 1);
        text += size;
    }
    return true;
}

}  // namespace

Song::NoteMark::NoteMark(const Notes::NoteID& note_, int length_) : note(note_), length(length_) {
}

bool Song::load(const char* path) {
    slots.clear();
    fading.clear();
    std::ifstream in(path);
    return load(in);
}

bool Song::load(std::ifstream& in) {
    const bool wasRead = read(in);
    measureTrack();
    return wasRead;
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
