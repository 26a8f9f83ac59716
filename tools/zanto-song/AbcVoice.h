#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/zanto-song/AbcFields.h"
#include "tools/zanto-song/WrittenScore.h"

/// A note as ABC writes it.
struct AbcNote {
    int step;    ///< 0 to 6, C to B
    int octave;  ///< 5 is the one from c
    bool hasAccidental;
    int semitones;  ///< of the accidental
    double units;   ///< its length, in those of L:
};

struct AbcBar {
    int timesPlayed = 0;  ///< 0 when no repeat ends here
    bool repeatBegins = false;
    bool isDouble = false;  ///< two lines, or a thick one
};

/// Writes down one voice while its notation is read from front to back: where notes stand in their measures,
/// which accidentals hold, what ties, tuplets and broken rhythms do to lengths. A measure here reaches from
/// one bar line or sign of repetition to the next.
class AbcVoice {
public:
    /// How far an accidental reaches in its bar.
    enum class Reach { Note, Octave, AllOctaves };

    std::string name;
    std::string instrument;
    bool isPercussion = false;
    Reach reach = Reach::AllOctaves;
    int octaves = 0;    ///< to add to written notes
    int transpose = 0;  ///< semitones to add
    double unitQuarters = 0.5;
    AbcMetre metre{};
    AbcSignature signature{};
    char section = '\0';  ///< of P:

    AbcVoice() { measures.emplace_back(); }

    /// Notes that begin together. Their length is that of the first one times `factor`.
    void chord(const std::vector<AbcNote>& notes, double factor);
    void rest(double units);
    void restBars(int bars);
    /// A tie from the last note of the chord that was added last, from all of it, or from that of `index`.
    void tieAll();
    void tie(std::size_t index);
    /// `>` once or more often when positive, `<` when negative: between the last note and the next.
    void breakRhythm(int strength);
    /// `p` notes in the time of `q`, for the next `count` notes or rests; 0 for what is usual.
    void tuplet(int p, int q, int count);
    void overlay();
    void barLine(const AbcBar& bar);
    void ending(const std::set<int>& rounds);
    void beginSection(char letter);
    /// A sign that `addSign` knows. False for any other text.
    bool sign(const std::string& text);

    bool hasNotes() const { return noteCount > 0; }
    bool isRepeating() const { return repeatIsOpen; }

    /// The voice, when all is read.
    ScorePart finish();
    /// Whether an ending followed another one without the sign to go back between them.
    bool lacksRepeat() const { return repeatIsMissing; }

private:
    struct Tie {
        int step;
        int octave;
        int pitch;
    };

    ScoreMeasure& here() { return measures.back(); }
    bool isEmptyHere() const { return measures.back().notes.empty() && measures.back().length == 0.0; }
    double stretch();
    void advance(double quarters);
    int pitchOf(const AbcNote& note, const std::vector<Tie>& ties, bool& continues);
    void beginMeasure();
    void moveSignsBack();
    void nameNotes(bool barIsOver);

    std::vector<ScoreMeasure> measures;
    double position = 0.0;  // quarter notes into the measure
    int layer = 1;
    std::int64_t barNumber = 1;
    double barFilled = 0.0;  // quarter notes of the bar that are in measures before this one
    bool repeatIsOpen = false;
    bool repeatIsMissing = false;
    bool endingIsOpen = false;
    std::size_t noteCount = 0;

    std::map<int, int> accidentals;  // in this bar, by step or by step and octave
    std::vector<Tie> ties;           // from the notes before
    std::vector<Tie> latest;         // the notes that were added last
    std::size_t latestIndex = 0;     // where they begin in the measure
    std::size_t latestMeasure = 0;
    double latestLength = 0.0;
    double nextFactor = 1.0;
    double tupletFactor = 1.0;
    int tupletLeft = 0;
};
