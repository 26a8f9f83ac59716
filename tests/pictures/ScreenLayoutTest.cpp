#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/wt/Text.h"
#include "tests/pictures/ScreenFixture.h"

namespace {

using Size = std::pair<int, int>;  // pixels

const std::vector<Size> sizes = {{640, 480},   {1280, 720}, {1920, 1080}, {3840, 2160},
                                 {2560, 1080}, {480, 640},  {320, 240}};

class ScreenLayout : public ScreenFixture, public testing::WithParamInterface<Size> {
protected:
    ScreenLayout() : ScreenFixture(GetParam().first, GetParam().second) {}

    struct Found {
        wt::wtWidget* widget;
        wt::Rect onScreen;
    };

    /// The widgets in a window that take up room, without the window itself.
    static std::vector<Found> widgetsOf(wt::wtWidget& root) {
        std::vector<Found> found;
        for (const auto& child : root.children()) {
            if (child->isShowing() != 0 && child->rect().w > 0.0f) {
                const tavi::Vec2<float> at = child->origin();
                found.push_back({child.get(), {at.x, at.y, child->rect().w, child->rect().h}});
                for (const Found& below : widgetsOf(*child)) {
                    found.push_back(below);
                }
            }
        }
        return found;
    }

    static bool overlap(const wt::Rect& a, const wt::Rect& b) {
        constexpr float rounding = 1e-5f;
        return a.x + rounding < b.right() && b.x + rounding < a.right() && a.y + rounding < b.top() &&
               b.y + rounding < a.top();
    }

    float pixelsWide(const wt::Rect& rect) const { return rect.w / 2.0f * static_cast<float>(screenWidth); }
    float pixelsHigh(const wt::Rect& rect) const { return rect.h / 2.0f * static_cast<float>(screenHeight); }

    void expectWhole(const std::string& text, const Found& found) const {
        const float em = found.widget->emPixels();
        EXPECT_LE(wt::text::width(text, em), pixelsWide(found.onScreen) + 1.0f) << text;
        EXPECT_LE(wt::text::height(em), pixelsHigh(found.onScreen) + 1.0f) << text;
        constexpr float smallestLegible = 10.0f;  // pixels
        EXPECT_GE(em, smallestLegible) << text;
    }

    /// Every widget is on the screen and overlaps no other.
    static void expectApart(wt::wtWindow& window) {
        const std::vector<Found> found = widgetsOf(window);
        EXPECT_FALSE(found.empty());
        for (std::size_t i = 0; i < found.size(); ++i) {
            const auto& [widget, rect] = found[i];
            EXPECT_TRUE(rect.x >= -1.0f && rect.right() <= 1.0f && rect.y >= -1.0f && rect.top() <= 1.0f)
                << widget->name() << " is not all on the screen";
            for (std::size_t j = 0; j < i; ++j) {
                if (found[j].widget->parent() == widget->parent()) {
                    EXPECT_FALSE(overlap(rect, found[j].onScreen))
                        << widget->name() << " overlaps " << found[j].widget->name();
                }
            }
        }
    }

    void expectSound(wt::wtWindow& window) const {
        expectApart(window);
        for (const Found& found : widgetsOf(window)) {
            const auto& [widget, rect] = found;
            const tavi::Vec2<float> middle{rect.x + rect.w / 2.0f, rect.y + rect.h / 2.0f};
            const wt::wtWidget* hit = window.widgetAt(middle - window.origin());
            EXPECT_EQ(hit, widget) << widget->name() << " is out of the pointer's reach";
            if (const auto* button = dynamic_cast<const wt::wtButton*>(widget)) {
                expectWhole(button->getText(), found);
            }
            if (const auto* text = dynamic_cast<const wt::wtStaticText*>(widget)) {
                expectWhole(text->getText(), found);
            }
        }
        for (const auto& [width, height] : {Size(160, 120), {64, 48}, {20, 30}}) {
            SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
            wt::wtWindowManager::setViewport(width, height);
            expectApart(window);
        }
        wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    }
};

TEST_P(ScreenLayout, TitleIsWholeAndReachable) {
    show("title");
    expectSound(*title());
    const std::vector<Found> buttons = widgetsOf(*title());
    for (const auto& [button, rect] : buttons) {
        EXPECT_NEAR(rect.x + rect.w / 2.0f, 0.0f, 2.0f / static_cast<float>(screenWidth)) << button->name();
        EXPECT_NEAR(pixelsWide(rect), pixelsWide(buttons[0].onScreen), 1.0f);
        EXPECT_NEAR(pixelsHigh(rect), pixelsHigh(buttons[0].onScreen), 1.0f);
    }
}

TEST_P(ScreenLayout, ChooserWithManySongsIsWholeAndReachable) {
    show("chooser-many");
    expectSound(*chooser());
    EXPECT_GE(widgets::in<wt::wtListBox>("Play Song", "List")->view().visibleRows(), 2);
}

TEST_P(ScreenLayout, ChooserWithNoSongsIsWholeAndReachable) {
    show("chooser-none");
    expectSound(*chooser());
}

TEST_P(ScreenLayout, SpectrumPanelIsWholeAndReachable) {
    show("panel-chord");
    expectSound(*panel());
    const wt::Rect plot = widgets::in<wt::wtWidget>("Frequency", "window")->rect();
    EXPECT_GT(plot.h, 0.5f * panel()->rect().h);
    EXPECT_GT(plot.w, 0.8f * panel()->rect().w);
}

INSTANTIATE_TEST_SUITE_P(AtEverySize, ScreenLayout, testing::ValuesIn(sizes), [](const auto& instance) {
    return std::to_string(instance.param.first) + "x" + std::to_string(instance.param.second);
});

}  // namespace
