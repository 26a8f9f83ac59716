#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "bench/hearing/Recording.h"

constexpr int framesPerSecond = 100;

/// The game's note estimation with a note table of its own, listening to recordings at 100 frames a second.
///
///     Listener listener(tableText);
///     listener.replay(recording, [&](double seconds, NoteState const& held) { ... });
class Listener {
public:
    /// `tableText` is the content of a notes.txt.
    explicit Listener(std::string const& tableText);

    /// Calls `frame` for every game frame of `recording` with the time since the sound's start and the notes
    /// held then. A frame sees the blocks that are complete at its time. Starts with no note held.
    void replay(Recording const& recording, std::function<void(double, NoteState const&)> const& frame);

private:
    std::unique_ptr<NoteEstimation> estimation;
    /// [2048] dB; silent but for the peaks of the block under analysis.
    std::vector<double> spectrum;
};

/// The whole of a text file. Throws std::runtime_error if it cannot be read.
std::string readText(std::string const& path);
