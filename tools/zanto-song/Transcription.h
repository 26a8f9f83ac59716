#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-song/Listening.h"

/// A note as it was played, and where it came to stand.
struct HeardNote {
    Notes::NoteID note;
    std::size_t slot;
    int length;           ///< slots, no more than the game can judge
    double startSeconds;  ///< of the recording
    double endSeconds;
    bool isSureOfStart;   ///< near the middle of its slot's time
    bool isSureOfLength;  ///< not between two lengths, nor too long
};

/// A recording written down as a song.
struct Transcription {
    double slotSeconds;
    double firstSlotSeconds;       ///< when slot 0 begins, in the recording
    double unevenness;             ///< how far notes begin from the beat, on average, in slots
    std::vector<HeardNote> notes;  ///< in the order of their slots, then of their names
};

constexpr double slowestTempo = 80.0;  ///< slots a minute that are looked for
constexpr double fastestTempo = 140.0;

/// Writes down what was heard: notes from their beginnings to their ends, rounded to slots of one beat. The
/// beat is the one that most beginnings, and then most ends, lie on, unless `tempo` says how many there are a
/// minute. Throws a Failure that says why when it is no melody: too few notes, too much sound without notes,
/// or no beat.
Transcription transcribe(const std::vector<ListenedFrame>& frames, const std::optional<double>& tempo);

/// The song file.
std::string songOf(const Transcription& transcription);
