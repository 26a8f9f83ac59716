#pragma once

#include <utility>
#include <vector>

#include "platform/wt/wt.h"

/// The spectrum panel: a plot of the microphone's power spectrum with the candidate peaks and the level that
/// a peak must exceed, and the first peak frequencies as text. The toolkit's window manager owns the window;
/// this only points at it. GLUT thread only.
///
///     FrequencyWindow panel;
///     panel.show();
///     if (panel.isShowing()) panel.setSignal(frequencies, power, peaks, threshold);
class FrequencyWindow {
public:
    /// Builds the panel, hidden.
    FrequencyWindow();

    /// Shows the panel in front of every other window.
    void show();
    void hide();
    bool isShowing() const;

    /// Shows a spectrum: `power` [n] in dB at `frequencies` [at least n] in Hz, the peaks as (level in dB,
    /// frequency in Hz), and the level in dB that a peak must exceed. Copies everything.
    void setSignal(const std::vector<double>& frequencies, const std::vector<double>& power,
                   const std::vector<std::pair<float, float>>& peaks, double threshold);

    class wtFreqWindow;

private:
    wt::wtWindow* window = nullptr;
    wtFreqWindow* plot = nullptr;
    wt::wtStaticText* peakText = nullptr;
};
