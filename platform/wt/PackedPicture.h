#pragma once

#include <cstddef>
#include <vector>

#include "platform/timage/Image.h"

namespace wt {

/// A picture that is not needed for now, kept without loss in a fraction of its room, if it is drawn. A
/// value.
///
///     const wt::PackedPicture packed(picture);
///     tavi::Image<unsigned char> again = packed.unpacked();
class PackedPicture {
public:
    /// No picture.
    PackedPicture() = default;
    /// Throws std::bad_alloc when there is no room for it.
    explicit PackedPicture(tavi::Image<unsigned char> picture);

    bool empty() const { return bytes.empty(); }
    /// What it takes, in bytes.
    std::size_t size() const { return bytes.size(); }
    /// The picture as it was; an empty one if there is none.
    tavi::Image<unsigned char> unpacked() const;

private:
    int width = 0;
    int height = 0;
    int channels = 0;
    std::vector<unsigned char> bytes;
};

}  // namespace wt
