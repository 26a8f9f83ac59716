#include "tests/support/Ink.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

int inkAt(const tavi::Image<unsigned char>& image, int x, int y) {
    return std::max({image.at(x, y, 0), image.at(x, y, 1), image.at(x, y, 2)});
}

InkBox inkBox(const tavi::Image<unsigned char>& image, int least) {
    InkBox box{image.width(), image.height(), 0, 0};
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (inkAt(image, x, y) >= least) {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
    }
    return box.right > 0 ? box : InkBox();
}

double inkPixels(const tavi::Image<unsigned char>& image, int left, int right) {
    double sum = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = left; x < right; ++x) {
            sum += inkAt(image, x, y) / 255.0;
        }
    }
    return sum;
}

double inkCentreX(const tavi::Image<unsigned char>& image, int left, int right) {
    double moment = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = left; x < right; ++x) {
            moment += (x + 0.5) * inkAt(image, x, y) / 255.0;
        }
    }
    return moment / inkPixels(image, left, right);
}

int largestDifference(const tavi::Image<unsigned char>& a, const tavi::Image<unsigned char>& b) {
    if (a.width() != b.width() || a.height() != b.height() || a.channels() != b.channels()) {
        throw std::invalid_argument("pictures of different sizes");
    }
    int largest = 0;
    for (int i = 0; i < a.width() * a.height() * a.channels(); ++i) {
        largest = std::max(largest, std::abs(int{a.data()[i]} - int{b.data()[i]}));
    }
    return largest;
}
