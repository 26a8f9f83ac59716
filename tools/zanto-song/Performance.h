#pragma once

#include <cstdint>
#include <vector>

#include "analysis/Notes.h"
#include "game/Rules.h"

class Song;

/// How a player plays a song, for everything that turns one into sound.
struct PlayingStyle {
    int octave = 5;             ///< the octave of the note C, scientific: octave 5 is C5 = 523.25 Hz to B5
    double aheadSeconds = 0.0;  ///< how far before its slot opens a note begins; negative for late
    double gapSeconds = 0.0;    ///< how long before its last slot closes a note ends, on top of that
};

/// One note as it is played. Times in seconds from the moment at which the game's song clock starts, two
/// seconds before the centre of the song's first slot.
struct PlayedNote {
    Notes::NoteID note;
    double frequencyHz;
    double startSeconds;
    double soundingSeconds;
};

/// When slot 0 opens: its centre comes after the lead-in, and it opens half a slot before. That is when its
/// bar line and the left ends of its notes reach the time line, and when its notes are due.
constexpr double firstSlotSeconds = rules::leadInSeconds + rules::slotOpensSeconds(0.0);

/// The equal-tempered pitch of a natural note, A4 = 440 Hz.
double pitchOf(const Notes::NoteID& note, int octave);

/// When the song is over for the game: two seconds after its last slot. Seconds, as in PlayedNote.
double songSeconds(const Song& song);

/// All notes of the song in the order of their slots. Notes of no length are left out, none outlasts the
/// song, each sounds for a twentieth of a second at least and none begins before 0.
std::vector<PlayedNote> perform(const Song& song, const PlayingStyle& style);
