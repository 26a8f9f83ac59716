#include "platform/wt/Texture.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "platform/wt/Defaults.h"
#include "platform/wt/Resample.h"
#include "platform/wt/Symbols.h"
#include "tests/support/OffscreenGL.h"
#include "tests/wt/Stage.h"

namespace {

/// A picture as the background of the whole screen, its rows from the top.
class TextureTest : public Stage {
protected:
    void TearDown() override {
        EXPECT_TRUE(gl.noErrors());
        Stage::TearDown();
    }
    static wt::Polygon pictured(tavi::Image<unsigned char>& image) {
        wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
        polygon.setTexture(image, 0);
        polygon.setTextureCoords({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, 0);
        return polygon;
    }
    static wt::wtWindow* show(const wt::Polygon& polygon) {
        wt::wtWindow* panel = window("panel", {-1, -1, 2, 2});
        panel->maximize();
        wt::GridGraphic grid(1, 1);
        grid(0, 0) = polygon;
        panel->setBackground(grid);
        return panel;
    }
    tavi::Image<unsigned char> drawn() {
        glClear(GL_COLOR_BUFFER_BIT);
        wt::wtWindowManager::displayWidgets();
        return gl.read();
    }

    /// That the picture fills a viewport of that size, once it is fitted to it.
    void expectFitted(const tavi::Image<unsigned char>& image, int width, int height) {
        glViewport(0, 0, width, height);
        drawn();
        const auto screen = drawn();
        const auto fitted = wt::resampled(image, width, height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(screen.at(x, screenHeight - height + y, 1), fitted.at(x, y, 1)) << x << ", " << y;
            }
        }
    }

    OffscreenGL gl{screenWidth, screenHeight};
};

TEST_F(TextureTest, PictureStandsUprightWithItsOwnColours) {
    tavi::Image<unsigned char> image(2, 2, 3);
    const std::array<unsigned char, 12> pixels = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
    std::copy(pixels.begin(), pixels.end(), image.data());
    show(pictured(image));
    const auto screen = drawn();
    const int right = screenWidth - 5;
    const int bottom = screenHeight - 5;
    EXPECT_EQ(screen.at(4, 4, 0), 255);
    EXPECT_EQ(screen.at(4, 4, 1), 0);
    EXPECT_EQ(screen.at(right, 4, 1), 255);
    EXPECT_EQ(screen.at(right, 4, 0), 0);
    EXPECT_EQ(screen.at(4, bottom, 2), 255);
    EXPECT_EQ(screen.at(4, bottom, 0), 0);
    EXPECT_EQ(screen.at(right, bottom, 0), 255);
}

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
        const auto screen = drawn();
        for (int x = 0; x < 7; ++x) {
            const int column = screenWidth * (2 * x + 1) / 14;
            for (const int row : {4, screenHeight / 2, screenHeight - 5}) {
                EXPECT_NEAR(screen.at(column, row, 0), 240 - x * 30, 4) << channels << " channels";
                EXPECT_NEAR(screen.at(column, row, 2), 240 - x * 30, 4) << channels << " channels";
            }
        }
    }
}

TEST_F(TextureTest, PictureIsUploadedAtOnceSoThatTheImageMayGo) {
    wt::Polygon polygon;
    {
        tavi::Image<unsigned char> image(8, 8, 3);
        std::fill(image.data(), image.data() + 8 * 8 * 3, static_cast<unsigned char>(200));
        polygon = pictured(image);
    }
    show(polygon);
    EXPECT_EQ(drawn().at(100, 100, 1), 200);
}

TEST_F(TextureTest, FinePatternIsAveragedWhenItIsDrawnSmall) {
    constexpr int side = 1024;
    tavi::Image<unsigned char> image(side, side, 1);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            image.at(x, y, 0) = (x + y) % 2 == 0 ? 255 : 0;
        }
    }
    show(pictured(image));
    glViewport(0, 0, 64, 64);
    const auto screen = drawn();
    for (int y = screenHeight - 60; y < screenHeight - 4; y += 7) {
        for (int x = 4; x < 60; x += 7) {
            EXPECT_NEAR(screen.at(x, y, 0), 128, 3);
        }
    }
}

