#include "tools/zanto-song/TakePicture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "game/Rules.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Staff.h"
#include "tools/zanto-song/TakeMarks.h"

using namespace staff;
using namespace marks;

namespace {

using rules::secondsPerSlot;
using rules::slotsPerBar;
using Outcome = TakenNote::Outcome;

constexpr int barsPerLine = 4;
constexpr double slotMillimetres = slotWidth(barsPerLine);
constexpr std::size_t slotsPerLine = barsPerLine * slotsPerBar;

constexpr double titleSize = 5.0;
constexpr double textSize = 3.2;
constexpr double wordSpacing = 2.7;
constexpr double headRoom = 6.0;  // for numbers above the staff
constexpr double strokeSteps = 12.0;

struct Word {
    std::string text;
    Page::Color color;
};

// What a note earned, to write beneath its slot.
std::vector<Word> wordsOf(const TakenNote& note) {
    const std::string name = Notes::idToName(note.note);
    if (note.outcome == Outcome::awarded) {
        return {{name + " +" + fixed(note.points, 0), awardColor}};
    }
    std::string reason;
    switch (note.outcome) {
        case Outcome::tooShort:
            reason = "too short";
            break;
        case Outcome::otherNotes:
            reason = "heard";
            for (std::size_t i = 0; i < std::min<std::size_t>(note.others.size(), 2); ++i) {
                reason += " " + Notes::idToName(note.others[i]);
            }
            break;
        case Outcome::noNote:
            reason = "no note";
            break;
        case Outcome::tooSoft:
            reason = std::isfinite(note.loudestDb) ? "too soft" : "silence";
            break;
        default:
            reason = "ended";
    }
    return {{name + " missed", penaltyColor}, {reason, penaltyColor}};
}

std::vector<Word> wordsOf(const TakenPenalty& penalty) {
    const char* const cause = penalty.cause == TakenPenalty::Cause::heldOver
                                  ? "held on"
                                  : (penalty.cause == TakenPenalty::Cause::early ? "early" : "not asked");
    return {{Notes::idToName(penalty.note) + " " + fixed(penalty.points, 0), penaltyColor},
            {cause, penaltyColor}};
}

double loudestOf(const Take& take) {
    double loudestDb = take.minDecibel + 1.0;
    for (const HeardFrame& frame : take.frames) {
        for (std::size_t note = 0; note < frame.counts.size(); ++note) {
            if (frame.counts.at(note) > 0) {
                loudestDb = std::max(loudestDb, static_cast<double>(frame.levelsDb.at(note)));
            }
        }
    }
    return loudestDb;
}

class TakeLine {
public:
    TakeLine(const Take& take_, double loudestDb_, std::size_t first_, std::size_t end_)
        : take(take_),
          loudestDb(loudestDb_),
          first(first_),
          end(end_),
          line(page, paper, slotMillimetres, first_, end_, headRoom) {}

    Page draw(bool isLast) {
        page.width = pageWidth;
        line.drawRows();
        drawBoxes();
        drawHeard();
        line.drawBars(isLast);
        drawMarks();
        drawScores(isLast);
        page.height = line.y(0.0) + wordSpacing * (2.5 + static_cast<double>(drawWords()));
        page.title = "Bars " + std::to_string(first / slotsPerBar + 1) + " to " +
                     std::to_string((end - 1) / slotsPerBar + 1);
        return std::move(page);
    }

private:
    double slotAt(double seconds) const { return (seconds - take.slotOpens(0)) / secondsPerSlot; }
    bool isHere(double seconds) const {
        const double slot = slotAt(seconds);
        return slot >= static_cast<double>(first) && slot < static_cast<double>(end);
    }

    double thicknessOf(double levelDb) const;
    void drawBoxes();
    void drawHeard();
    void drawMarks();
    void drawScores(bool isLast);
    std::size_t drawWords();

