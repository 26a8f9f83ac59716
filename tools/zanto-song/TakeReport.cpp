#include "tools/zanto-song/TakeReport.h"

#include <algorithm>
#include <cmath>

#include "tools/common/JsonWriter.h"
#include "tools/common/Text.h"

namespace {

std::string nameOf(const TakenNote& note) {
    const std::string name = Notes::idToName(note.note);
    return note.length == 1 ? name : name + std::to_string(note.length);
}

std::string namesOf(const std::vector<Notes::NoteID>& notes) {
    std::string names;
    for (std::size_t i = 0; i < notes.size(); ++i) {
        names += (i == 0 ? "" : (i + 1 == notes.size() ? " and " : ", ")) + Notes::idToName(notes[i]);
    }
    return names;
}

std::string levelOf(double levelDb) {
    return std::isfinite(levelDb) ? "no louder than " + fixed(levelDb, 1) + " dB" : "silent";
}

// Why a note was not awarded, in one word for programs and in words.
struct Reason {
    std::string code;
    std::string text;
};

Reason reasonOf(const TakenNote& note, double minDecibel) {
    switch (note.outcome) {
        case TakenNote::Outcome::awarded:
            return {"awarded", ""};
        case TakenNote::Outcome::tooShort:
            return {"too-short", "not held long enough"};
        case TakenNote::Outcome::otherNotes:
            return {"other-notes", "not heard; heard " + namesOf(note.others)};
        case TakenNote::Outcome::noNote:
            return {"no-note",
                    "not heard; a sound of " + fixed(note.loudestDb, 1) + " dB was taken for no note"};
        case TakenNote::Outcome::tooSoft:
            return {"too-soft",
                    "not heard; " + levelOf(note.loudestDb) + ", " + fixed(minDecibel, 1) + " dB are needed"};
        case TakenNote::Outcome::recordingOver:
            return {"recording-over", "the recording is over"};
    }
    return {};
}

Reason causeOf(const TakenPenalty& penalty) {
    const std::string slot = std::to_string(penalty.causeSlot);
    switch (penalty.cause) {
        case TakenPenalty::Cause::heldOver:
            return {"held-over", "still sounding from slot " + slot};
        case TakenPenalty::Cause::early:
            return {"early", "too early for slot " + slot};
        case TakenPenalty::Cause::notAskedFor:
            return {"not-asked-for", "nothing asks for it"};
    }
    return {};
}

std::string peaksOf(const TakenPenalty& penalty) {
    std::string peaks;
    for (const double peakHz : penalty.peaksHz) {
        peaks += (peaks.empty() ? "" : ", ") + fixed(peakHz, 0);
    }
    return peaks.empty() ? "" : ", heard at " + peaks + " Hz";
}

std::string lineOf(const TakenNote& note, double minDecibel) {
    const bool wasHeard = note.heardSeconds.has_value();
    const std::string points = note.outcome == TakenNote::Outcome::awarded ? fixed(note.points, 0) : "-";
    const std::string reason = reasonOf(note, minDecibel).text;
    return padLeft(std::to_string(note.slot), 5) + "  " + padRight(nameOf(note), 5) +
           padLeft(fixed(note.dueSeconds, 2), 8) + padLeft(wasHeard ? fixed(*note.heardSeconds, 2) : "-", 8) +
           padLeft(wasHeard ? fixed(note.heldSeconds, 3) : "-", 8) +
           padLeft(fixed(note.neededSeconds, 3), 8) + padLeft(points, 8) +
           (reason.empty() ? "" : "  " + reason) + "\n";
}

std::string textOf(const Take& take) {
    std::string text = " slot  note      due   heard    held  needed  points\n";
    for (const TakenNote& note : take.notes) {
        text += lineOf(note, take.minDecibel);
    }
    if (!take.penalties.empty()) {
        text += "\n slot  note       at    held  points\n";
    }
    for (const TakenPenalty& penalty : take.penalties) {
        text += padLeft(std::to_string(penalty.slot), 5) + "  " + padRight(Notes::idToName(penalty.note), 5) +
                padLeft(fixed(penalty.atSeconds, 2), 8) + padLeft(fixed(penalty.heldSeconds, 3), 8) +
                padLeft(fixed(penalty.points, 0), 8) + "  " + causeOf(penalty).text + peaksOf(penalty) + "\n";
    }
    return text;
}

void writeNote(JsonWriter& json, const TakenNote& note, double minDecibel) {
    const bool awarded = note.outcome == TakenNote::Outcome::awarded;
    const Reason reason = reasonOf(note, minDecibel);
    json.openObject().key("slot").value(note.slot).key("note").value(Notes::idToName(note.note));
    json.key("length").value(note.length).key("due").value(note.dueSeconds, 3);
    json.key("heard");
    note.heardSeconds ? json.value(*note.heardSeconds, 3) : json.null();
    json.key("held").value(note.heldSeconds, 3).key("needed").value(note.neededSeconds, 3);
    json.key("loudest").value(note.loudestDb, 1);
    json.key("others").openArray();
    for (const Notes::NoteID& other : note.others) {
        json.value(Notes::idToName(other));
    }
    json.close();
    json.key("awarded");
    awarded ? json.value(note.awardedSeconds, 3) : json.null();
    json.key("points").value(note.points, 0).key("reason").value(reason.code).close();
}

void writePenalty(JsonWriter& json, const TakenPenalty& penalty) {
    json.openObject().key("slot").value(penalty.slot).key("note").value(Notes::idToName(penalty.note));
    json.key("at").value(penalty.atSeconds, 3).key("held").value(penalty.heldSeconds, 3);
    json.key("points").value(penalty.points, 0).key("cause").value(causeOf(penalty).code);
    json.key("cause_slot");
    penalty.cause == TakenPenalty::Cause::notAskedFor ? json.null() : json.value(penalty.causeSlot);
    json.key("peaks").openArray();
    for (const double peakHz : penalty.peaksHz) {
        json.value(peakHz, 1);
    }
    json.close().close();
}

std::string csvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string field = "\"";
    for (const char letter : text) {
        field += letter == '"' ? "\"\"" : std::string(1, letter);
    }
    return field + "\"";
}

}  // namespace

