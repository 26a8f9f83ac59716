#pragma once

#include <string>
#include <vector>

#include "tools/zanto-song/Page.h"
#include "tools/zanto-song/TakeReport.h"

/// A take as a picture, in strips as wide as a page: a heading, and the staff in lines of four bars. On the
/// staff are the notes that the song asks for, what the game heard, by pitch and time, thicker the louder it
/// was, and the moments of awards and penalties; above it the score at the end of each bar; below it what
/// became of each note and where each penalty came from. Marks differ in shape, not only in colour.
std::vector<Page> drawTake(const std::string& song, const NamedTake& named);

/// What the marks and the words of such a picture mean, as one more strip.
Page takeLegend();

/// Strips one below the other, on sheets of A4. No strip is cut where a sheet ends.
Page onSheets(const std::vector<Page>& strips);
