// Text is as sharp as pixels allow, at every window size, wherever it stands and while it moves.

#include <string>
#include <utility>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"
#include "tests/support/OffscreenGL.h"

namespace {

const char* const vera = "Fonts/Vera.ttf";

bool isGrey(int ink) {
    return ink > 8 && ink < 247;
}

using Window = std::pair<int, int>;  // width and height in pixels

class FFontDataSharpness : public testing::TestWithParam<Window> {
protected:
    // How many pixels of the row through the stem of an l are neither ground nor text. A stem has two edges,
    // and the area that an edge covers of its pixel makes one such pixel each.
    int greyPixels(float x, float y, float scaleX, float scaleY) {
        const auto image = drawn(gl, face, "l", x, y, scaleX, scaleY);
        const InkBox ink = inkBox(image);
        EXPECT_FALSE(ink.empty());
        int count = 0;
        for (int column = ink.left; column < ink.right; ++column) {
            count += isGrey(inkAt(image, column, (ink.top + ink.bottom) / 2)) ? 1 : 0;
        }
        return count;
    }

    const OffscreenGL gl{GetParam().first, GetParam().second};
    const float narrow = static_cast<float>(gl.height()) / static_cast<float>(gl.width());
    FFontData face{vera, 24};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Windows, FFontDataSharpness, testing::Values(Window{640, 480}, Window{960, 2160}),
                         [](const auto& window) { return std::to_string(window.param.second) + "Rows"; });

TEST_P(FFontDataSharpness, EdgesInTheWorldAreOnePixelWide) {
    const WorldView view(gl);
    for (const float scale : {0.5f, 0.8f, 1.0f, 2.0f}) {
        for (int step = 0; step < 8; ++step) {
            const float x = view.xOf(gl.width() / 2.0 + step / 8.0);
            const float y = view.yOf(gl.height() / 2.0 + step / 8.0);
            EXPECT_LE(greyPixels(x, y, scale, scale), 2) << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, EdgesOnTheScreenAreOnePixelWide) {
    viewScreen();
    for (const float scale : {0.08f, 0.12f, 0.2f}) {
        for (int step = 0; step < 8; ++step) {
            const float x = 2.0f * static_cast<float>(step) / 8.0f / static_cast<float>(gl.width());
            EXPECT_LE(greyPixels(x, 0.013f, scale * narrow, scale), 2)
                << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, LettersOnTheScreenStandOnAPixelRow) {
    viewScreen();
    for (const float scale : {0.06f, 0.1f, 0.25f}) {
        for (int step = 0; step < 8; ++step) {
            const float y = 2.0f * static_cast<float>(step) / 8.0f / static_cast<float>(gl.height());
            const auto image = drawn(gl, face, "HEFL", 0.0f, y, scale * narrow, scale);
            EXPECT_EQ(inkBox(image, 8).bottom, inkBox(image, 200).bottom)
                << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, SmallLettersOnTheScreenEndOnAPixelRow) {
    viewScreen();
    for (int size = 0; size < 45; ++size) {
        const float emPx = 9.0f + 0.7f * static_cast<float>(size);
        const float scale = emPx * 2.0f / 0.6f / static_cast<float>(gl.height());
        const auto image = drawn(gl, face, "HEFL", 0.0f, 0.0f, scale * 2.0f, scale);
        EXPECT_EQ(inkBox(image, 8).top, inkBox(image, 200).top) << "em of " << emPx << " pixels";
    }
}

TEST_P(FFontDataSharpness, DriftingTextFollowsInSmallStepsAndKeepsItsInkAndItsSpacing) {
    const WorldView view(gl);
    const double start = gl.width() / 2.0;
    double ink = 0.0;
    double distance = 0.0;
    double atRest = 0.0;
    for (int step = 0; step <= 32; ++step) {
        const double drift = step / 16.0;
        const auto image =
            drawn(gl, face, "l 100 l", view.xOf(start + drift), view.yOf(start / 2 + drift), 0.5f, 0.5f);
        const InkBox box = inkBox(image);
        const int first = box.left + box.width() / 6;
        const int last = box.right - box.width() / 6;
        const double nowInk = inkPixels(image);
        const double centre = inkCentreX(image, 0, first);
        const double nowDistance = inkCentreX(image, last, gl.width()) - centre;
        if (step == 0) {
            ink = nowInk;
            distance = nowDistance;
            atRest = centre;
        }
        EXPECT_NEAR(nowInk, ink, 0.01 * ink) << "drift " << drift;
        EXPECT_NEAR(nowDistance, distance, 0.02) << "drift " << drift;
        EXPECT_NEAR(centre - atRest, drift, 0.25) << "drift " << drift;
    }
}

TEST_P(FFontDataSharpness, RisingTextFollowsInSmallSteps) {
    const WorldView view(gl);
    const double start = gl.height() / 2.0;
    // The ink of the uppermost grey row makes its edge finer than whole rows.
    const auto top = [&](double rowPx) {
        const auto image = drawn(gl, face, "H", 0.0f, view.yOf(rowPx), 0.5f, 0.5f);
        const InkBox solid = inkBox(image, 250);
        return solid.top - inkAt(image, solid.left, solid.top - 1) / 255.0;
    };
    const double atRest = top(start);
    for (int step = 0; step <= 32; ++step) {
        const double rise = step / 16.0;
        EXPECT_NEAR(atRest - top(start - rise), rise, 0.15) << "rise " << rise;
    }
}

TEST_P(FFontDataSharpness, SpacingIsEven) {
    const WorldView view(gl);
    // Stems of one kind at equal distances: none may stand more than a quarter of a pixel off.
    const char* const text = "l l l l l l l l";
    const float x = view.xOf(gl.width() * 0.3);
    const auto image = drawn(gl, face, text, x, 0.0f, 0.6f, 0.6f);
    const double stepPx =
        static_cast<double>(face.measureString("l l l", 0.6f) - face.measureString("l l", 0.6f)) *
        view.pixelsPerUnit();
    const double firstStem = static_cast<double>(gl.width()) * 0.3 + 0.25 * stepPx;
    const double first = inkCentreX(image, 0, static_cast<int>(firstStem + 0.4 * stepPx));
    for (int stem = 1; stem < 8; ++stem) {
        const double expected = first + stem * stepPx;
        const double centre = inkCentreX(image, static_cast<int>(expected - 0.4 * stepPx),
                                         static_cast<int>(expected + 0.4 * stepPx));
        EXPECT_NEAR(centre, expected, 0.26) << "stem " << stem;
    }
}

TEST_P(FFontDataSharpness, TurnedTextHasEdgesOfAFewPixels) {
    const WorldView view(gl);
    glRotatef(90.0f, 0.0f, 0.0f, 1.0f);
    const auto image = drawn(gl, face, "l", 0.003f, 0.002f, 2.0f, 2.0f);
    const InkBox ink = inkBox(image);
    int grey = 0;
    for (int y = ink.top; y < ink.bottom; ++y) {
        grey += isGrey(inkAt(image, (ink.left + ink.right) / 2, y)) ? 1 : 0;
    }
    EXPECT_LE(grey, 4);
    EXPECT_LT(grey, ink.height());
}
