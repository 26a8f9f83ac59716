#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>

/// The table that says which of the seven natural notes a frequency is, and the names of those notes.
///
/// Owned by NoteEstimation, main thread only; the two naming operations need no table:
///
///     std::ifstream in("notes.txt");
///     notes.load(in);
///     Notes::NoteID heard = notes.getKey(440.0f);   // Notes::idToName(heard) == "A"
class Notes {
public:
    /// A note without its octave: C = 0, D = 1, E = 2, F = 3, G = 4, A = 5, B = 6, and -1 for no note.
    /// Behaves as its integer everywhere: order, equality, arithmetic and loops over 0 to 6.
    class NoteID {
    public:
        // cppcheck-suppress noExplicitConstructor ; callers pass the numbers 0 to 6 as they are
        constexpr NoteID(std::int32_t noteIndex = -1) : index(noteIndex) {}
        constexpr operator std::int32_t() const { return index; }

    private:
        std::int32_t index;
    };

    static constexpr std::int32_t noteCount = 7;

    /// Adds the whitespace-separated records "name count frequency..." of `in`, frequencies in Hz.
    /// A later record replaces the note of an equal frequency; a name that is none of the seven letters
    /// makes its frequencies match no note; a negative count ends the table. The first word that cannot be
    /// read ends it too and adds nothing. Always returns true.
    bool load(std::istream& in);

    /// The note of the table's frequency nearest to `frequencyHz` if that lies less than 5 Hz away, at every
    /// pitch, else -1. Halfway between two entries the upper one wins. An empty table gives -1.
    NoteID getKey(float frequencyHz) const;

    /// "C" to "B" give 0 to 6; any other string, lower case and accidentals included, gives -1.
    static NoteID nameToId(const std::string& name);

    /// 0 to 6 give "C" to "B"; any other value gives the empty string.
    static std::string idToName(const NoteID& id);

    /// The note that lies so many semitones above a C, in any octave, below C too; -1 for a sharp.
    static NoteID ofSemitone(int semitones);

private:
    /// From a frequency in Hz to its note. Several frequencies may share a note.
    std::map<float, NoteID> frequencies;
};
