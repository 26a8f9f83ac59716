#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "game/Score.h"
#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"

/// The notes by their numbers, for tests to speak of them.
enum { noteC, noteD, noteE, noteF, noteG, noteA, noteB };

/// A song's slots as words: "C/1" a C of length 1, with "!" behind it once it is hit and "x" for a penalty.
using Words = std::vector<std::vector<std::string>>;
Words words(const std::vector<std::vector<Song::NoteMark>>& slots);

/// `notes` held for `seconds`.
NoteState holding(const std::vector<Notes::NoteID>& notes, float seconds);

/// A song read from a text, and the score of playing it.
class SongFixture : public testing::Test {
protected:
    /// Loads a file with these contents; what it reports is in `errors` afterwards.
    bool load(const std::string& contents);
    Words slots() const { return words(song.getSlots()); }

    TemporaryFolder folder;
    Song song;
    Score score{0.0f, 0.0f};
    std::string errors;
    std::string path;  ///< of the file loaded last

private:
    int files = 0;
};
