#include "ui/FrequencyWindow.h"

#include <GL/gl.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <ostream>
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
    static wt::wtWindow* window() { return widgets::window("Frequency"); }
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
    wt::wtWindowManager::appendWidget(new wt::wtWindow("other", {0.0f, 0.0f}, {1.0f, 1.0f}, 0));
    EXPECT_FALSE(panel->isShowing());
    panel->show();
    EXPECT_TRUE(panel->isShowing());
    EXPECT_EQ(wt::wtWindowManager::windows().back(), window());
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
    wt::wtWindowManager::displayWidgets();
    expectPanelsPlace(window()->rect());
    const auto* plot = widgets::in<FrequencyWindow::wtFreqWindow>("Frequency", "window");
    EXPECT_LE(widgets::in<wt::wtStaticText>("Frequency", "chosen_song")->rect().top(), plot->rect().y);
    const tavi::Vec2<float> corner = plot->origin();
    const float y = corner.y + plot->rect().h * 95.0f / 90.0f;
    const int column = static_cast<int>((corner.x + plot->rect().w / 2 + 1) / 2 * screenWidth);
    const int line = static_cast<int>((1 - y) / 2 * screenHeight);
    const auto screen = gl.read();
    int reddest = 0;
    for (int row = line - 1; row <= line + 1; ++row) {
        reddest = std::max<int>(reddest, screen.at(column, row, 0) - screen.at(column, row, 1));
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
    static constexpr float plotSize = 1.0f;  // screen units

    struct Rgb {
        int r;
        int g;
        int b;
        bool operator==(const Rgb& o) const { return r == o.r && g == o.g && b == o.b; }
        friend std::ostream& operator<<(std::ostream& out, const Rgb& c) {
            return out << c.r << ' ' << c.g << ' ' << c.b;
        }
    };
    static constexpr Rgb black{0, 0, 0};
    static constexpr Rgb red{255, 0, 0};
    static constexpr Rgb green{0, 255, 0};

    void draw() {
        glClear(GL_COLOR_BUFFER_BIT);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(-1.0f, -1.0f, 0.0f);
        GLfloat before[16];
        GLfloat after[16];
        glGetFloatv(GL_MODELVIEW_MATRIX, before);
        plot.resize(plotSize, plotSize);
        plot.draw();
        glGetFloatv(GL_MODELVIEW_MATRIX, after);
        EXPECT_TRUE(std::equal(before, before + 16, after));
        EXPECT_FALSE(glIsEnabled(GL_CLIP_PLANE0) || glIsEnabled(GL_CLIP_PLANE1) ||
                     glIsEnabled(GL_CLIP_PLANE2));
        picture = gl.read();
    }

    /// The colour at a frequency and level; a line one pixel beside counts, as which one a line fills is
    /// GL's.
    Rgb at(double frequencyHz, double levelDb) const {
        const double x = frequencyHz / 1500.0 * screenWidth / 2.0;
        const double y = (levelDb + 90.0) / 90.0 * screenHeight / 2.0;
        Rgb found = black;
        for (int dy = -1; dy <= 1; ++dy) {
            for (int dx = -1; dx <= 1; ++dx) {
                const int column = static_cast<int>(x) + dx;
                const int row = screenHeight - 1 - (static_cast<int>(y) + dy);
                const Rgb here{picture.at(column, row, 0), picture.at(column, row, 1),
                               picture.at(column, row, 2)};
                if (!(here == black)) {
                    found = here;
                }
            }
        }
        return found;
    }

    FrequencyWindow::wtFreqWindow plot{nullptr};
    tavi::Image<unsigned char> picture{0, 0, 0};
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
    int outside = 0;
    for (int y = 0; y < screenHeight; ++y) {
        for (int x = screenWidth / 2 + 1; x < screenWidth; ++x) {
            outside += picture.at(x, y, 0) > 0 ? 1 : 0;
        }
    }
    EXPECT_EQ(outside, 0);
}

TEST_F(FrequencyPlotTest, BoxIsOneHertzByOneDecibelAboveTheTopEdgeAtTheOrigin) {
    glClearColor(1.0f, 1.0f, 1.0f, 1.0f);
    plot.threshold = -300.0;
    draw();
    int blackPixels = 0;
    for (int y = 0; y < screenHeight; ++y) {
        for (int x = 0; x < screenWidth; ++x) {
            if (picture.at(x, y, 0) == 0) {
                ++blackPixels;
                EXPECT_LE(x, 2);
                EXPECT_NEAR(y, screenHeight / 2, 4);
            }
        }
    }
    EXPECT_GT(blackPixels, 0);
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
