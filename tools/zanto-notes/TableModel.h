#pragma once

#include <iosfwd>
#include <vector>

#include "analysis/Notes.h"

/// The model behind notes.txt: which of the seven notes each spectral peak should be taken for.
///
/// A peak is always reported at a bin centre, and the table matches within 5 Hz, less than half a bin: the
/// table is a map from bin to note. The model fills it for a player whose tuning scatters around equal
/// temperament:
///
///     TableModel model;
///     writeTable(std::cout, tableRows(model));
struct TableModel {
    // What the player asks for.

    /// Sounding frequency of A4 in Hz.
    double a4Hz = 440.0;
    /// How far a written note sounds from its name, in semitones: -2 for a B flat clarinet.
    int transposeSemitones = 0;
    /// The sounding range to be heard, as MIDI note numbers (A4 is 69).
    int lowestPitch = 48;
    int highestPitch = 83;

    // What the model takes players to be like.

    /// Standard deviation of a player's tuning around equal temperament.
    double tuningSpreadCents = 20.0;
    /// How often a sharp is played, where a natural counts 1.
    double sharpWeight = 0.3;
    /// A bin is listed only for a pitch that lands in it at least this often.
    double leastProbability = 0.03;
    /// Above the scan's end, a peak this near a natural stands for it: it is the second harmonic of the note,
    /// or the note itself.
    double harmonicReachCents = 40.0;
    /// The lowest second harmonic that is listed, a MIDI note number. Lower ones are where third harmonics of
    /// other notes fall.
    int lowestHarmonicPitch = 84;
};

/// One record of the table: bin centres in Hz, rising, that stand for one pitch.
struct TableRow {
    Notes::NoteID note;
    std::vector<double> frequenciesHz;
};

/// The records of `model`'s table, in rising pitch. A pitch without bins has no record.
std::vector<TableRow> tableRows(const TableModel& model);

/// Writes `rows` in the format of notes.txt, one record a line, frequencies in Hz with one decimal.
void writeTable(std::ostream& out, const std::vector<TableRow>& rows);

/// Equal-tempered frequency in Hz of MIDI note `pitch`.
double pitchFrequencyHz(double a4Hz, int pitch);

/// The lowest and the highest frequency in Hz whose peak falls on a bin that is looked at.
double lowestScannedHz();
double highestScannedHz();
