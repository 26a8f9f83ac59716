#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-mic/Listener.h"

/// What a microphone check found out.
struct MicFindings {
    enum class Sound {
        silent,    ///< not one sample other than zero came
        notHeard,  ///< nothing rose above the quiet
        noNote,    ///< a sound that the game takes for no note
        heard
    };

    Sound sound = Sound::notHeard;
    double quietDb = 0.0;         ///< the loudest level while it was to be quiet
    double quietNoiseDb = 0.0;    ///< the middle level then
    double levelDb = 0.0;         ///< the level of the note, or the loudest there was
    double levelHz = 0.0;         ///< where that was in the spectrum
    double minDecibel = 0.0;      ///< what the game listens with now
    bool clips = false;           ///< samples at full scale
    Notes::NoteID note = -1;      ///< what it was mostly taken for
    double share = 0.0;           ///< of the time, in which it was taken for that note, 0 to 1
    double clean = 0.0;           ///< of the time, in which that note and no other was heard
    Notes::NoteID fineNote = -1;  ///< what the fine ear mostly took it for, if the game has the plain one
    double fineClean = 0.0;
    bool quietTakenForNotes = false;  ///< the game heard notes in the quiet
    std::optional<int> suggestedDb;   ///< the least level to set; none when there is no room between the two
};

/// Judges what was heard while it was to be quiet, and after a note was asked for.
MicFindings judge(const std::vector<Moment>& quiet, const std::vector<Moment>& note, double minDecibel);

/// The findings in words, with what to do; the last lines of `zanto-mic check`.
std::string inWords(const MicFindings& findings);

/// Whether one can play as it is.
bool isFine(const MicFindings& findings);
