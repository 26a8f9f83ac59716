#pragma once

#include <string>
#include <vector>

#include "tools/zanto-song/TakeAdvice.h"
#include "tools/zanto-song/TakeReport.h"

/// A take with what a page about it shows.
struct ShownTake {
    NamedTake named;
    std::vector<Advice> advice;
    std::string sound;  ///< a data URL to play; empty for none
};

/// A page for a browser, without other files: a table of the takes that sorts by each of its columns, and for
/// each take its picture, what would have earned more, and its sound.
std::string htmlReport(const std::string& song, const std::vector<ShownTake>& takes);
