#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "analysis/Notes.h"

class Microphone;
class NoteEstimation;

/// What was heard in one moment, on the game's own scale: 0 dB is a sine at full scale.
struct Moment {
    double loudestDb;                  ///< the loudest bin of those in which the game looks for notes
    double loudestHz;                  ///< where that is
    double noiseDb;                    ///< the level of the middle one of these bins
    double peakSample;                 ///< the greatest of the newest samples, 1 for full scale
    std::vector<Notes::NoteID> notes;  ///< heard by the game
};

/// Listens to a microphone with the game's own note estimation. Levels are minus infinity in digital silence.
class Listener {
public:
    /// Reads the game's notes.txt from `dataFolder` and the least level from the environment. `microphone`
    /// must be started, and outlive this.
    Listener(Microphone& microphone, std::filesystem::path const& dataFolder);
    ~Listener();
    Listener(Listener const&) = delete;
    Listener& operator=(Listener const&) = delete;

    /// Waits for one step, and tells what was heard at its end.
    Moment next();

    /// The level that the game wants a note to exceed, in dB.
    double minDecibel() const;

    static constexpr double stepSeconds = 0.05;

private:
    Microphone& microphone;
    std::unique_ptr<NoteEstimation> estimation;
};
