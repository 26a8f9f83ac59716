#include "ui/FrequencyWindow.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/MenuFixture.h"
#include "ui/FrequencyPlot.h"

namespace {

using Peaks = std::vector<std::pair<float, float>>;

constexpr double thresholdDb = -65.0;

class FrequencyWindowTest : public MenuFixture {
protected:
    static std::string peakLine() {
        return widgets::in<wt::wtStaticText>("Frequency", "chosen_song")->getText();
    }
    void SetUp() override {
        MenuFixture::SetUp();
        panel = std::make_unique<FrequencyWindow>();
    }
    void show(const Peaks& peaks) { panel->setSignal({}, {}, peaks, thresholdDb); }

    std::unique_ptr<FrequencyWindow> panel;
};

TEST_F(FrequencyWindowTest, IsHiddenUntilShownAtTheFront) {
    window("other", {0.0f, 0.0f, 1.0f, 1.0f});
    EXPECT_FALSE(panel->isShowing());
    panel->show();
    EXPECT_TRUE(panel->isShowing());
    EXPECT_EQ(wt::wtWindowManager::windows().back(), widgets::window("Frequency"));
    panel->hide();
    EXPECT_FALSE(panel->isShowing());
}

TEST_F(FrequencyWindowTest, TheFirstFourFrequenciesAboveMinus65DbAreListedInWholeHertz) {
    show({{-64.9f, 200.0f}, {-65.0f, 300.0f}, {-80.0f, 400.0f}});
    EXPECT_EQ(peakLine(), "200 ");
    show({{-9.0f, 900.9f},
          {-80.0f, 150.0f},
          {-20.0f, 200.0f},
          {-30.0f, 300.0f},
          {-5.0f, 400.0f},
          {-1.0f, 500.0f}});
    EXPECT_EQ(peakLine(), "900 200 300 400 ");
    show({});
    EXPECT_EQ(peakLine(), "");
}

TEST_F(FrequencyWindowTest, DataAreCopiedAndStayAcrossHidingAndShowing) {
    std::vector<double> frequencies = {100.0, 200.0};
    std::vector<double> power = {-30.0, -40.0};
    Peaks peaks = {{-30.0f, 100.0f}};
    panel->setSignal(frequencies, power, peaks, thresholdDb);
    frequencies.clear();
    power.clear();
    peaks.clear();
    panel->hide();
    panel->show();
    const auto* plot = widgets::in<FrequencyWindow::wtFreqWindow>("Frequency", "window");
    EXPECT_EQ(plot->frequencies, (std::vector<double>{100.0, 200.0}));
    EXPECT_EQ(plot->power, (std::vector<double>{-30.0, -40.0}));
    EXPECT_EQ(plot->peaks, (Peaks{{-30.0f, 100.0f}}));
    EXPECT_EQ(plot->threshold, thresholdDb);
    EXPECT_EQ(peakLine(), "100 ");
}

TEST_F(FrequencyWindowTest, StandsInTheMiddleAndDrawsPlusFiveDecibelInsideItselfAbovePlot) {
    panel->setSignal({0.0, 1500.0}, {5.0, 5.0}, {}, thresholdDb);
    panel->show();
    draw();
    expectPanelsPlace(widgets::window("Frequency")->rect());
    const auto* plot = widgets::in<FrequencyWindow::wtFreqWindow>("Frequency", "window");
    EXPECT_LE(widgets::in<wt::wtStaticText>("Frequency", "chosen_song")->rect().top(), plot->rect().y);
    const Pixel line = on(*plot, 0.5f, 95.0f / 90.0f);
    int reddest = 0;
    for (int row = line.y - 1; row <= line.y + 1; ++row) {
        reddest = std::max(reddest, pixel(line.x, row).r - pixel(line.x, row).g);
    }
    EXPECT_GT(reddest, 200) << "cut by the panel or under its title bar";
}

TEST_F(FrequencyWindowTest, PlotWithoutAParentStandsAlone) {
    const FrequencyWindow::wtFreqWindow plot(nullptr);
    EXPECT_EQ(plot.parent(), nullptr);
    EXPECT_EQ(plot.name(), "window");
    EXPECT_EQ(plot.flags(), 3);
    EXPECT_TRUE(plot.power.empty());
}

/// The plot alone, drawn over the lower left quarter of a black screen whose corner is the origin.
class FrequencyPlotTest : public MenuFixture {
protected:
    static constexpr int black = 0x000000;
    static constexpr int red = 0xff0000;
    static constexpr int green = 0x00ff00;

