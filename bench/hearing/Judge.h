#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "bench/hearing/Listener.h"
#include "bench/hearing/Take.h"

/// How well one take was heard.
///
/// A frame is right for as much of the chord as is among the notes heard, and wrong if some natural is heard
/// that is not played. Frames count from 0.15 s after the attack to `judgedToSeconds`.
struct Hearing {
    double right = 0.0;  ///< share of the frames, 0 to 1
    double wrong = 0.0;
    std::optional<double>
        latencySeconds;  ///< from the attack to the first frame with the note; none if never
    /// From the end of the note to the last frame with it; of the note before, if there is one that ends.
    double tailSeconds = 0.0;
    double lateDb = 0.0;  ///< the recording's
};

Hearing judge(const Take& take, const Recording& recording, Listener& listener);

/// One take of one player, and how it was heard.
struct Heard {
    std::size_t place;  ///< in the orchestra
    Take take;
    Hearing hearing;
};

using Which = std::function<bool(const Heard&)>;

/// The mean over those of `all` that `which` picks.
struct Mean {
    std::size_t takes = 0;
    Hearing hearing;  ///< the latency over the takes that have one, the level of the one that has faded most
    double never = 0.0;  ///< share of takes whose note was never heard
};

Mean meanOf(const std::vector<Heard>& all, const Which& which);

/// Pickers.
bool isNatural(const Heard& heard);
bool isDry(const Heard& heard);

/// What is heard in a room where nobody plays.
struct FalseNotes {
    double perMinute = 0.0;          ///< notes that begin
    double longOnesPerMinute = 0.0;  ///< of those, held long enough to cost a penalty
    double share = 0.0;              ///< of the frames with any note
};

FalseNotes falseNotes(const Recording& recording, Listener& listener);
