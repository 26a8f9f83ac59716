#include "bench/hearing/Judge.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "analysis/Notes.h"
#include "game/Rules.h"

namespace {

constexpr double windowStartSeconds = 0.15;
constexpr double penaltyHoldSeconds = rules::wrongHoldSeconds;
constexpr int noteCount = Notes::noteCount;

using NoteSet = std::array<bool, noteCount>;

NoteSet notesOf(const std::vector<int>& pitches) {
    NoteSet played{};
    for (const int pitch : pitches) {
        if (Notes::ofSemitone(pitch) != -1) {
            played[static_cast<std::size_t>(Notes::ofSemitone(pitch))] = true;
        }
    }
    return played;
}

NoteSet notesDown(const NoteState& held) {
    NoteSet down{};
    for (int note = 0; note < noteCount; ++note) {
        down[static_cast<std::size_t>(note)] = held.isDown(note);
    }
    return down;
}

double shareFound(const NoteSet& played, const NoteSet& heard) {
    int wanted = 0;
    int found = 0;
    for (std::size_t note = 0; note < played.size(); ++note) {
        wanted += played[note] ? 1 : 0;
        found += played[note] && heard[note] ? 1 : 0;
    }
    return wanted == 0 ? 0.0 : static_cast<double>(found) / wanted;
}

bool anyForeign(const NoteSet& played, const NoteSet& heard) {
    for (std::size_t note = 0; note < played.size(); ++note) {
        if (heard[note] && !played[note]) {
            return true;
        }
    }
    return false;
}

bool isInWindow(double sinceAttack) {
    return sinceAttack >= windowStartSeconds && sinceAttack < judgedToSeconds;
}

}  // namespace

Hearing judge(const Take& take, const Recording& recording, Listener& listener) {
    std::vector<int> sounding = take.pitches;
    if (take.trial == Trial::ringing) {
        sounding.push_back(take.before);
    }
    const NoteSet played = notesOf(sounding);
    const NoteSet isNew = notesOf(take.pitches);
    const NoteSet ending = notesOf(take.trial == Trial::legato ? std::vector<int>{take.before} : sounding);
    const double endSeconds = take.trial == Trial::legato ? take.attack() : take.attack() + holdSeconds;
    Hearing hearing;
    hearing.lateDb = static_cast<double>(recording.lateDb);
    int frames = 0;
    listener.replay(recording, [&](double seconds, const NoteState& held) {
        const NoteSet heard = notesDown(held);
        const double sinceAttack = seconds - take.attack();
        if (shareFound(ending, heard) > 0.0) {
            hearing.tailSeconds = std::max(0.0, seconds - endSeconds);
        }
        if (sinceAttack > 0.0 && !hearing.latencySeconds && shareFound(isNew, heard) > 0.0) {
            hearing.latencySeconds = sinceAttack;
        }
        if (isInWindow(sinceAttack)) {
            hearing.right += shareFound(played, heard);
            hearing.wrong += anyForeign(played, heard) ? 1.0 : 0.0;
            ++frames;
        }
    });
    hearing.right /= frames;
    hearing.wrong /= frames;
    return hearing;
}

Mean meanOf(const std::vector<Heard>& all, const Which& which) {
    Mean mean;
    double latency = 0.0;
    std::size_t heardAtAll = 0;
    for (const Heard& heard : all) {
        if (!which(heard)) {
            continue;
        }
        ++mean.takes;
        mean.hearing.right += heard.hearing.right;
        mean.hearing.wrong += heard.hearing.wrong;
        mean.hearing.tailSeconds += heard.hearing.tailSeconds;
        mean.hearing.lateDb = std::min(mean.hearing.lateDb, heard.hearing.lateDb);
        if (heard.hearing.latencySeconds) {
            latency += *heard.hearing.latencySeconds;
            ++heardAtAll;
        }
    }
    if (mean.takes > 0) {
        const auto takes = static_cast<double>(mean.takes);
        mean.hearing.right /= takes;
        mean.hearing.wrong /= takes;
        mean.hearing.tailSeconds /= takes;
        mean.never = 1.0 - static_cast<double>(heardAtAll) / takes;
    }
    if (heardAtAll > 0) {
        mean.hearing.latencySeconds = latency / static_cast<double>(heardAtAll);
    }
    return mean;
}

bool isNatural(const Heard& heard) {
    return Notes::ofSemitone(heard.take.pitches.front()) != -1;
}

bool isDry(const Heard& heard) {
    return !heard.take.touch.room;
}

FalseNotes falseNotes(const Recording& recording, Listener& listener) {
    FalseNotes result;
    NoteSet before{};
    NoteSet wasLong{};
    int frames = 0;
    listener.replay(recording, [&](double, const NoteState& held) {
        const NoteSet heard = notesDown(held);
        ++frames;
        result.share += std::find(heard.begin(), heard.end(), true) != heard.end() ? 1.0 : 0.0;
        for (std::size_t note = 0; note < heard.size(); ++note) {
            result.perMinute += heard[note] && !before[note] ? 1.0 : 0.0;
            const bool isLong =
                held.downCount(static_cast<int>(note)) > static_cast<float>(penaltyHoldSeconds);
            result.longOnesPerMinute += isLong && !wasLong[note] ? 1.0 : 0.0;
            wasLong[note] = isLong;
        }
        before = heard;
    });
    const double minutes = static_cast<double>(frames) / framesPerSecond / 60.0;
    result.perMinute /= minutes;
    result.longOnesPerMinute /= minutes;
    result.share /= frames;
    return result;
}