    void draw() {
        glClear(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(-1.0f, -1.0f, 0.0f);
        std::array<GLfloat, 16> before{};
        std::array<GLfloat, 16> after{};
        glGetFloatv(GL_MODELVIEW_MATRIX, before.data());
        plot.resize(1.0f, 1.0f);
        plot.draw();
        glGetFloatv(GL_MODELVIEW_MATRIX, after.data());
        EXPECT_EQ(after, before);
        EXPECT_FALSE(glIsEnabled(GL_CLIP_PLANE0) || glIsEnabled(GL_CLIP_PLANE1) ||
                     glIsEnabled(GL_CLIP_PLANE2));
        picture = gl.read();
    }

    /// The colour at a frequency and level, 0xrrggbb; a line one pixel beside counts, as which one a line
    /// fills is GL's.
    int at(double frequencyHz, double levelDb) const {
        const int column = static_cast<int>(frequencyHz / 1500.0 * screenWidth / 2.0);
        const int row = screenHeight - 1 - static_cast<int>((levelDb + 90.0) / 90.0 * screenHeight / 2.0);
        int found = black;
        for (int y = row - 1; y <= row + 1; ++y) {
            for (int x = column - 1; x <= column + 1; ++x) {
                const Rgb here = pixel(x, y);
                const int color = here.r << 16 | here.g << 8 | here.b;
                found = color != black ? color : found;
            }
        }
        return found;
    }

    FrequencyWindow::wtFreqWindow plot{nullptr};
};

TEST_F(FrequencyPlotTest, SpectrumIsARedLineOverTheWholeWidget) {
    plot.frequencies = {0.0, 750.0, 1500.0};
    plot.power = {-45.0, -45.0, -9.0};
    plot.threshold = -200.0;
    draw();
    EXPECT_EQ(at(300.0, -45.0), red);
    EXPECT_EQ(at(1125.0, -27.0), red);
    EXPECT_EQ(at(300.0, -30.0), black);
}

TEST_F(FrequencyPlotTest, EveryPeakGetsAGreenLineWhateverItsLevelAndSoIsThenTheThreshold) {
    plot.threshold = -65.0;
    draw();
    EXPECT_EQ(at(10.0, -65.0), red);
    EXPECT_EQ(at(1490.0, -65.0), red);
    plot.peaks = {{-64.9f, 200.0f}, {-65.0f, 300.0f}, {-80.0f, 400.0f}};
    draw();
    EXPECT_EQ(at(10.0, -65.0), green);
    EXPECT_EQ(at(1490.0, -65.0), green);
    for (const double frequencyHz : {200.0, 300.0, 400.0}) {
        for (const double levelDb : {-88.0, -45.0, -2.0}) {
            EXPECT_EQ(at(frequencyHz, levelDb), green) << frequencyHz << " Hz, " << levelDb << " dB";
        }
    }
    EXPECT_EQ(at(250.0, -45.0), black);
}

TEST_F(FrequencyPlotTest, PointsOutsideAreCutLeftRightAndBelowButNotAbove) {
    plot.frequencies = {-300.0, 700.0, 750.0, 800.0, 2000.0};
    plot.power = {-45.0, -45.0, 5.0, -200.0, -45.0};
    plot.threshold = -300.0;
    draw();
    EXPECT_EQ(at(200.0, -45.0), red);
    EXPECT_EQ(at(750.0, 3.0), red) << "a level above 0 dB is drawn above the plot";
    EXPECT_EQ(litPixels(screenWidth / 2 + 1, 0, screenWidth, screenHeight), 0);
}

TEST_F(FrequencyPlotTest, BoxIsOneHertzByOneDecibelAboveTheTopEdgeAtTheOrigin) {
    glClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    plot.threshold = -300.0;
    draw();
    const int lit = litPixels(0, screenHeight / 2 - 4, 3, screenHeight / 2 + 5);
    EXPECT_LT(lit, 3 * 9) << "the box is black";
    EXPECT_EQ(litPixels() - lit, screenWidth * screenHeight - 3 * 9) << "and nothing else is";
}

TEST_F(FrequencyPlotTest, SilenceAndNonsenseDrawNothingWrong) {
    const double infinity = std::numeric_limits<double>::infinity();
    plot.frequencies = {0.0, 100.0, 200.0, 300.0, 400.0};
    plot.power = {-infinity, -50.0, -infinity, std::numeric_limits<double>::quiet_NaN(), -infinity};
    plot.threshold = -300.0;
    draw();
    EXPECT_EQ(at(1000.0, -45.0), black);
    EXPECT_TRUE(gl.noErrors());
    std::vector<float> colour(4);
    glGetFloatv(GL_CURRENT_COLOR, colour.data());
    EXPECT_EQ(colour, std::vector<float>(4, 1.0f)) << "white is left";
}

}  // namespace
