#pragma once

#include <string>
#include <vector>

#include "tools/zanto-song/MeasureOrder.h"
#include "tools/zanto-song/SheetMusic.h"

/// One note of a measure; start in quarter notes from the measure's beginning.
struct ScoreNote {
    std::string voice;  ///< of several in a part
    double start;
    double length;
    int pitch;
    std::string place;
    bool continues;  ///< the end of a tie
};

struct ScoreMeasure {
    std::string number;
    double length = 0.0;  ///< quarter notes
    std::vector<ScoreNote> notes;
    MeasureSigns signs;
    char section = '\0';  ///< a letter that a plan may name
};

/// A part as it is written, with its repeats.
struct ScorePart {
    std::string name;
    std::string instrument;
    std::vector<ScoreMeasure> measures;
};

/// Adds parts that sound together to the music, with repeats and jumps written out and ties joined. A
/// sign in one part holds for all of them. A measure is as long as in the part that has most in it. A `plan`
/// such as "ABA" names the sections to play one after the other; it may be empty. Throws a Failure when that
/// is more than the limits allow, or when a jump leads nowhere.
void layOut(const std::vector<ScorePart>& parts, const std::string& plan, SheetMusic& sheet);
