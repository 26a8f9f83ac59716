#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/wt/wt.h"

/// A window manager without a GL context, and a pointer to use it with. Each test starts with none of
/// another's windows.
class Stage : public testing::Test {
protected:
    static constexpr int screenWidth = 640;   // pixels
    static constexpr int screenHeight = 480;  // pixels

    enum MouseButton : int { leftButton = 0, middleButton = 1, rightButton = 2, wheelUp = 3, wheelDown = 4 };

    void SetUp() override {
        wt::wtWindowManager::init(screenWidth, screenHeight, false);
        wt::loadDefaults(screenWidth, screenHeight);
    }
    void TearDown() override { wt::wtWindowManager::clear(); }

    struct Pixel {
        int x;
        int y;
    };
    /// The pixel at a point of the screen, both axes -1 to 1.
    static Pixel at(float x, float y);
    /// The pixel at a share of the widget's width and height, from its lower left corner.
    static Pixel on(const wt::wtWidget& widget, float shareX = 0.5f, float shareY = 0.5f);
    /// The pixel in the middle of a list's row.
    static Pixel onRow(const wt::wtListBox& list, int row);

    static void move(Pixel to) { wt::wtWindowManager::motionCallback(to.x, to.y); }
    static void press(Pixel to, int button = leftButton) {
        wt::wtWindowManager::mouseCallback(button, 0, to.x, to.y);
    }
    static void release(Pixel to, int button = leftButton) {
        wt::wtWindowManager::mouseCallback(button, 1, to.x, to.y);
    }
    static void click(Pixel to) {
        press(to);
        release(to);
    }
    static void turn(Pixel to, int button) {
        press(to, button);
        release(to, button);
    }

    /// The same but for so many pixels. What is laid on pixels may be off by half of one at either end.
    static void expectRect(const wt::Rect& actual, const wt::Rect& expected, float pixels = 1.0f);

    static wt::Polygon colored(float r, float g, float b) {
        wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
        polygon.setColor(wt::Color(r, g, b));
        return polygon;
    }
    static wt::GridGraphic oneCell(const wt::Polygon& cell) {
        wt::GridGraphic grid(1, 1);
        grid(0, 0) = cell;
        return grid;
    }

    /// A window that is appended already.
    static wt::wtWindow* window(const std::string& title, const wt::Rect& rect, int flags = 0);
};

/// A widget that tells what happened to it.
class Probe : public wt::wtWidget {
public:
    Probe(wt::wtWidget* parent, const wt::Rect& rect, int flags = 0);

    /// Whether it wants presses and the wheel.
    bool takes = true;
    std::vector<std::string> events;
    tavi::Vec2<float> lastPoint;

    bool press(const tavi::Vec2<float>& point) override { return note("press", point); }
    void drag(const tavi::Vec2<float>& point) override { note("drag", point); }
    void release(const tavi::Vec2<float>& point) override { note("release", point); }
    void cancel() override { note("cancel", lastPoint); }
    void hover(const tavi::Vec2<float>& point) override {
        if (events.empty() || events.back() != "hover") {
            note("hover", point);
        }
        lastPoint = point;
    }
    void leave() override { note("leave", lastPoint); }
    bool wheel(int steps) override { return note(steps > 0 ? "wheel up" : "wheel down", lastPoint); }

private:
    bool note(const std::string& event, const tavi::Vec2<float>& point);
};

inline wt::LinearLayout::Attributes attributes(float margin, float weight, int align = 0x24, int fill = 0) {
    return {margin, margin, margin, margin, weight, fill, wt::wtAlign(align), 0};
}
