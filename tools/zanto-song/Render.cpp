#include "tools/zanto-song/Render.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "game/Rules.h"

namespace {

constexpr double fullLevel = 0.7;  // of full scale, for all notes that sound together
constexpr double pi = 3.14159265358979323846;

constexpr double tickHz = 3000.0;
constexpr double tickSeconds = 0.04;
constexpr double tickDecaySeconds = 0.006;
constexpr double strongTickLevel = 0.2;
constexpr double weakTickLevel = 0.08;
constexpr long slotsPerBar = rules::slotsPerBar;

}  // namespace

Renderer::Renderer(std::vector<PlayedNote> played, double totalSeconds, Instrument instrument_)
    : notes(std::move(played)),
      instrument(std::move(instrument_)),
      totalSamples(static_cast<std::size_t>(std::llround(totalSeconds * sampleRate))) {
    std::stable_sort(notes.begin(), notes.end(), [](const PlayedNote& left, const PlayedNote& right) {
        return left.startSeconds < right.startSeconds;
    });
    for (const PlayedNote& note : notes) {
        longestNote = std::max(longestNote, endOf(note) - note.startSeconds);
    }
    noteLevel = fullLevel / static_cast<double>(std::max<std::size_t>(mostAtOnce(), 1));
}

double Renderer::endOf(const PlayedNote& note) const {
    return note.startSeconds + note.soundingSeconds + instrument.releaseSeconds;
}

std::size_t Renderer::mostAtOnce() const {
    std::vector<double> ends;
    ends.reserve(notes.size());
    for (const PlayedNote& note : notes) {
        ends.push_back(endOf(note));
    }
    std::sort(ends.begin(), ends.end());
    std::size_t most = 0;
    std::size_t ended = 0;
    for (std::size_t begun = 0; begun < notes.size(); ++begun) {
        while (ends[ended] <= notes[begun].startSeconds) {
            ++ended;
        }
        most = std::max(most, begun + 1 - ended);
    }
    return most;
}

void Renderer::addNotes(std::vector<float>& block, std::size_t count) const {
    const double blockStart = secondsAt(position);
    const double blockEnd = secondsAt(position + count);
    auto note = std::lower_bound(
        notes.begin(), notes.end(), blockStart - longestNote,
        [](const PlayedNote& candidate, double seconds) { return candidate.startSeconds < seconds; });
    for (; note != notes.end() && note->startSeconds < blockEnd; ++note) {
        if (endOf(*note) <= blockStart) {
            continue;
        }
        for (std::size_t index = 0; index < count; ++index) {
            const double t = secondsAt(position + index) - note->startSeconds;
            block[index] += static_cast<float>(
                noteLevel * instrument.sample(note->frequencyHz, t, note->soundingSeconds));
        }
    }
}

void Renderer::addTicks(std::vector<float>& block, std::size_t count) const {
    for (std::size_t index = 0; index < count; ++index) {
        const double t = secondsAt(position + index);
        const double slot = std::floor((t - firstSlotSeconds) / rules::secondsPerSlot);
        const double sinceTick = t - firstSlotSeconds - slot * rules::secondsPerSlot;
        if (sinceTick < tickSeconds) {
            const bool strong = std::lround(slot) % slotsPerBar == 0;
            block[index] += static_cast<float>((strong ? strongTickLevel : weakTickLevel) *
                                               std::exp(-sinceTick / tickDecaySeconds) *
                                               std::sin(2.0 * pi * tickHz * sinceTick));
        }
    }
}

std::size_t Renderer::next(std::vector<float>& block) {
    const std::size_t count = std::min(block.size(), totalSamples - position);
    std::fill(block.begin(), block.end(), 0.0f);
    addNotes(block, count);
    if (metronome) {
        addTicks(block, count);
    }
    position += count;
    return count;
}
