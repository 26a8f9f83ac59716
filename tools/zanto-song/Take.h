#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/Notes.h"
#include "tools/zanto-song/SoundRecording.h"

class Song;

/// What came of one note of the song in a take. Times are seconds of the recording.
struct TakenNote {
    enum class Outcome {
        awarded,
        tooShort,      ///< heard, and not held for longer than `neededSeconds`
        otherNotes,    ///< not heard while it was judged; `others` were
        noNote,        ///< a sound above the least level that is none of the seven notes
        tooSoft,       ///< no sound above the least level
        recordingOver  ///< the recording ends before the note is due
    };

    std::size_t slot;
    Notes::NoteID note;
    int length;  ///< slots
    Outcome outcome;
    double dueSeconds;  ///< when its slot opens
    std::optional<double>
        heardSeconds;      ///< since when it was held, for the longest of the holds that counted
    double heldSeconds;    ///< the most that the game counted for it
    double neededSeconds;  ///< what it must be held for longer than
    double awardedSeconds;
    double points;
    std::vector<Notes::NoteID> others;  ///< notes heard while it was judged, most heard first
    double loudestDb;                   ///< loudest level while it was judged; minus infinity for silence
};

/// One penalty of a take. Times are seconds of the recording.
struct TakenPenalty {
    enum class Cause {
        heldOver,    ///< the note of an earlier slot that has ended, still sounding
        early,       ///< the note of the next slot, before that opens
        notAskedFor  ///< none of these
    };

    std::size_t slot;
    Notes::NoteID note;
    Cause cause;
    std::size_t causeSlot;  ///< the slot that the note belongs to, for the first two causes
    double atSeconds;
    double heldSeconds;
    double points;
    std::vector<double> peaksHz;  ///< the peaks of the spectrum that were taken for the note
};

/// All that came of a recording.
struct Take {
    double recordedSeconds = 0.0;  ///< of the recording, as far as the song goes
    double score = 0.0;
    double minDecibel = 0.0;  ///< the level in dB that a note must exceed
    std::vector<TakenNote> notes;
    std::vector<TakenPenalty> penalties;
};

/// Plays `recording` to the game: its ring buffer, its note estimation and its scoring, with a clock that
/// jumps 1/100 s from frame to frame. `song` must be freshly loaded; the game's song clock starts
/// `startSeconds` into the recording, two seconds before the centre of slot 0. The note table and the least
/// level are those of the working folder and the environment. Equal recordings give equal takes.
Take playTake(Song& song, SampleSource& recording, double startSeconds);
