#pragma once

#include <string>
#include <vector>

/// Writes standard MIDI files for tests, event by event; times in ticks since the event before.
///
///     MidiBytes bytes(480);
///     bytes.track().name("Flute").on(0, 0, 72).off(480, 0, 72);
///     std::string const contents = bytes.file();
class MidiBytes {
public:
    explicit MidiBytes(unsigned ticksPerQuarter) : division(ticksPerQuarter) {}

    /// Begins a track, to which all that follows is added.
    MidiBytes& track();

    MidiBytes& name(const std::string& text);
    MidiBytes& tempo(unsigned microsecondsPerQuarter);
    /// `beatPower` 2 for quarter notes, 3 for eighth notes.
    MidiBytes& timeSignature(unsigned beats, unsigned beatPower, unsigned ticks = 0);
    /// `channel` from 0.
    MidiBytes& on(unsigned ticks, unsigned channel, unsigned pitch);
    MidiBytes& off(unsigned ticks, unsigned channel, unsigned pitch);
    MidiBytes& program(unsigned channel, unsigned number);
    MidiBytes& bend(unsigned ticks, unsigned channel);

    std::string file() const;

private:
    MidiBytes& event(unsigned ticks, const std::vector<unsigned>& bytes);

    unsigned division;
    std::vector<std::string> tracks;
};