std::size_t awardedIn(const Take& take) {
    return static_cast<std::size_t>(
        std::count_if(take.notes.begin(), take.notes.end(),
                      [](const TakenNote& note) { return note.outcome == TakenNote::Outcome::awarded; }));
}

std::string summaryOf(const Take& take) {
    return fixed(take.score, 0) + " points, " + std::to_string(awardedIn(take)) + " of " +
           counted(take.notes.size(), "note") + " awarded, " +
           (take.penalties.size() == 1 ? "1 penalty" : std::to_string(take.penalties.size()) + " penalties");
}

std::string textReport(const std::string& song, const std::vector<NamedTake>& takes) {
    std::string text;
    for (const NamedTake& named : takes) {
        text += named.recording + " plays " + song + ": " + summaryOf(named.take) + "\n\n" +
                textOf(named.take) + "\n";
    }
    if (takes.size() > 1) {
        for (const NamedTake& named : takes) {
            text += named.recording + ": " + summaryOf(named.take) + "\n";
        }
    } else if (!text.empty()) {
        text.pop_back();
    }
    return text;
}

std::string jsonReport(const std::string& song, const std::vector<NamedTake>& takes) {
    JsonWriter json;
    json.openObject().key("song").value(song).key("takes").openArray();
    for (const NamedTake& named : takes) {
        const Take& take = named.take;
        json.openObject().key("recording").value(named.recording).key("score").value(take.score, 0);
        json.key("awarded").value(awardedIn(take)).key("min_decibel").value(take.minDecibel, 1);
        json.key("notes").openArray();
        for (const TakenNote& note : take.notes) {
            writeNote(json, note, take.minDecibel);
        }
        json.close().key("penalties").openArray();
        for (const TakenPenalty& penalty : take.penalties) {
            writePenalty(json, penalty);
        }
        json.close().close();
    }
    json.close().close();
    return json.text() + "\n";
}

std::string csvReport(const std::string& song, const std::vector<NamedTake>& takes) {
    std::string text = "song,recording,kind,slot,note,length,due,heard,held,needed,points,reason\n";
    for (const NamedTake& named : takes) {
        const std::string files = csvField(song) + "," + csvField(named.recording) + ",";
        for (const TakenNote& note : named.take.notes) {
            text += files + "note," + std::to_string(note.slot) + "," + Notes::idToName(note.note) + "," +
                    std::to_string(note.length) + "," + fixed(note.dueSeconds, 3) + "," +
                    (note.heardSeconds ? fixed(*note.heardSeconds, 3) : "") + "," +
                    fixed(note.heldSeconds, 3) + "," + fixed(note.neededSeconds, 3) + "," +
                    fixed(note.points, 0) + "," + reasonOf(note, named.take.minDecibel).code + "\n";
        }
        for (const TakenPenalty& penalty : named.take.penalties) {
            text += files + "penalty," + std::to_string(penalty.slot) + "," + Notes::idToName(penalty.note) +
                    ",,," + fixed(penalty.atSeconds, 3) + "," + fixed(penalty.heldSeconds, 3) + ",," +
                    fixed(penalty.points, 0) + "," + causeOf(penalty).code + "\n";
        }
    }
    return text;
}
