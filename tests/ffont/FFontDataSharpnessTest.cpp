// Text is as sharp as pixels allow, at every window size, wherever it stands and while it moves.

#include <string>
#include <vector>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"
#include "tests/support/OffscreenGL.h"

namespace {

const char* const vera = "Fonts/Vera.ttf";

// How many pixels of the row through the stem of an l are neither ground nor text. A stem has two edges, and
// the area that an edge covers of its pixel makes one such pixel each.
int greyPixels(const tavi::Image<unsigned char>& image, const InkBox& ink) {
    int count = 0;
    const int row = (ink.top + ink.bottom) / 2;
    for (int x = ink.left; x < ink.right; ++x) {
        const int value = inkAt(image, x, row);
        count += value > 8 && value < 247 ? 1 : 0;
    }
    return count;
}

struct Window {
    int width;
    int height;
};

class FFontDataSharpness : public testing::TestWithParam<Window> {
protected:
    const OffscreenGL gl{GetParam().width, GetParam().height};
    FFontData face{vera, 24};
};

#ifdef __SANITIZE_ADDRESS__
// Large pictures are looked at pixel by pixel, which takes minutes here and shows nothing more.
const std::vector<Window> windows = {{640, 480}};
#else
const std::vector<Window> windows = {{640, 480}, {960, 2160}};
#endif

}  // namespace

INSTANTIATE_TEST_SUITE_P(Windows, FFontDataSharpness, testing::ValuesIn(windows),
                         [](const auto& window) { return std::to_string(window.param.height) + "Rows"; });

TEST_P(FFontDataSharpness, EdgesInTheWorldAreOnePixelWide) {
    const WorldView view(gl);
    for (const float scale : {0.5F, 0.8F, 1.0F, 2.0F}) {
        for (int step = 0; step < 8; ++step) {
            const float x = view.xOf(gl.width() / 2.0 + step / 8.0);
            const float y = view.yOf(gl.height() / 2.0 + step / 8.0);
            const auto image = drawn(gl, face, "l", x, y, scale, scale);
            const InkBox ink = inkBox(image);
            ASSERT_FALSE(ink.empty());
            EXPECT_LE(greyPixels(image, ink), 2) << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, EdgesOnTheScreenAreOnePixelWide) {
    viewScreen();
    const float narrow = static_cast<float>(gl.height()) / static_cast<float>(gl.width());
    for (const float scale : {0.08F, 0.12F, 0.2F}) {
        for (int step = 0; step < 8; ++step) {
            const float x = 2.0F * static_cast<float>(step) / 8.0F / static_cast<float>(gl.width());
            const auto image = drawn(gl, face, "l", x, 0.013F, scale * narrow, scale);
            EXPECT_LE(greyPixels(image, inkBox(image)), 2) << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, LettersOnTheScreenStandOnAPixelRow) {
    viewScreen();
    const float narrow = static_cast<float>(gl.height()) / static_cast<float>(gl.width());
    for (const float scale : {0.06F, 0.1F, 0.25F}) {
        for (int step = 0; step < 8; ++step) {
            const float y = 2.0F * static_cast<float>(step) / 8.0F / static_cast<float>(gl.height());
            const auto image = drawn(gl, face, "HEFL", 0.0F, y, scale * narrow, scale);
            EXPECT_EQ(inkBox(image, 8).bottom, inkBox(image, 200).bottom)
                << "scale " << scale << ", step " << step;
        }
    }
}

TEST_P(FFontDataSharpness, SmallLettersOnTheScreenEndOnAPixelRow) {
    viewScreen();
    for (int size = 0; size < 45; ++size) {
        const float emPx = 9.0F + 0.7F * static_cast<float>(size);
        const float scale = emPx * 2.0F / 0.6F / static_cast<float>(gl.height());
        const auto image = drawn(gl, face, "HEFL", 0.0F, 0.0F, scale * 2.0F, scale);
        EXPECT_EQ(inkBox(image, 8).top, inkBox(image, 200).top) << "em of " << emPx << " pixels";
    }
}

TEST_P(FFontDataSharpness, DriftingTextKeepsItsInkAndItsSpacing) {
    const WorldView view(gl);
    const double start = gl.width() / 2.0;
    double ink = 0.0;
    double distance = 0.0;
    for (int step = 0; step <= 24; ++step) {
        const double drift = step / 16.0;
        const auto image =
            drawn(gl, face, "l 100 l", view.xOf(start + drift), view.yOf(start / 2 + drift), 0.5F, 0.5F);
        const InkBox box = inkBox(image);
        const int first = box.left + box.width() / 6;
        const int last = box.right - box.width() / 6;
        const double nowInk = inkPixels(image);
        const double nowDistance = inkCentreX(image, last, gl.width()) - inkCentreX(image, 0, first);
        if (step == 0) {
            ink = nowInk;
            distance = nowDistance;
        }
        EXPECT_NEAR(nowInk, ink, 0.01 * ink) << "drift " << drift;
        EXPECT_NEAR(nowDistance, distance, 0.02) << "drift " << drift;
    }
}

TEST_P(FFontDataSharpness, DriftingTextFollowsInSmallSteps) {
    const WorldView view(gl);
    const double start = gl.width() / 2.0;
    const double atRest = inkCentreX(drawn(gl, face, "l", view.xOf(start), 0.0F, 0.5F, 0.5F), 0, gl.width());
    for (int step = 0; step <= 32; ++step) {
        const double drift = step / 16.0;
        const auto image = drawn(gl, face, "l", view.xOf(start + drift), 0.0F, 0.5F, 0.5F);
        EXPECT_NEAR(inkCentreX(image, 0, gl.width()) - atRest, drift, 0.25) << "drift " << drift;
    }
}

TEST_P(FFontDataSharpness, RisingTextFollowsInSmallSteps) {
    const WorldView view(gl);
    const double start = gl.height() / 2.0;
    // The ink of the uppermost grey row makes its edge finer than whole rows.
    const auto top = [&](double rowPx) {
        const auto image = drawn(gl, face, "H", 0.0F, view.yOf(rowPx), 0.5F, 0.5F);
        const InkBox solid = inkBox(image, 250);
        const int column = solid.left;
        return solid.top - inkAt(image, column, solid.top - 1) / 255.0;
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
    const auto image = drawn(gl, face, text, x, 0.0F, 0.6F, 0.6F);
    const double stepPx =
        static_cast<double>(face.measureString("l l l", 0.6F) - face.measureString("l l", 0.6F)) *
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
    glRotatef(90.0F, 0.0F, 0.0F, 1.0F);
    const auto image = drawn(gl, face, "l", 0.003F, 0.002F, 2.0F, 2.0F);
    const InkBox ink = inkBox(image);
    int grey = 0;
    for (int y = ink.top; y < ink.bottom; ++y) {
        const int value = inkAt(image, (ink.left + ink.right) / 2, y);
        grey += value > 8 && value < 247 ? 1 : 0;
    }
    EXPECT_LE(grey, 4);
    EXPECT_LT(grey, ink.height());
}
