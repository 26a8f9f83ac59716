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

    OffscreenGL gl{screenWidth, screenHeight};
};
