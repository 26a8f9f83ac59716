#include "platform/wt/Texture.h"

#include <GL/gl.h>

#include <algorithm>
#include <memory>

#include "tests/wt/DrawnStage.h"

namespace {

/// A picture as the background of the whole screen, its rows from the top.
class TextureTest : public DrawnStage {
protected:
    static wt::Polygon pictured(tavi::Image<unsigned char>& image) {
        wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
        polygon.setTexture(image, 0);
        polygon.setTextureCoords({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, 0);
        return polygon;
    }
    static wt::wtWindow* show(const wt::Polygon& polygon) {
        wt::wtWindow* panel = window("panel", {-1, -1, 2, 2});
        panel->maximize();
        panel->setBackground(oneCell(polygon));
        return panel;
    }
    const tavi::Image<unsigned char>& drawn() {
        draw();
        return picture;
    }
    static tavi::Image<unsigned char> grey() {
        tavi::Image<unsigned char> image(8, 8, 3);
        std::fill(image.data(), image.data() + 8 * 8 * 3, static_cast<unsigned char>(200));
        return image;
    }
};

TEST_F(TextureTest, EveryNumberOfChannelsAndOddWidthsAreUploadedWhole) {
    for (int channels = 1; channels <= 4; ++channels) {
        // Grey columns, darker to the right: a row that is out of step would slant them.
        tavi::Image<unsigned char> image(7, 5, channels);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 7; ++x) {
                for (int c = 0; c < channels; ++c) {
                    const bool isAlpha = (channels == 2 || channels == 4) && c == channels - 1;
                    image.at(x, y, c) = isAlpha ? 255 : static_cast<unsigned char>(240 - x * 30);
                }
            }
        }
        wt::wtWindowManager::clear();
        show(pictured(image));
        const auto& screen = drawn();
        for (int x = 0; x < 7; ++x) {
            const int column = screenWidth * (2 * x + 1) / 14;
            for (const int row : {4, screenHeight / 2, screenHeight - 5}) {
                EXPECT_NEAR(screen.at(column, row, 0), 240 - x * 30, 4) << channels << " channels";
                EXPECT_NEAR(screen.at(column, row, 2), 240 - x * 30, 4) << channels << " channels";
            }
        }
    }
}

TEST_F(TextureTest, PictureIsUploadedAtOnceSoThatTheImageMayGoAndAnEmptyOneRemovesIt) {
    wt::Polygon polygon;
    {
        tavi::Image<unsigned char> image = grey();
        polygon = pictured(image);
    }
    show(polygon);
    EXPECT_EQ(drawn().at(100, 100, 1), 200);
    EXPECT_EQ(polygon.fill(), wt::Color(1, 1, 1));
    tavi::Image<unsigned char> nothing(0, 0, 0);
    polygon.setTexture(nothing, 0);
    EXPECT_FALSE(polygon.hasTexture());
}

TEST_F(TextureTest, FinePatternIsAveragedWhenItIsDrawnSmall) {
    constexpr int side = 1024;
    tavi::Image<unsigned char> image(side, side, 1);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            // The two texels in the middle of sixteen are alike: sampled alone they would not be grey.
            image.at(x, y, 0) = ((x + 1) / 2 + (y + 1) / 2) % 2 == 0 ? 255 : 0;
        }
    }
    show(pictured(image));
    glViewport(0, 0, 64, 64);
    const auto& screen = drawn();
    for (int y = screenHeight - 60; y < screenHeight - 4; y += 7) {
        for (int x = 4; x < 60; x += 7) {
            EXPECT_NEAR(screen.at(x, y, 0), 128, 3);
        }
    }
}

TEST_F(TextureTest, PictureOrPartOfOneOfTheScreensSizeStandsUprightTexelForPixelInItsColours) {
    for (const int times : {1, 2}) {
        tavi::Image<unsigned char> image(screenWidth * times, screenHeight * times, 3);
        unsigned char sample = 0;
        std::generate_n(image.data(), image.width() * image.height() * 3, [&] { return sample += 37; });
        wt::Polygon upperLeft = pictured(image);
        const float end = 1.0f / static_cast<float>(times);
        upperLeft.setTextureCoords({{0, end}, {end, end}, {end, 0}, {0, 0}}, 0);
        show(upperLeft);
        const auto& screen = drawn();
        for (int y = 0; y < screenHeight; ++y) {
            for (int x = 0; x < screenWidth; ++x) {
                for (int channel = 0; channel < 3; ++channel) {
                    ASSERT_NEAR(screen.at(x, y, channel), image.at(x, y, channel), 1)
                        << x << ", " << y << ", " << times;
                }
            }
        }
    }
}

TEST_F(TextureTest, FadedPictureLetsThroughWhatIsBehindItAndLeavesBlendingAsItWas) {
    tavi::Image<unsigned char> image = grey();
    wt::wtDefaults::Window::shadow_bg(0, 0).setAlpha(0.0f);
    wt::Polygon faded = pictured(image);
    faded.setAlpha(0.5f);
    wt::wtWindow* panel = show(faded);
    panel->setAlpha(1.0f);
    // Over it, a half transparent black, blended as ever.
    wt::wtWindow* veil = window("veil", {-1, -1, 1, 2});
    wt::Polygon shade = colored(0, 0, 0);
    shade.setAlpha(0.5f);
    veil->setBackground(oneCell(shade));
    veil->setAlpha(1.0f);
    glClearColor(0, 0.4f, 0, 1);
    draw();
    glClearColor(0, 0, 0, 0);
    expectColor(pixel(screenWidth * 3 / 4, 200), {100, 151, 100}, 1);
    expectColor(pixel(screenWidth / 4, 200), {50, 76, 50}, 1);
}

TEST_F(TextureTest, TextureIsFreedWithTheLastCopyOfItsPolygon) {
    GLint bound = 0;
    tavi::Image<unsigned char> image(4, 4, 3);
    {
        const wt::Polygon original = pictured(image);
        original.draw({-1, -1, 2, 2}, 1.0f);
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        show(original);
    }
    const auto name = static_cast<GLuint>(bound);
    EXPECT_EQ(glIsTexture(name), GL_TRUE) << "the window's background has it";
    wt::wtWindowManager::clear();
    EXPECT_EQ(glIsTexture(name), GL_FALSE);
}

TEST_F(TextureTest, PictureLargerThanGLTakesIsLeftOut) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    tavi::Image<unsigned char> strip(largest + 1, 1, 1);
    EXPECT_FALSE(wt::Texture(strip));
    tavi::Image<unsigned char> fiveChannels(2, 2, 5);
    EXPECT_FALSE(wt::Texture(fiveChannels));
}

TEST(TextureWithoutContextTest, WindowsWithPicturesMayOutliveTheirContext) {
    auto gl = std::make_unique<OffscreenGL>(64, 64);
    wt::wtWindowManager::init(64, 64, false);
    wt::loadDefaults(64, 64);
    tavi::Image<unsigned char> image(4, 4, 3);
    wt::GridGraphic grid(1, 1);
    grid(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {1, 1}));
    grid(0, 0).setTexture(image, 0);
    ASSERT_TRUE(grid(0, 0).hasTexture());
    auto* panel = new wt::wtWindow("panel", {-1, -1}, {2, 2}, 0);
    panel->setBackground(grid);
    wt::wtWindowManager::appendWidget(panel);
    wt::wtWindowManager::displayWidgets();
    gl.reset();
    wt::wtWindowManager::displayWidgets();
    wt::wtWindowManager::clear();
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
}

}  // namespace
