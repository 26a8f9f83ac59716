#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <vector>

#include "analysis/NoteState.h"
#include "analysis/Notes.h"
#include "game/Rules.h"
#include "scene/Scene.h"

class Score;

/// The piece being played: time slots of half a second with the notes that begin in each, and the floating
/// numbers that scoring has released over them. It is owned by the game window and used on its thread; only
/// `draw` needs a GL context. Song time `t` is in seconds: slot k is centred on t = k / 2, and play starts
/// before zero.
///
///     song.load("Songs/ode.txt");
///     song.draw(t), song.updateScore(score, t, notesHeld), song.animate(dt);   // every frame
///     if (song.complete(t)) ...
class Song {
public:
    /// One note of the song, or the penalty mark of a wrong one.
    struct NoteMark {
        NoteMark(const Notes::NoteID& note, int length);

        /// Draws the mark as a note that begins in `slot`, or as a cross if it is `wrong`. `width` is a
        /// slot's width on the track and `fill` the share of it that a note of length 1 covers. A note that
        /// was hit gets darker by a tenth each time.
        void draw(int slot, float width, float fill);

        /// Darkens a note that was hit by a tenth, as each drawing does.
        void fade();

        Notes::NoteID note;
        std::int32_t length;      ///< slots; whatever the file says, 0 and less included
        float brightness = 1.0f;  ///< grey level, 0 to 1
        bool hit = false;         ///< scored, or a penalty mark
        bool wrong = false;       ///< a penalty mark
    };

    /// Reads the song file `path` in place of the song held so far. False, with one line on standard error,
    /// when it cannot be read to its end; the slots before the fault are kept. The floating numbers live on.
    bool load(const char* path);

    /// Reads a song as above and adds its slots to those held.
    ///
    /// A header of two integers, which are read and given no meaning, then one line per slot with its notes
    /// separated by whitespace: a letter C to B, and the length in slots if it is not 1. No blanks and no
    /// carriage return may end a line, a line break at the end makes one more empty slot, and a line of more
    /// than 1023 characters ends the song after those.
    bool load(std::ifstream& in);

    /// Judges the notes held in `state` at `t`: gives awards for notes of the song held long enough and
    /// penalties for wrong ones to `score`, and releases a floating number for each. Outside the song's slots
    /// nothing happens. Call it once a frame.
    void updateScore(Score& score, double t, const NoteState& state);

    /// Advances the floating numbers by `dtSeconds`.
    void animate(double dtSeconds);

    /// Whether the song is over at `t`: two seconds past its last line.
    bool complete(double t) const;

    /// Translates the current matrix so that `t` lies at x = 0, one unit per slot, and draws the staff, the
    /// notes and the floating numbers there. Once a frame: the notes that were hit fade by the frame.
    void draw(double t);

    /// The height of a note's row on the track: two rows of the staff lie 4/7 apart.
    static float getNoteHeight(const Notes::NoteID& note);

    /// The notes that begin in each slot, in file order, then the slot's penalty marks.
    const std::vector<std::vector<NoteMark>>& getSlots() const { return slots; }

    /// The height at which row `row` is drawn, from 0 for C. For two notes `getNoteHeight` differs from it in
    /// the last bit.
    static float rowHeight(int row);

private:
    struct MarkPlace {
        std::size_t slot;
        std::size_t index;
    };

    bool read(std::ifstream& in);

    int slotAt(double t) const;
    void award(const MarkPlace& place, double length, float points, Score& score, const NoteState& state);
    void penalise(std::size_t slot, const Notes::NoteID& note, Score& score);
    void give(float points, std::size_t slot, float height, Score& score);

    void measureTrack();
    void fadeHitMarks();
    void drawStaff() const;
    void drawSlots() const;

    std::vector<std::vector<NoteMark>> slots;
    double slotsPerSecond = rules::slotsPerSecond;
    Scene scene;
    std::vector<MarkPlace> fading;  ///< the notes that were hit and are not black yet
    // By slot: how far right the drawing of it and of all slots before it reaches, and how far left the
    // drawing of it and of all slots after it.
    std::vector<float> furthestRight;
    std::vector<float> furthestLeft;
};
