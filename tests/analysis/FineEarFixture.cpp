#include "tests/analysis/FineEarFixture.h"

#include <algorithm>
#include <cmath>

#include "analysis/FFT.h"

namespace {

constexpr std::size_t window = 4096;
constexpr double thresholdDb = -65.0;

}  // namespace

void FineEarFixture::listen(const std::vector<float>& sound,
                            const std::function<void(double, const std::vector<Notes::NoteID>&)>& heard) {
    for (std::size_t end = block; end <= sound.size(); end += block) {
        std::vector<float> frame(window);
        const std::size_t count = std::min(end, window);
        std::copy_n(sound.begin() + static_cast<std::ptrdiff_t>(end - count), count,
                    frame.end() - static_cast<std::ptrdiff_t>(count));
        WindowFunc(2, window, frame.data());
        std::vector<float> power(window);
        PowerSpectrum(window, frame.data(), power.data());
        std::vector<double> levelsDb(window / 2);
        for (std::size_t line = 0; line < levelsDb.size(); ++line) {
            // 1 / (the sum of the window / 2) squared
            levelsDb[line] = 10.0 * std::log10(static_cast<double>(power[line]) * 8.178e-7);
        }
        heard(static_cast<double>(end) / signals::sampleRateHz, ear.hear(levelsDb, thresholdDb, stepSeconds));
    }
}
