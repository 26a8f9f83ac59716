#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "bench/hearing/Recording.h"

/// One of the game's ears, listening to recordings at 100 frames a second: the plain one with a note table of
/// its own, or the fine one.
///
///     Listener listener(tableText);
///     listener.replay(recording, [&](double seconds, NoteState const& held) { ... });
class Listener {
public:
    /// `tableText` is the content of a notes.txt.
    explicit Listener(const std::string& tableText);

    /// With the fine ear.
    Listener() = default;

    /// Calls `frame` for every game frame of `recording` with the time since the sound's start and the notes
    /// held then. A frame sees the blocks that are complete at its time. Starts with no note held.
    void replay(const Recording& recording, const std::function<void(double, const NoteState&)>& frame);

private:
    void replayPlain(const Recording& recording, const std::function<void(double, const NoteState&)>& frame);

    std::unique_ptr<NoteEstimation> estimation;  ///< none with the fine ear
    /// [2048] dB; silent but for the peaks of the block under analysis.
    std::vector<double> spectrum;
};

/// The whole of a text file. Throws std::runtime_error if it cannot be read.
std::string readText(const std::string& path);