/// Columns that differ from each other, in three channels.
tavi::Image<unsigned char> stripes(int width, int height) {
    tavi::Image<unsigned char> image(width, height, 3);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                image.at(x, y, channel) = static_cast<unsigned char>((x * 37 + y * 11 + channel * 80) % 256);
            }
        }
    }
    return image;
}

TEST_F(TextureTest, OpaquePictureOfTheScreensSizeIsShownTexelForPixel) {
    tavi::Image<unsigned char> image = stripes(screenWidth, screenHeight);
    show(pictured(image));
    drawn();
    const auto screen = drawn();
    for (int y = 0; y < screenHeight; ++y) {
        for (int x = 0; x < screenWidth; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                ASSERT_EQ(screen.at(x, y, channel), image.at(x, y, channel)) << x << ", " << y;
            }
        }
    }
}

TEST_F(TextureTest, OpaquePictureOfAnotherSizeIsFittedToTheWindowAndFollowsIt) {
    tavi::Image<unsigned char> image = stripes(500, 333);
    show(pictured(image));
    for (const auto& [width, height] : {std::pair(screenWidth, screenHeight), std::pair(320, 200)}) {
        expectFitted(image, width, height);
    }
}

TEST_F(TextureTest, OpaquePictureIsNotFittedToASizeThatIsSeenOnce) {
    tavi::Image<unsigned char> image = stripes(500, 333);
    show(pictured(image));
    drawn();
    constexpr int width = 320;
    constexpr int height = 200;
    glViewport(0, 0, width, height);
    const auto fitted = wt::resampled(image, width, height);
    const auto differing = [&](const tavi::Image<unsigned char>& screen) {
        int count = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                count += screen.at(x, screenHeight - height + y, 1) != fitted.at(x, y, 1) ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_GT(differing(drawn()), width * height / 10);
    EXPECT_EQ(differing(drawn()), 0);
}

TEST_F(TextureTest, HiddenPictureGivesItsWholeTextureBackAndLooksTheSameWhenItIsShownAgain) {
    GLuint probe = 0;
    glGenTextures(1, &probe);
    const GLuint whole = probe + 1;
    tavi::Image<unsigned char> image = stripes(500, 333);
    wt::wtWindow* panel = show(pictured(image));
    ASSERT_EQ(glIsTexture(whole), GL_TRUE);
    panel->setShowing(0);
    EXPECT_EQ(glIsTexture(whole), GL_FALSE);
    panel->setShowing(1);
    expectFitted(image, screenWidth, screenHeight);
    EXPECT_EQ(glIsTexture(whole), GL_FALSE) << "the copy that fits is enough";
    panel->setShowing(0);
    panel->setShowing(1);
    expectFitted(image, 320, 200);
}

TEST_F(TextureTest, PictureThatWasHiddenIsWholeWhileItIsPulledAbout) {
    tavi::Image<unsigned char> image = stripes(500, 333);
    wt::wtWindow* panel = show(pictured(image));
    drawn();
    glViewport(0, 0, 320, 200);
    const auto before = drawn();
    glViewport(0, 0, screenWidth, screenHeight);
    drawn();
    panel->setShowing(0);
    panel->setShowing(1);
    glViewport(0, 0, 320, 200);
    const auto after = drawn();
    EXPECT_TRUE(std::equal(after.data(), after.data() + screenWidth * screenHeight * 4, before.data()));
}

TEST_F(TextureTest, PictureThatLetsThroughStaysATextureWhileItIsHidden) {
    GLuint probe = 0;
    glGenTextures(1, &probe);
    tavi::Image<unsigned char> image(8, 8, 4);
    std::fill(image.data(), image.data() + 8 * 8 * 4, static_cast<unsigned char>(100));
    wt::wtWindow* panel = show(pictured(image));
    const auto before = drawn();
    panel->setShowing(0);
    EXPECT_EQ(glIsTexture(probe + 1), GL_TRUE);
    panel->setShowing(1);
    const auto after = drawn();
    EXPECT_TRUE(std::equal(after.data(), after.data() + screenWidth * screenHeight * 4, before.data()));
}

TEST_F(TextureTest, OpaquePictureLooksTheSameWhereGLHasNoPrograms) {
    tavi::Image<unsigned char> image = stripes(500, 333);
    show(pictured(image));
    const auto byProgram = drawn();
    unsigned int& program = wt::wtSymbols::fragProgs["picture_shader"];
    ASSERT_NE(program, 0U);
    const unsigned int before = std::exchange(program, 0);
    const auto fixed = drawn();
    program = before;
    EXPECT_TRUE(std::equal(fixed.data(), fixed.data() + screenWidth * screenHeight * 4, byProgram.data()));
}

TEST_F(TextureTest, FadedPictureLetsThroughWhatIsBehindItAndLeavesBlendingAsItWas) {
    tavi::Image<unsigned char> image(8, 8, 3);
    std::fill(image.data(), image.data() + 8 * 8 * 3, static_cast<unsigned char>(200));
    wt::wtDefaults::Window::shadow_bg(0, 0).setAlpha(0.0F);
    wt::Polygon faded = pictured(image);
    faded.setAlpha(0.5F);
    wt::wtWindow* panel = show(faded);
    panel->setAlpha(1.0F);
    // Over it, a half transparent black, blended as ever.
    wt::wtWindow* veil = window("veil", {-1, -1, 1, 2});
    wt::GridGraphic grid(1, 1);
    grid(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {1, 1}));
    grid(0, 0).setColor(wt::Color(0, 0, 0));
    grid(0, 0).setAlpha(0.5F);
    veil->setBackground(grid);
    veil->setAlpha(1.0F);
    glClearColor(0, 0.4F, 0, 1);
    const auto screen = drawn();
    glClearColor(0, 0, 0, 0);
    const int bare = screenWidth * 3 / 4;
    EXPECT_NEAR(screen.at(bare, 200, 0), 100, 1);
    EXPECT_NEAR(screen.at(bare, 200, 1), 151, 1);
    EXPECT_NEAR(screen.at(screenWidth / 4, 200, 0), 50, 1);
    EXPECT_NEAR(screen.at(screenWidth / 4, 200, 1), 76, 1);
}

TEST_F(TextureTest, TextureIsFreedWithTheLastCopyOfItsPolygon) {
    GLuint probe = 0;
    glGenTextures(1, &probe);
    const GLuint name = probe + 1;
    tavi::Image<unsigned char> image(4, 4, 3);
    {
        const wt::Polygon original = pictured(image);
        ASSERT_EQ(glIsTexture(name), GL_TRUE);
        { const wt::Polygon copy = original; }
        EXPECT_EQ(glIsTexture(name), GL_TRUE);
        show(original);
    }
    EXPECT_EQ(glIsTexture(name), GL_TRUE) << "the window's background has it";
    wt::wtWindowManager::clear();
    EXPECT_EQ(glIsTexture(name), GL_FALSE);
}

TEST_F(TextureTest, SetAgainReplacesAndAnEmptyImageRemovesThePicture) {
    tavi::Image<unsigned char> image(4, 4, 3);
    tavi::Image<unsigned char> nothing(0, 0, 0);
    wt::Polygon polygon = pictured(image);
    EXPECT_TRUE(polygon.hasTexture());
    EXPECT_EQ(polygon.fill(), wt::Color(1, 1, 1));
    polygon.setTexture(nothing, 0);
    EXPECT_FALSE(polygon.hasTexture());
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