    const Take& take;
    double loudestDb;  ///< of the whole take
    std::size_t first;
    std::size_t end;
    Page page;
    StaffLine line;
};

double TakeLine::thicknessOf(double levelDb) const {
    const double share = std::clamp((levelDb - take.minDecibel) / (loudestDb - take.minDecibel), 0.0, 1.0);
    return softestStroke + std::ceil(share * strokeSteps) / strokeSteps * (loudestStroke - softestStroke);
}

void TakeLine::drawBoxes() {
    for (const TakenNote& note : take.notes) {
        const auto slot = static_cast<double>(note.slot);
        const double from = std::max(slot + halfSlot - noteReach, static_cast<double>(first));
        const double to = std::min(slot + static_cast<double>(note.length) - halfSlot + noteReach,
                                   static_cast<double>(end));
        if (from < to) {
            drawBox(page, line.x(from), line.x(to), line.rowOf(note.note), note.outcome == Outcome::awarded);
        }
    }
}

void TakeLine::drawHeard() {
    const auto frameAt = [&](std::size_t slot) {
        const double seconds = take.slotOpens(slot) - take.startSeconds;
        return std::min(static_cast<std::size_t>(std::lround(seconds * Take::framesPerSecond)),
                        take.frames.size());
    };
    const auto slotOf = [&](std::size_t frame) {
        return slotAt(take.startSeconds + static_cast<double>(frame) / Take::framesPerSecond);
    };
    for (std::size_t note = 0; note < Notes::noteCount; ++note) {
        const auto thicknessIn = [&](std::size_t frame) {
            const HeardFrame& heard = take.frames[frame];
            return heard.counts.at(note) == 0 ? 0.0 : thicknessOf(heard.levelsDb.at(note));
        };
        for (std::size_t frame = frameAt(first); frame < frameAt(end);) {
            const double thickness = thicknessIn(frame);
            const std::size_t begin = frame;
            while (frame < frameAt(end) && thicknessIn(frame) == thickness) {
                ++frame;
            }
            if (thickness > 0.0) {
                line.drawStroke(slotOf(begin), slotOf(frame), static_cast<int>(note), thickness, black);
            }
        }
    }
}

void TakeLine::drawMarks() {
    for (const TakenNote& note : take.notes) {
        if (note.outcome == Outcome::awarded && isHere(note.awardedSeconds)) {
            drawTick(page, line.x(slotAt(note.awardedSeconds)), line.rowOf(note.note));
        }
    }
    for (const TakenPenalty& penalty : take.penalties) {
        if (isHere(penalty.atSeconds)) {
            drawCross(page, line.x(slotAt(penalty.atSeconds)), line.rowOf(penalty.note));
        }
    }
}

void TakeLine::drawScores(bool isLast) {
    const double baseline = line.y(barTop) - 0.5 * numberSize;
    for (std::size_t bar = first; bar < end; bar += slotsPerBar) {
        const std::size_t close = std::min(bar + slotsPerBar, end);
        const double closes = take.slotOpens(close);
        double score = 0.0;
        for (const TakenNote& note : take.notes) {
            score += note.outcome == Outcome::awarded && note.awardedSeconds < closes ? note.points : 0.0;
        }
        for (const TakenPenalty& penalty : take.penalties) {
            score += penalty.atSeconds < closes ? penalty.points : 0.0;
        }
        const bool isWhole = close == bar + slotsPerBar;  // else there is no room
        if (isWhole) {
            page.texts.push_back({line.x(static_cast<double>(bar)) + 6.0, baseline, wordSize,
                                  Page::Anchor::start, paper.texts, fixed(take.slotOpens(bar), 1) + " s"});
        }
        page.texts.push_back({line.x(static_cast<double>(close)) + (isWhole ? -1.5 : 1.5), baseline,
                              1.2 * numberSize, isWhole ? Page::Anchor::end : Page::Anchor::start, black,
                              "= " + fixed(isLast && close == end ? take.score : score, 0)});
    }
}

// Gives the greatest number of words beneath a slot.
std::size_t TakeLine::drawWords() {
    std::size_t most = 0;
    for (std::size_t slot = first; slot < end; ++slot) {
        std::vector<Word> words;
        const auto addThose = [&](const auto& all) {  // they come in the order of their slots
            const auto isBefore = [](const auto& entry, std::size_t place) { return entry.slot < place; };
            for (auto entry = std::lower_bound(all.begin(), all.end(), slot, isBefore);
                 entry != all.end() && entry->slot == slot; ++entry) {
                const std::vector<Word> more = wordsOf(*entry);
                words.insert(words.end(), more.begin(), more.end());
            }
        };
        addThose(take.notes);
        addThose(take.penalties);
        double baseline = line.y(0.0) + 2.0 * wordSpacing;
        for (const Word& word : words) {
            page.texts.push_back({line.x(static_cast<double>(slot) + halfSlot), baseline, wordSize,
                                  Page::Anchor::middle, word.color, word.text});
            baseline += wordSpacing;
            page.description +=
                (page.description.empty() ? "" : (&word == &words.front() ? "; " : " ")) + word.text;
        }
        most = std::max(most, words.size());
    }
    return most;
}

// Up to the last note's end or the last penalty: files end in an empty slot.
std::size_t drawnSlots(const Take& take) {
    std::size_t slots = 1;
    for (const TakenNote& note : take.notes) {
        slots = std::max(slots, note.slot + static_cast<std::size_t>(std::max(note.length, 1)));
    }
    for (const TakenPenalty& penalty : take.penalties) {
        slots = std::max(slots, penalty.slot + 1);
    }
    return std::min(slots, std::max<std::size_t>(take.slotCount, 1));
}

Page heading(const std::string& song, const NamedTake& named) {
    Page page;
    page.width = pageWidth;
    page.height = 2.0 * titleSize + 2.0 * textSize;
    page.title = std::filesystem::u8path(named.recording).filename().string() + " plays " + song;
    page.description = summaryOf(named.take);
    page.texts = {
        {margin, titleSize, titleSize, Page::Anchor::start, black, page.title},
        {margin, titleSize + 1.8 * textSize, textSize, Page::Anchor::start, paper.texts, page.description}};
    return page;
}

}  // namespace

std::vector<Page> drawTake(const std::string& song, const NamedTake& named) {
    std::vector<Page> strips = {heading(song, named)};
    const std::size_t slots = drawnSlots(named.take);
    const double loudestDb = loudestOf(named.take);
    for (std::size_t first = 0; first < slots; first += slotsPerLine) {
        const std::size_t end = std::min(first + slotsPerLine, slots);
        strips.push_back(TakeLine(named.take, loudestDb, first, end).draw(end == slots));
    }
    return strips;
}
