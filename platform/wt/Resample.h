#pragma once

#include "platform/timage/Image.h"

namespace wt {

/// The picture in another size, at least 1 by 1 pixels: smooth where it grows, and where it shrinks every
/// pixel of it counts. Channels are treated alike, so the picture should be opaque or have its alpha
/// multiplied in.
tavi::Image<unsigned char> resampled(const tavi::Image<unsigned char>& image, int width, int height);

}  // namespace wt
