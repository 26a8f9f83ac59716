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

    Sound sound;
    double quietDb;                  ///< the loudest level while it was to be quiet
    double quietNoiseDb;             ///< the middle level then
    double levelDb;                  ///< the level of the note, or the loudest there was
    double levelHz;                  ///< where that was in the spectrum
    double minDecibel;               ///< what the game listens with now
    bool clips;                      ///< samples at full scale
    Notes::NoteID note;              ///< what it was mostly taken for
    double share;                    ///< of the time, in which it was taken for that note, 0 to 1
    bool quietTakenForNotes;         ///< the game heard notes in the quiet
    std::optional<int> suggestedDb;  ///< the least level to set; none when there is no room between the two
};

/// Judges what was heard while it was to be quiet, and after a note was asked for.
MicFindings judge(std::vector<Moment> const& quiet, std::vector<Moment> const& note, double minDecibel);

/// The findings in words, with what to do; the last lines of `zanto-mic check`.
std::string inWords(MicFindings const& findings);

/// Whether one can play as it is.
bool isFine(MicFindings const& findings);
