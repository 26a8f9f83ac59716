#include "ui/FrequencyWindow.h"

#include <sstream>

#include "ui/FrequencyPlot.h"
#include "ui/Layout.h"

namespace {

constexpr int windowFlags = wt::wtWindow::titleBar | wt::wtWindow::closeBox;
constexpr double listedAboveDb = -65.0;
constexpr int mostListed = 4;

/// The first frequencies of the peaks that are loud enough, in whole Hz, each followed by a blank.
std::string listPeaks(const std::vector<std::pair<float, float>>& peaks) {
    std::ostringstream text;
    int listed = 0;
    for (const auto& [levelDb, frequencyHz] : peaks) {
        if (static_cast<double>(levelDb) > listedAboveDb && listed < mostListed) {
            text << static_cast<int>(frequencyHz) << ' ';
            ++listed;
        }
    }
    return text.str();
}

}  // namespace

FrequencyWindow::FrequencyWindow() {
    window = new wt::wtWindow("Frequency", {-0.4f, -0.5f}, {0.8f, 0.9f}, windowFlags);
    window->setShowing(0);
    plot = new wtFreqWindow(window);

    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    peakText = new wt::wtStaticText(window, "chosen_song", {-0.3f, 0.02f}, {0.6f, 0.1f}, "", ui::centred);
    layout->add(peakText, ui::plainAttributes());
    layout->add(plot, ui::plainAttributes());
    window->setLayoutManager(layout);
    wt::wtWindowManager::appendWidget(window);
}

void FrequencyWindow::show() {
    window->setShowing(1);
    wt::wtWindowManager::raiseWidget(window, 0);
}

void FrequencyWindow::hide() {
    window->setShowing(0);
}

bool FrequencyWindow::isShowing() const {
    return window->isShowing() != 0;
}

void FrequencyWindow::setSignal(const std::vector<double>& frequencies, const std::vector<double>& power,
                                const std::vector<std::pair<float, float>>& peaks, double threshold) {
    if (plot == nullptr) {
        return;
    }
    plot->frequencies = frequencies;
    plot->power = power;
    plot->peaks = peaks;
    plot->threshold = threshold;
    peakText->setText(listPeaks(peaks));
}
