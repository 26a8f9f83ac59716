#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-song/Take.h"

/// A change of a take, and what it would have earned by itself.
struct Advice {
    std::string what;
    double points;
};

/// The score of what was heard, as the game gives it; rescore with a fresh song each time.
using Judge = std::function<double(const std::vector<HeardFrame>&)>;

/// The three changes that would have earned most, best first; fewer when there are not so many that earn
/// anything. Each is made to what the game heard and judged again: everything up to half a second sooner or
/// later; notes let go at their end; early notes begun in time; notes that nothing asks for left out; notes
/// that were too short held to their end; notes that were not heard played.
std::vector<Advice> adviceFor(const Take& take, const Judge& judge);

/// How far after its slot's opening a note was heard, in the middle, and how far notes lie from that, in the
/// middle. Seconds. What the game needs to hear a note is in it.
struct Timing {
    double lateSeconds;
    double spreadSeconds;
};

/// None when no note was heard.
std::optional<Timing> timingOf(const Take& take);
