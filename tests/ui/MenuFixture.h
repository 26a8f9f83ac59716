#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>

#include "platform/wt/wt.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/Widgets.h"

/// A screen with an empty window manager, as the menus find it at start-up.
class MenuFixture : public testing::Test {
protected:
    static constexpr int screenWidth = 640;   // pixels
    static constexpr int screenHeight = 480;  // pixels

    void SetUp() override {
        wt::wtWindowManager::init(screenWidth, screenHeight, false);
        wt::loadDefaults(screenWidth, screenHeight);
    }

    void TearDown() override {
        EXPECT_TRUE(gl.noErrors());
        wt::wtWindowManager::clear();
    }

    static void click(const wt::wtWidget& widget) {
        widgets::click(widgets::middle(widget, screenWidth, screenHeight));
    }

    /// Where both panels stand, give or take a pixel.
    static void expectPanelsPlace(const wt::Rect& rect) {
        constexpr float pixel = 2.0f / screenHeight;
        EXPECT_NEAR(rect.x, -0.4f, pixel);
        EXPECT_NEAR(rect.y, -0.5f, pixel);
        EXPECT_NEAR(rect.w, 0.8f, pixel);
        EXPECT_NEAR(rect.h, 0.9f, pixel);
    }

    OffscreenGL gl{screenWidth, screenHeight};
};
