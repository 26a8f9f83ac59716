#include "tools/zanto-mic/MicCheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "tools/common/Text.h"

namespace {

constexpr double silence = -std::numeric_limits<double>::infinity();
constexpr double riseDb = 10.0;  // above the quiet, for a sound to be taken for the note
constexpr double fullScale = 0.999;
constexpr double softDb = -50.0;        // below, noise and the room soon win
constexpr double aboveQuietDb = 6.0;    // between the quiet and the least level
constexpr double belowNoteDb = 10.0;    // between the least level and the note
constexpr double leastLevelDb = -95.0;  // at -100 dB and below, the game hears no note at all
constexpr double enoughShare = 0.5;

double median(std::vector<double> values) {
    if (values.empty()) {
        return silence;
    }
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double loudest(std::vector<Moment> const& moments) {
    double most = silence;
    for (Moment const& moment : moments) {
        most = std::max(most, moment.loudestDb);
    }
    return most;
}

bool isSilent(std::vector<Moment> const& moments) {
    return std::all_of(moments.begin(), moments.end(),
                       [](Moment const& moment) { return moment.peakSample == 0.0; });
}

void judgeNote(std::vector<Moment> const& sounding, MicFindings& findings) {
    std::array<int, 7> heard{};
    std::vector<double> levels;
    for (Moment const& moment : sounding) {
        levels.push_back(moment.loudestDb);
        for (Notes::NoteID const& note : moment.notes) {
            ++heard.at(static_cast<std::size_t>(note));
        }
    }
    findings.levelDb = median(levels);
    for (Moment const& moment : sounding) {
        if (moment.loudestDb == findings.levelDb) {
            findings.levelHz = moment.loudestHz;
        }
    }
    auto const most = std::max_element(heard.begin(), heard.end());
    if (*most > 0) {
        findings.sound = MicFindings::Sound::heard;
        findings.note = static_cast<std::int32_t>(std::distance(heard.begin(), most));
        findings.share = static_cast<double>(*most) / static_cast<double>(sounding.size());
    }
}

// A level between the quiet and the note; the present one if it is.
std::optional<int> suggestion(MicFindings const& findings) {
    double const least = std::ceil(std::max(findings.quietDb + aboveQuietDb, leastLevelDb));
    double const most = std::floor(findings.levelDb - belowNoteDb);
    if (least > most) {
        return std::nullopt;
    }
    return static_cast<int>(std::lround(std::clamp(findings.minDecibel, least, most)));
}

std::string levelWords(double levelDb) {
    return std::isfinite(levelDb) ? fixed(levelDb, 1) + " dB" : std::string("silence");
}

std::string soundWords(MicFindings const& findings) {
    std::string const above =
        std::isfinite(findings.quietDb)
            ? ", " + fixed(findings.levelDb - findings.quietDb, 0) + " dB above the quiet"
            : "";
    std::string const where =
        levelWords(findings.levelDb) + " at " + fixed(findings.levelHz, 0) + " Hz" + above;
    switch (findings.sound) {
        case MicFindings::Sound::silent:
            return "The microphone delivers nothing at all. It may be muted or its level at zero: look at "
                   "the\n"
                   "system's sound settings, and at a switch on the microphone itself.\n";
        case MicFindings::Sound::notHeard:
            return "No note was heard: nothing rose " + fixed(riseDb, 0) +
                   " dB above the quiet. The loudest sound was " + levelWords(findings.levelDb) +
                   ".\nPlay louder, come closer, or raise the input's level.\n";
        case MicFindings::Sound::noNote:
            return "A sound was heard, " + where + ", but it was taken for no note.\n";
        case MicFindings::Sound::heard:
            return "Heard: " + where + ". It was taken for " + Notes::idToName(findings.note) + " in " +
                   fixed(100.0 * findings.share, 0) + " % of the time.\n";
    }
    return "";
}

std::string suggestionWords(MicFindings const& findings) {
    if (!findings.suggestedDb) {
        return "Note and noise are too close together for any ZANTO_MIN_DECIBEL. Make the room quieter, come "
               "closer to\n"
               "the microphone, or raise its level.\n";
    }
    if (*findings.suggestedDb == std::lround(findings.minDecibel)) {
        return "The least level of " + fixed(findings.minDecibel, 0) + " dB suits, nothing has to be set.\n";
    }
    return "Start the game like this, so that it listens with the least level that suits:\n    "
           "ZANTO_MIN_DECIBEL=" +
           std::to_string(*findings.suggestedDb) + " ./play\n";
}

}  // namespace

MicFindings judge(std::vector<Moment> const& quiet, std::vector<Moment> const& note, double minDecibel) {
    MicFindings findings{};
    findings.sound = MicFindings::Sound::notHeard;
    findings.note = -1;
    findings.minDecibel = minDecibel;
    findings.quietDb = loudest(quiet);
    std::vector<double> noise;
    for (Moment const& moment : quiet) {
        noise.push_back(moment.noiseDb);
        findings.quietTakenForNotes = findings.quietTakenForNotes || !moment.notes.empty();
    }
    findings.quietNoiseDb = median(noise);
    findings.levelDb = loudest(note);
    if (isSilent(quiet) && isSilent(note)) {
        findings.sound = MicFindings::Sound::silent;
        return findings;
    }
    std::vector<Moment> sounding;
    for (Moment const& moment : note) {
        findings.clips = findings.clips || moment.peakSample >= fullScale;
        if (std::isfinite(moment.loudestDb) && moment.loudestDb >= findings.quietDb + riseDb) {
            sounding.push_back(moment);
        }
    }
    if (!sounding.empty()) {
        findings.sound = MicFindings::Sound::noNote;
        judgeNote(sounding, findings);
        findings.suggestedDb = suggestion(findings);
    }
    return findings;
}

std::string inWords(MicFindings const& findings) {
    std::string words = "Quiet: " + levelWords(findings.quietDb) + " at its loudest, " +
                        levelWords(findings.quietNoiseDb) + " in the middle.\n";
    if (findings.quietTakenForNotes) {
        words += "The game takes some of that noise for notes.\n";
    }
    words += soundWords(findings);
    bool const isLoudEnough = findings.levelDb > findings.minDecibel;
    if (findings.sound == MicFindings::Sound::noNote && isLoudEnough) {
        words +=
            "The notes are C, D, E, F, G, A and B; what lies between them is none. Is the instrument in "
            "tune?\n";
    }
    if (findings.clips) {
        words += "The microphone clips, which makes up notes that nobody plays: turn its level down.\n";
    }
    bool const rose =
        findings.sound == MicFindings::Sound::heard || findings.sound == MicFindings::Sound::noNote;
    if (!rose) {
        return words;
    }
    if (findings.levelDb < softDb) {
        words += "That is soft: raise the input's level if you can.\n";
    }
    return words + suggestionWords(findings);
}

bool isFine(MicFindings const& findings) {
    return findings.sound == MicFindings::Sound::heard && findings.share >= enoughShare && !findings.clips &&
           !findings.quietTakenForNotes && findings.suggestedDb &&
           *findings.suggestedDb == std::lround(findings.minDecibel);
}
