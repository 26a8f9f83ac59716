#include "tools/zanto-song/WrittenScore.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "tools/common/Text.h"

namespace {

constexpr double nearly = 1e-6;

using Sections = std::map<char, std::vector<std::size_t>>;  // the indices of their measures

std::string lettersOf(const Sections& sections) {
    std::string letters;
    for (const auto& [letter, measures] : sections) {
        letters += letter;
    }
    return letters;
}

class Layout {
public:
    explicit Layout(SheetMusic& sheet_) : sheet(sheet_) {}

    /// Adds parts with equal numbers of measures. To be called once.
    void add(const std::vector<ScorePart>& parts, const std::string& plan);

private:
    static void merge(const MeasureSigns& one, MeasureSigns& all);
    void findOrder(const ScorePart& part, const std::string& plan);
    void addPart(const ScorePart& part);
    void tellUnplayed(const ScorePart& part);

    SheetMusic& sheet;
    std::vector<double> lengths;
    std::vector<MeasureSigns> signs;
    std::vector<std::size_t> order;
};

void Layout::add(const std::vector<ScorePart>& parts, const std::string& plan) {
    for (const ScorePart& part : parts) {
        lengths.resize(std::max(lengths.size(), part.measures.size()));
        signs.resize(lengths.size());
        for (std::size_t index = 0; index < part.measures.size(); ++index) {
            lengths[index] = std::max(lengths[index], part.measures[index].length);
            merge(part.measures[index].signs, signs[index]);
        }
    }
    findOrder(parts.front(), plan);
    for (const ScorePart& part : parts) {
        addPart(part);
    }
    tellUnplayed(parts.front());
}

void Layout::merge(const MeasureSigns& one, MeasureSigns& all) {
    all.repeatBegins = all.repeatBegins || one.repeatBegins;
    all.timesPlayed = std::max(all.timesPlayed, one.timesPlayed);
    all.endingBegins.insert(one.endingBegins.begin(), one.endingBegins.end());
    all.endingEnds = all.endingEnds || one.endingEnds;
    all.segno = all.segno || one.segno;
    all.coda = all.coda || one.coda;
    all.jump = one.jump != MeasureSigns::Jump::None ? one.jump : all.jump;
    all.toCoda = all.toCoda || one.toCoda;
    all.fine = all.fine || one.fine;
}

void Layout::findOrder(const ScorePart& part, const std::string& plan) {
    Sections sections;
    for (std::size_t index = 0; index < part.measures.size(); ++index) {
        sections[part.measures[index].section].push_back(index);
    }
    for (const char letter : std::set<char>(plan.begin(), plan.end())) {
        if (sections.count(letter) == 0) {
            sheet.remarks.push_back(std::string("there is no part ") + letter + ", which the plan " +
                                    quoted(plan) + " names");
        }
    }
    if (plan.find_first_of(lettersOf(sections)) == std::string::npos) {
        order = playingOrder(signs);
        return;
    }
    Sections played;
    for (const auto& [letter, measures] : sections) {
        std::vector<MeasureSigns> own;
        for (const std::size_t index : measures) {
            own.push_back(signs[index]);
        }
        for (const std::size_t index : playingOrder(own)) {
            played[letter].push_back(measures[index]);
        }
    }
    // What stands before the first section begins the music.
    for (const char letter : std::string(1, '\0') + plan) {
        const std::vector<std::size_t>& more = played[letter];
        order.insert(order.end(), more.begin(), more.end());
        if (order.size() > mostSheetNotes) {
            throw tooLong();
        }
    }
}

void Layout::addPart(const ScorePart& part) {
    std::map<std::string, SheetVoice> voices;
    std::map<std::pair<std::string, int>, std::size_t> latest;  // by voice and pitch, an index of its notes
    double begin = 0.0;
    std::size_t count = 0;
    for (const SheetVoice& voice : sheet.voices) {
        count += voice.notes.size();
    }
    for (const std::size_t index : order) {
        for (const ScoreNote& note : part.measures[index].notes) {
            std::vector<SheetNote>& notes = voices[note.voice].notes;
            const double start = begin + note.start;
            const auto [entry, isFirst] = latest.try_emplace({note.voice, note.pitch}, notes.size());
            if (note.continues && !isFirst) {
                SheetNote& before = notes[entry->second];
                if (std::abs(before.start + before.length - start) < nearly) {
                    before.length += note.length;
                    continue;
                }
            }
            entry->second = notes.size();
            notes.push_back({start, note.length, note.pitch, note.place});
            if (++count > mostSheetNotes || start > mostQuarters) {
                throw tooLong();
            }
        }
        begin += lengths[index];
    }
    for (auto& [number, voice] : voices) {
        sortNotes(voice.notes);
        voice.name = voices.size() == 1 ? part.name : part.name + ", voice " + number;
        voice.instrument = part.instrument;
        sheet.voices.push_back(std::move(voice));
    }
}

void Layout::tellUnplayed(const ScorePart& part) {
    std::vector<bool> isPlayed(lengths.size(), false);
    for (const std::size_t index : order) {
        isPlayed[index] = true;
    }
    for (std::size_t index = 0; index < lengths.size(); ++index) {
        if (!isPlayed[index] && lengths[index] > 0.0) {
            sheet.lost.push_back("bar " + part.measures[index].number +
                                 ", to which no repeat and no jump leads");
        }
    }
}

}  // namespace

void layOut(const std::vector<ScorePart>& parts, const std::string& plan, SheetMusic& sheet) {
    const bool areEqual = std::all_of(parts.begin(), parts.end(), [&](const ScorePart& part) {
        return part.measures.size() == parts.front().measures.size();
    });
    if (areEqual && !parts.empty()) {
        Layout(sheet).add(parts, plan);
        return;
    }
    for (const ScorePart& part : parts) {
        Layout(sheet).add({part}, plan);
    }
    if (!parts.empty()) {
        sheet.remarks.emplace_back("the parts have different numbers of bars: each was read on its own");
    }
}
