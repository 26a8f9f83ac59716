#pragma once

#include "platform/timage/Image.h"

/// Where something was drawn on a black ground, looking at the brightest of red, green and blue.
/// Pixels count from the top left corner; ranges include their first and exclude their last.
struct InkBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    bool empty() const { return left == right; }
    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

/// 0 to 255.
int inkAt(const tavi::Image<unsigned char>& image, int x, int y);
/// The smallest box around all pixels with at least `least` ink; empty when there is none.
InkBox inkBox(const tavi::Image<unsigned char>& image, int least = 1);
/// Fully inked pixels that all ink between the columns would make.
double inkPixels(const tavi::Image<unsigned char>& image, int left, int right);
inline double inkPixels(const tavi::Image<unsigned char>& image) {
    return inkPixels(image, 0, image.width());
}
/// The centre of gravity of the ink between the columns, in pixels from the left edge.
double inkCentreX(const tavi::Image<unsigned char>& image, int left, int right);
/// The greatest difference of two pictures of one size in any sample.
int largestDifference(const tavi::Image<unsigned char>& a, const tavi::Image<unsigned char>& b);
