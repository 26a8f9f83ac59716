#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/wt/Text.h"
#include "tests/pictures/ScreenFixture.h"

namespace {

using Size = std::pair<int, int>;  // pixels

const std::vector<Size>& sizes() {
    static const std::vector<Size> all = {{640, 480},   {1280, 720}, {1920, 1080}, {3840, 2160},
                                          {2560, 1080}, {480, 640},  {320, 240}};
    return all;
}

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

    void expectSound(wt::wtWindow& window) const {
        const std::vector<Found> found = widgetsOf(window);
        EXPECT_FALSE(found.empty());
        for (std::size_t i = 0; i < found.size(); ++i) {
            const auto& [widget, rect] = found[i];
            EXPECT_GE(rect.x, -1.0f) << widget->name();
            EXPECT_LE(rect.right(), 1.0f) << widget->name();
            EXPECT_GE(rect.y, -1.0f) << widget->name();
            EXPECT_LE(rect.top(), 1.0f) << widget->name();
            const tavi::Vec2<float> middle{rect.x + rect.w / 2.0f, rect.y + rect.h / 2.0f};
            const wt::wtWidget* hit = window.widgetAt(middle - window.origin());
            EXPECT_EQ(hit, widget) << widget->name() << " is out of the pointer's reach";
            for (std::size_t j = 0; j < i; ++j) {
                if (found[j].widget->parent() == widget->parent()) {
                    EXPECT_FALSE(overlap(rect, found[j].onScreen))
                        << widget->name() << " overlaps " << found[j].widget->name();
                }
            }
            if (const auto* button = dynamic_cast<const wt::wtButton*>(widget)) {
                expectWhole(button->getText(), found[i]);
            }
            if (const auto* text = dynamic_cast<const wt::wtStaticText*>(widget)) {
                expectWhole(text->getText(), found[i]);
            }
        }
    }
};

TEST_P(ScreenLayout, TitleIsWholeAndReachable) {
    show("title");
    expectSound(*title());
}

TEST_P(ScreenLayout, ChooserWithManySongsIsWholeAndReachable) {
    show("chooser-many");
    expectSound(*chooser());
    constexpr int fewestRows = 2;
    int rows = 0;
    auto* list = widgets::in<wt::wtListBox>("Play Song", "List");
    for (int row = 0; row < list->rowCount(); ++row) {
        rows += list->rowRect(row).h > 0.0f ? 1 : 0;
    }
    EXPECT_GE(rows, fewestRows);
}

TEST_P(ScreenLayout, ChooserWithNoSongsIsWholeAndReachable) {
    show("chooser-none");
    expectSound(*chooser());
}

TEST_P(ScreenLayout, SpectrumPanelIsWholeAndReachable) {
    show("panel-chord");
    expectSound(*panel());
}

INSTANTIATE_TEST_SUITE_P(AtEverySize, ScreenLayout, testing::ValuesIn(sizes()), [](const auto& instance) {
    return std::to_string(instance.param.first) + "x" + std::to_string(instance.param.second);
});

}  // namespace
