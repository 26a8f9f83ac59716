#include "tools/zanto-song/Staff.h"
#include "tools/zanto-song/TakeMarks.h"
#include "tools/zanto-song/TakePicture.h"

using namespace staff;
using namespace marks;

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
