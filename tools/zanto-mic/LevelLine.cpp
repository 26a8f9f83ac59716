#include "tools/zanto-mic/LevelLine.h"

#include <algorithm>
#include <cmath>

#include "tools/common/Text.h"

namespace {

constexpr double lowestDb = -100.0;
constexpr int barWidth = 40;
constexpr std::size_t lineWidth = 100;  // blanks out what an earlier line left behind

int position(double levelDb) {
    const double share = (std::max(levelDb, lowestDb) - lowestDb) / -lowestDb;
    return std::clamp(static_cast<int>(std::lround(share * barWidth)), 0, barWidth);
}

std::string bar(double levelDb, double minDecibel) {
    std::string text(barWidth, '.');
    const int reached = position(levelDb);
    std::fill(text.begin(), text.begin() + reached, '#');
    text[static_cast<std::size_t>(std::min(position(minDecibel), barWidth - 1))] = '|';
    return "[" + text + "]";
}

std::string decibels(double levelDb) {
    return padLeft(std::isfinite(levelDb) ? fixed(levelDb, 1) : "silent", 6);
}

}  // namespace

std::string levelText(const Moment& moment, double minDecibel) {
    std::string notes;
    for (const Notes::NoteID& note : moment.notes) {
        notes += (notes.empty() ? "" : " ") + Notes::idToName(note);
    }
    return "peak " + decibels(moment.loudestDb) + " dB  noise " + decibels(moment.noiseDb) + " dB  " +
           bar(moment.loudestDb, minDecibel) + (moment.peakSample >= 0.999 ? " CLIPS" : "") +
           (notes.empty() ? "" : "  " + notes);
}

std::string levelLine(const Moment& moment, double minDecibel) {
    return padRight(levelText(moment, minDecibel), lineWidth);
}
