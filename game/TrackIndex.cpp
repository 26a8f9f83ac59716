#include "game/TrackIndex.h"

#include <algorithm>
#include <limits>

namespace {

constexpr TrackIndex::Extent nothing{std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity()};

}  // namespace

void TrackIndex::Extent::cover(Extent const& other) {
    left = std::min(left, other.left);
    right = std::max(right, other.right);
}

void TrackIndex::build(std::vector<Extent> const& slots) {
    slotCount = slots.size();
    levels.clear();
    std::vector<Extent> const* below = &slots;
    while (below->size() > (levels.empty() ? 0 : 1)) {
        std::vector<Extent> blocks((below->size() + fanOut - 1) / fanOut, nothing);
        for (std::size_t i = 0; i < below->size(); ++i) {
            blocks[i / fanOut].cover((*below)[i]);
        }
        levels.push_back(std::move(blocks));
        below = &levels.back();
    }
}
