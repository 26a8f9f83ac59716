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
    MidiBytes& tempo(unsigned microsecondsPerQuarter) {
        return event(0, {0xFF, 0x51, 3, microsecondsPerQuarter >> 16, microsecondsPerQuarter >> 8,
                         microsecondsPerQuarter});
    }
    /// `beatPower` 2 for quarter notes, 3 for eighth notes.
    MidiBytes& timeSignature(unsigned beats, unsigned beatPower, unsigned ticks = 0) {
        return event(ticks, {0xFF, 0x58, 4, beats, beatPower, 24, 8});
    }
    /// `channel` from 0.
    MidiBytes& on(unsigned ticks, unsigned channel, unsigned pitch) {
        return event(ticks, {0x90 | channel, pitch, 80});
    }
    MidiBytes& off(unsigned ticks, unsigned channel, unsigned pitch) {
        return event(ticks, {0x80 | channel, pitch, 0});
    }
    MidiBytes& program(unsigned channel, unsigned number) { return event(0, {0xC0 | channel, number}); }
    MidiBytes& bend(unsigned ticks, unsigned channel) { return event(ticks, {0xE0 | channel, 0, 0x50}); }

    std::string file() const;

private:
    /// Of each number its lowest byte.
    MidiBytes& event(unsigned ticks, const std::vector<unsigned>& bytes);

    unsigned division;
    std::vector<std::string> tracks;
};
