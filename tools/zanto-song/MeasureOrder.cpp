#include "tools/zanto-song/MeasureOrder.h"

namespace {

constexpr std::size_t mostMeasures = 100000;

// The rounds in which each measure is played; empty for all of them.
std::vector<std::set<int>> endingsOf(const std::vector<MeasureSigns>& measures) {
    std::vector<std::set<int>> endings;
    std::set<int> open;
    for (const MeasureSigns& measure : measures) {
        if (!measure.endingBegins.empty()) {
            open = measure.endingBegins;
        }
        endings.push_back(open);
        if (measure.endingEnds) {
            open.clear();
        }
    }
    return endings;
}

// Whether some ending of the repeat that begins at `from` is for this round.
bool hasEndingFor(int round, std::size_t from, const std::vector<MeasureSigns>& measures,
                  const std::vector<std::set<int>>& endings) {
    for (std::size_t at = from; at < measures.size() && (at == from || !measures[at].repeatBegins); ++at) {
        if (endings[at].count(round) != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<std::vector<std::size_t>> playingOrder(const std::vector<MeasureSigns>& measures) {
    const std::vector<std::set<int>> endings = endingsOf(measures);
    std::vector<std::size_t> order;
    std::size_t repeatStart = 0;
    int round = 1;
    for (std::size_t at = 0; at < measures.size();) {
        const MeasureSigns& signs = measures[at];
        if (signs.repeatBegins && at != repeatStart) {
            repeatStart = at;
            round = 1;
        }
        const bool isPlayed = endings[at].empty() || endings[at].count(round) != 0;
        if (isPlayed) {
            order.push_back(at);
            if (order.size() > mostMeasures) {
                return std::nullopt;
            }
        }
        const bool goesOn = endings[at].empty() ? round < signs.timesPlayed
                                                : hasEndingFor(round + 1, repeatStart, measures, endings);
        const bool goesBack = isPlayed && signs.timesPlayed > 0 && goesOn;
        const bool isOver = isPlayed && !goesBack && (signs.timesPlayed > 0 || signs.endingEnds);
        if (goesBack) {
            ++round;
            at = repeatStart;
            continue;
        }
        ++at;
        if (isOver) {
            repeatStart = at;
            round = 1;
        }
    }
    return order;
}
