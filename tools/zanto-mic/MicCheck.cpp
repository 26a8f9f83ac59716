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
constexpr double clearlyMore = 0.1;  // of the time

double median(std::vector<double> values) {
    if (values.empty()) {
        return silence;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double loudest(const std::vector<Moment>& moments) {
    double most = silence;
    for (const Moment& moment : moments) {
        most = std::max(most, moment.loudestDb);
    }
    return most;
}

bool isSilent(const std::vector<Moment>& moments) {
    return std::all_of(moments.begin(), moments.end(),
                       [](const Moment& moment) { return moment.peakSample == 0.0; });
}

// What an ear heard of a note.
struct Hearing {
    Notes::NoteID note = -1;  // heard most
    double share = 0.0;
    double clean = 0.0;
};

Hearing hearingOf(const std::vector<Moment>& sounding, decltype(&Moment::notes) notes) {
    std::array<int, 7> heard{};
    for (const Moment& moment : sounding) {
        for (const Notes::NoteID& note : moment.*notes) {
            ++heard.at(static_cast<std::size_t>(note));
        }
    }
    const auto most = std::max_element(heard.begin(), heard.end());
    if (*most == 0) {
        return {};
    }
    const auto all = static_cast<double>(sounding.size());
    const std::vector<Notes::NoteID> note{static_cast<std::int32_t>(std::distance(heard.begin(), most))};
    const auto alone = std::count_if(sounding.begin(), sounding.end(),
                                     [&](const Moment& moment) { return moment.*notes == note; });
    return {note.front(), static_cast<double>(*most) / all, static_cast<double>(alone) / all};
}

void judgeNote(const std::vector<Moment>& sounding, MicFindings& findings) {
    std::vector<double> levels;
    levels.reserve(sounding.size());
    for (const Moment& moment : sounding) {
        levels.push_back(moment.loudestDb);
    }
    findings.levelDb = median(levels);
    for (const Moment& moment : sounding) {
        if (moment.loudestDb == findings.levelDb) {
            findings.levelHz = moment.loudestHz;
        }
    }
    const Hearing hearing = hearingOf(sounding, &Moment::notes);
    const Hearing fine = hearingOf(sounding, &Moment::fine);
    findings.sound = hearing.note != -1 ? MicFindings::Sound::heard : MicFindings::Sound::noNote;
    findings.note = hearing.note;
    findings.share = hearing.share;
    findings.clean = hearing.clean;
    findings.fineNote = fine.note;
    findings.fineClean = fine.clean;
}

// A level between the quiet and the note; the present one if it is.
std::optional<int> suggestion(const MicFindings& findings) {
    const double least = std::ceil(std::max(findings.quietDb + aboveQuietDb, leastLevelDb));
    const double most = std::floor(findings.levelDb - belowNoteDb);
    if (least > most) {
        return std::nullopt;
    }
    return static_cast<int>(std::lround(std::clamp(findings.minDecibel, least, most)));
}

std::string levelWords(double levelDb) {
    return std::isfinite(levelDb) ? fixed(levelDb, 1) + " dB" : std::string("silence");
}

std::string soundWords(const MicFindings& findings) {
    const std::string above =
        std::isfinite(findings.quietDb)
            ? ", " + fixed(findings.levelDb - findings.quietDb, 0) + " dB above the quiet"
            : "";
    const std::string where =
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

std::string earWords(const MicFindings& findings) {
    if (findings.fineClean < enoughShare || findings.fineClean < findings.clean + clearlyMore) {
        return "";
    }
    return "The fine ear would serve you better: it heard " + Notes::idToName(findings.fineNote) +
           " and nothing else in " + fixed(100.0 * findings.fineClean, 0) +
           " % of the\ntime, the plain ear one note alone in " + fixed(100.0 * findings.clean, 0) +
           " %. Start the game with it:\n    ./play --ear fine\n";
}

std::string suggestionWords(const MicFindings& findings) {
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

MicFindings judge(const std::vector<Moment>& quiet, const std::vector<Moment>& note, double minDecibel) {
    MicFindings findings;
    findings.minDecibel = minDecibel;
    findings.quietDb = loudest(quiet);
    std::vector<double> noise;
    for (const Moment& moment : quiet) {
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
    for (const Moment& moment : note) {
        findings.clips = findings.clips || moment.peakSample >= fullScale;
        if (std::isfinite(moment.loudestDb) && moment.loudestDb >= findings.quietDb + riseDb) {
            sounding.push_back(moment);
        }
    }
    if (!sounding.empty()) {
        judgeNote(sounding, findings);
        findings.suggestedDb = suggestion(findings);
    }
    return findings;
}

std::string inWords(const MicFindings& findings) {
    std::string words = "Quiet: " + levelWords(findings.quietDb) + " at its loudest, " +
                        levelWords(findings.quietNoiseDb) + " in the middle.\n";
    if (findings.quietTakenForNotes) {
        words += "The game takes some of that noise for notes.\n";
    }
    words += soundWords(findings);
    const bool isLoudEnough = findings.levelDb > findings.minDecibel;
    if (findings.sound == MicFindings::Sound::noNote && isLoudEnough) {
        words +=
            "The notes are C, D, E, F, G, A and B; what lies between them is none. Is the instrument in "
            "tune?\n";
    }
    if (findings.clips) {
        words += "The microphone clips, which makes up notes that nobody plays: turn its level down.\n";
    }
    const bool rose =
        findings.sound == MicFindings::Sound::heard || findings.sound == MicFindings::Sound::noNote;
    if (!rose) {
        return words;
    }
    if (findings.levelDb < softDb) {
        words += "That is soft: raise the input's level if you can.\n";
    }
    return words + earWords(findings) + suggestionWords(findings);
}

bool isFine(const MicFindings& findings) {
    return findings.sound == MicFindings::Sound::heard && findings.share >= enoughShare && !findings.clips &&
           !findings.quietTakenForNotes && findings.suggestedDb &&
           *findings.suggestedDb == std::lround(findings.minDecibel);
}
