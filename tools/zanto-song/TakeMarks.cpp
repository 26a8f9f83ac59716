#include "tools/zanto-song/TakeMarks.h"

#include <utility>

namespace marks {
namespace {

constexpr double markSize = 1.1;
constexpr double markStroke = 0.55;
constexpr double haloStroke = 1.2;  // keeps a mark apart from what it stands on
constexpr double boxHeight = 2.5;
constexpr double boxStroke = 0.25;
constexpr Page::Color white = Page::grey(1.0);
constexpr Page::Color awardedFill = Page::grey(0.82);
constexpr Page::Color boxEdge = Page::grey(0.35);

}  // namespace

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

}  // namespace marks
