#pragma once

#include <cstddef>
#include <vector>

/// Finds the slots of a song that draw into a stretch of the track without looking at the others, however
/// many those are and however far their notes reach. Owned by the song, which builds it after loading.
///
///     index.build(extents);   // one per slot
///     index.visit(view, [](std::size_t first, std::size_t last) { /* draw the slots from first to last - 1
///     */ });
class TrackIndex {
public:
    /// What something covers of the track's x axis; nothing while `left` > `right`.
    struct Extent {
        double left;
        double right;

        void cover(Extent const& other);
        bool meets(Extent const& other) const { return left <= other.right && other.left <= right; }
    };

    /// The extents of slots 0, 1, ... in place of those known so far. It takes 1.1 bytes a slot.
    void build(std::vector<Extent> const& slots);

    /// Calls `visitor(first, last)` for ranges of slots, ascending and apart. Every slot whose extent meets
    /// `view` is in one of them; with it may come others of its block.
    template <class Visitor>
    void visit(Extent const& view, Visitor&& visitor) const {
        if (!levels.empty()) {
            visitNode(levels.size() - 1, 0, view, visitor);
        }
    }

private:
    static constexpr std::size_t fanOut = 16;

    template <class Visitor>
    void visitNode(std::size_t level, std::size_t node, Extent const& view, Visitor& visitor) const {
        if (!levels[level][node].meets(view)) {
            return;
        }
        std::size_t const first = node * fanOut;
        if (level == 0) {
            visitor(first, first + fanOut < slotCount ? first + fanOut : slotCount);
            return;
        }
        for (std::size_t child = first; child < first + fanOut && child < levels[level - 1].size(); ++child) {
            visitNode(level - 1, child, view, visitor);
        }
    }

    std::size_t slotCount = 0;
    /// The extents of blocks of 16 slots, of 16 such blocks and so on, up to one that covers everything.
    std::vector<std::vector<Extent>> levels;
};
