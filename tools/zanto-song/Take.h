#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "analysis/Notes.h"
#include "tools/zanto-song/SoundRecording.h"

class Song;

/// What became of one note of the song in a take. Times are seconds of the recording.
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

/// What the game heard in one of its frames, note by note.
struct HeardFrame {
    std::array<std::uint8_t, Notes::noteCount> counts{};   ///< how often: a note in two octaves counts twice
    std::array<std::int8_t, Notes::noteCount> levelsDb{};  ///< its loudest peak, else that of the frame
};

/// What the game made of a recording.
struct Take {
    static constexpr long framesPerSecond = 100;

    double recordedSeconds = 0.0;  ///< of the recording, as far as the song goes
    double score = 0.0;
    double minDecibel = 0.0;    ///< the level in dB that a note must exceed
    double startSeconds = 0.0;  ///< of the recording, where the song's clock starts: that of frame 0
    std::size_t slotCount = 0;  ///< of the song
    std::vector<TakenNote> notes;
    std::vector<TakenPenalty> penalties;
    std::vector<HeardFrame> frames;

    /// When a slot opens, in seconds of the recording.
    double slotOpens(std::size_t slot) const;
};

/// Plays `recording` to the game: its ring buffer, its note estimation and its scoring, with a clock that
/// jumps 1/100 s from frame to frame. `song` must be freshly loaded; the game's song clock starts
/// `startSeconds` into the recording, two seconds before the centre of slot 0. The note table and the least
/// level are those of the working folder and the environment. Equal recordings give equal takes.
Take playTake(Song& song, SampleSource& recording, double startSeconds);

/// The score that the game gives for `frames` in place of a take's. `song` must be freshly loaded.
double rescore(Song& song, const std::vector<HeardFrame>& frames);
