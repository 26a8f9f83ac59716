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
    /// Sounding frequency of A4 in Hz.
    double a4Hz = 440.0;
    /// How far a written note sounds from its name, in semitones: -2 for a B flat clarinet.
    int transposeSemitones = 0;
    /// The sounding range to be heard, as MIDI note numbers (A4 is 69).
    int lowestPitch = 48;
    int highestPitch = 83;
};

/// One record of the table: bin centres in Hz, rising, that stand for one pitch.
struct TableRow {
    Notes::NoteID note;
    std::vector<double> frequenciesHz;
};

/// The records of `model`'s table, in rising pitch. A pitch that no bin is given to has no record.
std::vector<TableRow> tableRows(TableModel const& model);

/// Writes `rows` in the format of notes.txt, one record a line, frequencies in Hz with one decimal.
void writeTable(std::ostream& out, std::vector<TableRow> const& rows);

/// Equal-tempered frequency in Hz of MIDI note `pitch`.
double pitchFrequencyHz(double a4Hz, int pitch);

/// The lowest and the highest frequency in Hz whose peak falls on a bin that is looked at.
double lowestScannedHz();
double highestScannedHz();
