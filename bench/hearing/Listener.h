#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "bench/hearing/Recording.h"

/// An ear that listens to recordings at 100 frames a second: the game's plain one with a note table of its
/// own, its fine one, or the peer.
///
///     Listener listener(tableText);
///     listener.replay(recording, [&](double seconds, NoteState const& held) { ... });
class Listener {
public:
    /// `tableText` is the content of a notes.txt.
    explicit Listener(const std::string& tableText);

    static Listener fine() { return Listener(&Recording::fineNotes); }
    static Listener peer() { return Listener(&Recording::peerNotes); }

    /// Calls `frame` for every game frame of `recording` with the time since the sound's start and the notes
    /// held then. A frame sees the blocks that are complete at its time. Starts with no note held.
    void replay(const Recording& recording, const std::function<void(double, const NoteState&)>& frame);

private:
    using NotesByFrame = std::vector<std::uint8_t> Recording::*;
    explicit Listener(NotesByFrame listened) : notes(listened) {}
    void replayPlain(const Recording& recording, const std::function<void(double, const NoteState&)>& frame);

    NotesByFrame notes = nullptr;                ///< what was heard, but by the plain ear
    std::unique_ptr<NoteEstimation> estimation;  ///< of the plain ear
    /// [2048] dB; silent but for the peaks of the block under analysis.
    std::vector<double> spectrum;
};

/// The whole of a text file. Throws std::runtime_error if it cannot be read.
std::string readText(const std::string& path);
