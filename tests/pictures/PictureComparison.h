#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/timage/Image.h"

/// Pictures of whole screens against the committed ones.
namespace pictures {

using Picture = tavi::Image<unsigned char>;

/// A pixel counts as different when one of its channels is off by more than this.
constexpr int channelTolerance = 40;  // of 255
/// How many of a picture's pixels may be different: one in 500. Edges of glyphs and lines move by fractions
/// of a pixel from one software rasteriser to the next; a missing or misplaced widget is far more than that.
constexpr double differentShare = 0.002;

/// The picture without its alpha channel, every `factor` by `factor` pixels averaged into one.
Picture shrunk(const Picture& picture, int factor);

/// The share of pixels that differ, 1 when the sizes do.
double difference(const Picture& drawn, const Picture& expected);

/// Whether `drawn` is the committed picture `name`. Where it is not, the folder build/pictures holds the
/// drawn one and the expected one. With ZANTO_RENEW_PICTURES set in the environment the drawn one becomes
/// the committed one instead.
testing::AssertionResult matches(const Picture& drawn, const std::string& name);

}  // namespace pictures
