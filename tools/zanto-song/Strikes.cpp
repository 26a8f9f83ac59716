#include "tools/zanto-song/Strikes.h"

#include <algorithm>
#include <cmath>

namespace {

// Rises are shares of the sound.
constexpr float leastRise = 0.12f;
constexpr float softRise = 0.2f;
constexpr float strongRise = 0.33f;
constexpr float certainRise = 0.55f;
constexpr float strongScratchDb = 6.3f;
constexpr float usualRise = 0.3f;
constexpr float usualScratchDb = 6.0f;
constexpr double onBeat = 0.12;           // slots
constexpr std::size_t tremoloReach = 70;  // frames
constexpr float aboveTremolo = 1.1f;

}  // namespace

double awayFromWhole(double value) {
    return std::abs(value - std::round(value));
}

Strikes::Strikes(const std::vector<ListenedFrame>& frames, const Beat* beat_)
    : recording(frames), beat(beat_) {
    for (std::size_t frame = reach; frame + reach < recording.size(); ++frame) {
        if (isPeak(frame) && isStrike(frame)) {
            found.push_back(frame);
        }
    }
}

bool Strikes::isStrike(std::size_t frame) const {
    const float rise = recording[frame].rise;
    if (beat == nullptr) {
        return rise > strongRise || scratchAround(frame) > strongScratchDb;
    }
    if (rise > certainRise) {
        return true;
    }
    if (!isOnBeat(frame) || rise < softRise) {
        return false;
    }
    // A tremolo's strokes lie off the beat as well.
    const std::size_t begin = frame - std::min(frame, tremoloReach);
    const std::size_t end = std::min(frame + tremoloReach, recording.size() - reach);
    for (std::size_t at = std::max(begin, reach); at < end; ++at) {
        if (!isOnBeat(at) && isPeak(at) && strengthAt(at) * aboveTremolo > strengthAt(frame)) {
            return false;
        }
    }
    return true;
}

bool Strikes::isOnBeat(std::size_t frame) const {
    return awayFromWhole((static_cast<double>(frame) - beat->phase) / beat->period) < onBeat;
}

float Strikes::strengthAt(std::size_t frame) const {
    return recording[frame].rise / usualRise + scratchAround(frame) / usualScratchDb;
}

bool Strikes::isPeak(std::size_t frame) const {
    const float rise = recording[frame].rise;
    bool is = rise > leastRise;
    for (std::size_t at = frame - reach; at <= frame + reach && is; ++at) {
        is = recording[at].rise < rise || (recording[at].rise == rise && at >= frame);
    }
    return is;
}

float Strikes::scratchAround(std::size_t frame) const {
    float most = 0.0f;
    for (std::size_t at = frame - 3; at <= frame + 3; ++at) {
        most = std::max(most, recording[at].scratchDb);
    }
    return most;
}

bool Strikes::anyIn(std::size_t from, std::size_t to) const {
    const auto strike = std::lower_bound(found.begin(), found.end(), from);
    return strike != found.end() && *strike <= to;
}
