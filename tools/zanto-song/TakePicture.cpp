#include "tools/zanto-song/TakePicture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "game/Rules.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Staff.h"

using namespace staff;

namespace {

using rules::secondsPerSlot;
using rules::slotsPerBar;
using Outcome = TakenNote::Outcome;

constexpr int barsPerLine = 4;
constexpr double slotMillimetres = slotWidth(barsPerLine);
constexpr std::size_t slotsPerLine = barsPerLine * slotsPerBar;

constexpr double titleSize = 5.0;
constexpr double textSize = 3.2;
constexpr double wordSize = 2.1;
constexpr double wordSpacing = 2.7;
constexpr double headRoom = 6.0;  // for numbers above the staff
constexpr double markSize = 1.1;
constexpr double markStroke = 0.55;
constexpr double haloStroke = 1.2;  // keeps a mark apart from what it stands on
constexpr double boxHeight = 2.5;
constexpr double boxStroke = 0.25;
constexpr double softestStroke = 0.2;
constexpr double loudestStroke = 1.6;
constexpr double strokeSteps = 12.0;

// Blue and orange differ for every kind of eye, and both are dark enough for small letters.
constexpr Page::Color black = Page::grey(0.0);
constexpr Page::Color white = Page::grey(1.0);
constexpr Page::Color awardColor = {0.0, 0.33, 0.62};
constexpr Page::Color penaltyColor = {0.70, 0.25, 0.0};
constexpr Page::Color awardedFill = Page::grey(0.82);
constexpr Page::Color boxEdge = Page::grey(0.35);

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

void drawCross(Page& page, double x, double y) {
    for (const auto& [stroke, color] : {std::pair{haloStroke, white}, std::pair{markStroke, penaltyColor}}) {
        const double reach = markSize + (stroke == haloStroke ? 0.3 : 0.0);
        page.lines.push_back({x - reach, y - reach, x + reach, y + reach, stroke, color});
        page.lines.push_back({x - reach, y + reach, x + reach, y - reach, stroke, color});
    }
}

void drawTick(Page& page, double x, double y) {
    const double corner = 0.45 * markSize;  // right of it the long arm
    for (const auto& [stroke, color] : {std::pair{haloStroke, white}, std::pair{markStroke, awardColor}}) {
        page.lines.push_back(
            {x - markSize - corner, y, x - corner + 0.15, y + markSize + 0.15, stroke, color});
        page.lines.push_back({x - corner, y + markSize, x + 1.2 * markSize, y - markSize, stroke, color});
    }
}

void drawBox(Page& page, double from, double to, double y, bool isAwarded) {
    page.lines.push_back({from, y, to, y, boxHeight, boxEdge});
    page.lines.push_back({from + boxStroke, y, to - boxStroke, y, boxHeight - 2.0 * boxStroke,
                          isAwarded ? awardedFill : white});
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

Page takeLegend() {
    constexpr double spacing = 4.6;
    constexpr double sample = 12.0;
    constexpr double words = margin + sample + 3.0;
    Page page;
    page.width = pageWidth;
    page.title = "Legend";
    double y = spacing;
    const auto tell = [&](const std::string& text) {
        page.texts.push_back(
            {words, y + 0.36 * wordSize, 1.15 * wordSize, Page::Anchor::start, paper.texts, text});
        y += spacing;
    };
    const double left = margin;
    const double right = margin + sample;
    drawBox(page, left, right, y, true);
    tell("a note that the song asks for, and that was awarded");
    drawBox(page, left, right, y, false);
    tell("one that was not");
    for (int step = 0; step <= 3; ++step) {
        const double from = left + step * sample / 4.0;
        page.lines.push_back({from, y, from + sample / 4.0, y,
                              softestStroke + step / 3.0 * (loudestStroke - softestStroke), black});
    }
    tell("what the game heard, any octave; the thicker the louder");
    drawTick(page, (left + right) / 2.0, y);
    tell("the moment of an award");
    drawCross(page, (left + right) / 2.0, y);
    tell(
        "the moment of a penalty. held on: a note of an earlier slot still sounds. early: it belongs to the "
        "next slot.");
    tell("not asked: no note of the song.");
    page.texts.push_back({right, y + 0.36 * wordSize, 1.2 * numberSize, Page::Anchor::end, black, "= 300"});
    tell("the score at the end of the bar; at its beginning stand its number and its time in the recording");
    tell(
        "too short: not held long enough. heard D: that was heard instead. no note: a sound that is none of "
        "the seven notes.");
    tell("too soft: below the least level. silence: no sound at all. ended: the recording was over.");
    page.height = y;
    return page;
}

Page onSheets(const std::vector<Page>& strips) {
    constexpr double usable = pageHeight - 2.0 * margin;
    Page sheets;
    sheets.width = pageWidth;
    sheets.height = pageHeight;
    double top = margin;
    for (const Page& strip : strips) {
        const double sheetEnd = sheets.height - margin;
        if (top + strip.height > sheetEnd && strip.height <= usable) {
            sheets.height += pageHeight;
            top = sheetEnd + 2.0 * margin;
        }
        for (Page::Line line : strip.lines) {
            line.y1 += top;
            line.y2 += top;
            sheets.lines.push_back(line);
        }
        for (Page::Text text : strip.texts) {
            text.baseline += top;
            sheets.texts.push_back(text);
        }
        top += strip.height;
        while (top > sheets.height - margin) {
            sheets.height += pageHeight;
        }
        if (sheets.title.empty()) {
            sheets.title = strip.title;
            sheets.description = strip.description;
        }
    }
    return sheets;
}
