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
    double loudestDb = 0.0;            ///< the loudest bin of those in which the game looks for notes
    double loudestHz = 0.0;            ///< where that is
    double noiseDb = 0.0;              ///< the level of the middle one of these bins
    double peakSample = 0.0;           ///< the greatest of the newest samples, 1 for full scale
    std::vector<Notes::NoteID> notes;  ///< heard by the game
    std::vector<Notes::NoteID> fine;   ///< heard by the fine ear; empty if the game has that one
};

/// Listens to a microphone with the game's own note estimation. Levels are minus infinity in digital silence.
class Listener {
public:
    /// Starts `microphone`, which must outlive this, and reads the game's notes.txt from `dataFolder` and the
    /// least level from the environment. Throws a Failure when the microphone does not start.
    Listener(Microphone& microphone, const std::filesystem::path& dataFolder);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// Waits for one step, and tells what was heard at its end.
    Moment next();

    /// The level that the game wants a note to exceed, in dB.
    double minDecibel() const;

    static constexpr double stepSeconds = 0.05;

private:
    Microphone& microphone;
    std::unique_ptr<NoteEstimation> estimation;
    std::unique_ptr<NoteEstimation> fineEstimation;  ///< none if the first one has the fine ear
};
