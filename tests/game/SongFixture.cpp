#include "tests/game/SongFixture.h"

#include <iostream>

CapturedErrors::CapturedErrors() : before(std::cerr.rdbuf(captured.rdbuf())) {
}

CapturedErrors::~CapturedErrors() {
    std::cerr.rdbuf(before);
}

Words words(std::vector<std::vector<Song::NoteMark>> const& slots) {
    Words result;
    for (auto const& slot : slots) {
        result.emplace_back();
        for (Song::NoteMark const& mark : slot) {
            std::string word = Notes::idToName(mark.note) + "/" + std::to_string(mark.length);
            if (mark.wrong) {
                word += "x";
            } else if (mark.hit) {
                word += "!";
            }
            result.back().push_back(word);
        }
    }
    return result;
}

NoteState holding(std::vector<Notes::NoteID> const& notes, float seconds) {
    NoteState state;
    state.notesDown(notes, seconds);
    return state;
}

bool SongFixture::load(std::string const& contents) {
    // A name of its own each time: a file that is written over makes some file systems wait for the disk.
    path = folder.write("song" + std::to_string(++files) + ".txt", contents);
    CapturedErrors const captured;
    bool const loaded = song.load(path.c_str());
    errors = captured.text();
    return loaded;
}
