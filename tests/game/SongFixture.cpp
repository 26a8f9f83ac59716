#include "tests/game/SongFixture.h"

Words words(const std::vector<std::vector<Song::NoteMark>>& slots) {
    Words result;
    for (const auto& slot : slots) {
        result.emplace_back();
        for (const Song::NoteMark& mark : slot) {
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

NoteState holding(const std::vector<Notes::NoteID>& notes, float seconds) {
    NoteState state;
    state.notesDown(notes, seconds);
    return state;
}

bool SongFixture::load(const std::string& contents) {
    // A name of its own each time: a file that is written over makes some file systems wait for the disk.
    path = folder.write("song" + std::to_string(++files) + ".txt", contents);
    testing::internal::CaptureStderr();
    const bool loaded = song.load(path.c_str());
    errors = testing::internal::GetCapturedStderr();
    return loaded;
}
