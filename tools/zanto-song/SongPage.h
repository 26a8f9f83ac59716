#pragma once

#include <string>

#include "tools/zanto-song/Page.h"

class Song;

/// How a song is laid out on paper.
struct PageStyle {
    std::string title;
    bool night = false;   ///< white on black, as in the game
    int barsPerLine = 0;  ///< 0 for as few as fill no more than one A4 page, from 4 to 8
};

/// The song's staff as the game draws it, broken into lines: a row for each note, C the lowest, staff lines
/// at E, G, B and one above, a bar line before every fourth slot, and each note as a stroke over the time for
/// which it sounds. Added are the bars' numbers, the names of the rows, and the names of the notes beneath
/// them. The page is as wide as A4, and at least as high.
Page layOut(const Song& song, const PageStyle& style);
