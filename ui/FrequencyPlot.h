#pragma once

#include <utility>
#include <vector>

#include "ui/FrequencyWindow.h"

/// The plot of the spectrum panel: 0 to 1500 Hz across, -90 to 0 dB up, over the whole of the widget.
class FrequencyWindow::wtFreqWindow : public wt::wtWidget {
public:
    /// Adds itself to `parent`, which then owns it, unless that is null.
    explicit wtFreqWindow(wt::wtWidget* parent);
    ~wtFreqWindow() override;

    /// Draws what was set last, in the parent's coordinates. What lies left, right or below is cut; levels
    /// above 0 dB are drawn above the plot.
    void draw() override;

    std::vector<double> frequencies;             ///< Hz, one a bin
    std::vector<double> power;                   ///< dB, one a bin
    std::vector<std::pair<float, float>> peaks;  ///< (level in dB, frequency in Hz)
    double threshold = 0.0;                      ///< dB
};
