#pragma once

#include <cstddef>
#include <vector>

#include "analysis/SpectrumRules.h"
#include "tools/zanto-song/Instrument.h"
#include "tools/zanto-song/Performance.h"

/// Turns played notes into sound, block by block, so that a long song needs no more memory than a short one.
///
///     Renderer renderer(perform(song, style), songSeconds(song), *findInstrument("flute"));
///     std::vector<float> block(4096);
///     while (std::size_t count = renderer.next(block)) write(block.data(), count);
class Renderer {
public:
    static constexpr int sampleRate = rules::sampleRateHz;  ///< Hz, one channel

    /// `notes` in any order; the sound lasts `totalSeconds`.
    Renderer(std::vector<PlayedNote> notes, double totalSeconds, Instrument instrument);

    /// Adds a tick to the opening of every slot and to the lead-in, far above the notes; the one at each bar
    /// line, every four slots, is stronger. Ask for it before the first block.
    void addMetronome() { metronome = true; }

    /// Fills `block` with the next samples, each within -1 to 1; gives how many there were, 0 at the end.
    std::size_t next(std::vector<float>& block);

private:
    double secondsAt(std::size_t sample) const { return static_cast<double>(sample) / sampleRate; }
    double endOf(const PlayedNote& note) const;
    std::size_t mostAtOnce() const;
    void addNotes(std::vector<float>& block, std::size_t count) const;
    void addTicks(std::vector<float>& block, std::size_t count) const;

    std::vector<PlayedNote> notes;  ///< by start
    Instrument instrument;
    std::size_t totalSamples;
    std::size_t position = 0;  ///< samples rendered so far
    double noteLevel;          ///< so that all the notes that sound together stay below full scale
    double longestNote = 0.0;  ///< seconds, with its release
    bool metronome = false;
};
