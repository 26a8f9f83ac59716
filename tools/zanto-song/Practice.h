#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "analysis/Notes.h"
#include "tools/zanto-song/songText.h"

class Song;

/// A stretch of a song, and how to practise it.
struct PracticeWishes {
    std::size_t begin = 0;                       ///< the stretch's first slot
    std::size_t end = 0;                         ///< the slot after its last one, within the song
    std::array<bool, Notes::noteCount> notes{};  ///< which notes to play; the others become rests
    int slower = 1;                              ///< slots for each slot of the song
    int repeat = 1;                              ///< how many times the stretch comes
};

/// What becomes of it.
struct Practice {
    WrittenSlots slots;  ///< up to the last note's end; no note when the stretch has none of those wished for
    std::size_t notes = 0;             ///< in the stretch, once
    std::vector<std::string> changes;  ///< what of the stretch is not as it was, one line for each kind
};

/// Makes a song of a stretch. Between the repeats there is a bar of rest, after the rest of a bar that was
/// begun. What could not be played or judged is changed: a note that sounds longer than the stretch or than
/// `longestLength` is shortened, and a note before a long one of the same name ends a slot early, so that
/// the game hears that begin.
Practice makePractice(const Song& song, const PracticeWishes& wishes);
