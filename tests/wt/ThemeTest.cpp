#include "platform/wt/Theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr double leastContrast = 4.5;

double linear(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// Relative luminance and contrast as WCAG 2.1 defines them.
double luminance(const wt::Color& c) {
    return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
}

double contrast(const wt::Color& a, const wt::Color& b) {
    const double la = luminance(a) + 0.05;
    const double lb = luminance(b) + 0.05;
    return std::max(la, lb) / std::min(la, lb);
}

const wt::Color black(0, 0, 0);
const wt::Color white(1, 1, 1);

TEST(ThemeTest, ContrastOfBlackAndWhiteIsTwentyOne) {
    EXPECT_NEAR(contrast(black, white), 21, 0.01);
    EXPECT_NEAR(contrast(wt::Color(0.5f, 0.5f, 0.5f), white), 3.98, 0.01);
}

TEST(ThemeTest, EveryButtonTextIsReadableOnItsButtonAndOnItsSheen) {
    const wt::Theme& t = wt::theme();
    struct {
        wt::Color ground;
        wt::Color text;
    } const states[] = {{t.button, t.buttonText},
                        {t.buttonHover, t.buttonText},
                        {t.buttonPressed, t.buttonText},
                        {t.buttonDisabled, t.buttonTextDisabled}};
    for (const auto& state : states) {
        EXPECT_GE(contrast(state.ground, state.text), leastContrast);
        // The text stands in the middle of a face that is lighter by `buttonSheen` at its upper edge.
        EXPECT_GE(contrast(wt::mix(state.ground, white, t.buttonSheen * 0.75f), state.text), leastContrast);
    }
}

TEST(ThemeTest, EveryTextOfAListIsReadableOnItsRowAndItsRowsStandOut) {
    const wt::Theme& t = wt::theme();
    EXPECT_GE(contrast(t.selected, t.selectedText), leastContrast);
    for (const wt::Palette* palette : {&t.onDark, &t.onLight}) {
        EXPECT_GE(contrast(palette->field, palette->fieldText), leastContrast);
        EXPECT_GE(contrast(palette->rowHover, palette->fieldText), leastContrast);
        EXPECT_GE(contrast(t.selected, palette->field), 2.5);
        EXPECT_GE(contrast(palette->rowHover, palette->field), 1.15);
        EXPECT_GE(contrast(palette->thumb, palette->trough), 2.0);
        EXPECT_GE(contrast(palette->arrow, palette->trough), 3.0);
    }
}

TEST(ThemeTest, PanelTextIsReadableOverTheBlackGameAndOverItsWhiteLines) {
    const wt::Theme& t = wt::theme();
    for (const wt::Color& game : {black, white}) {
        EXPECT_GE(contrast(wt::mix(game, t.panel, 0.8f), t.onDark.text), leastContrast);
        // The song chooser's pale blue, twice at nine tenths.
        const wt::Color pale = wt::mix(game, wt::Color(0.9f, 0.9f, 1.0f), 0.81f);
        EXPECT_GE(contrast(pale, t.onLight.text), leastContrast);
    }
}

TEST(ThemeTest, TitleIsReadableAndTheCrossOfTheCloseBoxIsSeenInEveryState) {
    const wt::Theme& t = wt::theme();
    EXPECT_GE(contrast(t.titleBar, t.titleText), leastContrast);
    EXPECT_GE(contrast(t.closeHover, t.titleText), 3.0);
    EXPECT_GE(contrast(t.closePressed, t.titleText), 3.0);
}

}  // namespace
