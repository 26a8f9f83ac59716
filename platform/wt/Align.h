#pragma once

namespace wt {

/// How something sits in a space larger than itself: at most one bit for each axis. An axis without a bit
/// centres.
enum wtAlign : int {
    alignLeft = 0x01,
    alignRight = 0x02,
    alignCentreX = 0x04,
    alignTop = 0x08,
    alignBottom = 0x10,
    alignCentreY = 0x20,
};

constexpr wtAlign operator|(wtAlign a, wtAlign b) {
    return static_cast<wtAlign>(static_cast<int>(a) | static_cast<int>(b));
}

/// The direction in which a layout stacks its widgets.
enum wtOrientation : int {
    leftToRight = 0,
    bottomToTop = 1,
};

/// How far `content` starts from the low end of `space` in x (left) under the alignment bits.
constexpr float alignedX(int alignment, float space, float content) {
    if ((alignment & alignLeft) != 0) {
        return 0.0f;
    }
    return (alignment & alignRight) != 0 ? space - content : (space - content) / 2;
}

/// How far `content` starts from the low end of `space` in y (bottom) under the alignment bits.
constexpr float alignedY(int alignment, float space, float content) {
    if ((alignment & alignBottom) != 0) {
        return 0.0f;
    }
    return (alignment & alignTop) != 0 ? space - content : (space - content) / 2;
}

}  // namespace wt
