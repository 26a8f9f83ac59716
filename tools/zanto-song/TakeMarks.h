#pragma once

#include "tools/zanto-song/Page.h"

/// The marks on a take's picture, in millimetres.
namespace marks {

constexpr double wordSize = 2.1;
constexpr double softestStroke = 0.2;
constexpr double loudestStroke = 1.6;

// Blue and orange differ for every kind of eye, and both are dark enough for small letters.
constexpr Page::Color black = Page::grey(0.0);
constexpr Page::Color awardColor = {0.0, 0.33, 0.62};
constexpr Page::Color penaltyColor = {0.70, 0.25, 0.0};

/// A note that the song asks for, from one x to another.
void drawBox(Page& page, double from, double to, double y, bool isAwarded);
/// The moment of an award.
void drawTick(Page& page, double x, double y);
/// The moment of a penalty.
void drawCross(Page& page, double x, double y);

}  // namespace marks
