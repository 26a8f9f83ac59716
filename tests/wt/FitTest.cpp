// Windows built as the game builds its own, at every size of the screen that a player may have.

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <string>
#include <tuple>
#include <vector>

#include "platform/wt/Text.h"
#include "platform/wt/wt.h"
#include "tests/wt/Stage.h"

namespace {

constexpr int centred = 0x24;
const wt::LinearLayout::Attributes plain(0.01F, 0.01F, 0.01F, 0.01F, 1, 0, wt::wtAlign(centred), 0);
const wt::LinearLayout::Attributes airy(0.01F, 0.01F, 0.02F, 0.02F, 1, 0, wt::wtAlign(centred), 0);

struct Size {
    int width;
    int height;
};

class FitTest : public Stage, public testing::WithParamInterface<Size> {
protected:
    void SetUp() override {
        Stage::SetUp();
        buildTitle();
        buildPanel();
        buildChooser();
        wt::wtWindowManager::setViewport(GetParam().width, GetParam().height);
    }

    void buildTitle() {
        title = window("Options", {-0.6F, -0.5F, 1, 0.85F});
        newGame = new wt::wtButton(title, "New Game", {0.02F, 0.02F}, {-1, -1}, "New Game");
        exit = new wt::wtButton(title, "Exit", {0.02F, 0.15F}, {-1, -1}, "Exit");
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(exit, plain);
        layout->add(newGame, plain);
        title->setLayoutManager(layout);
        title->maximize();
    }
    void buildPanel() {
        panel = window("Frequency", {-0.4F, -0.5F, 0.8F, 0.9F}, 0x101);
        plot = new Probe(panel, "plot", {0, 0, 1, 1}, 3);
        peaks = new wt::wtStaticText(panel, "peaks", {-0.3F, 0.02F}, {0.6F, 0.1F}, "", centred);
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(peaks, plain);
        layout->add(plot, plain);
        panel->setLayoutManager(layout);
    }
    void buildChooser() {
        chooser = window("Play Song", {-0.4F, -0.5F, 0.8F, 0.9F});
        list = new wt::wtListBox(chooser, "List", {-0.3F, -0.3F}, {0.7F, 0.7F});
        std::list<std::string> names(30, "Twinkle_twinkle_little_star");
        list->append(names);
        play = new wt::wtButton(chooser, "play", {0.02F, 0.02F}, {-1, -1}, "Play");
        chosen = new wt::wtStaticText(chooser, "chosen", {-0.3F, 0.02F}, {0.6F, 0.1F}, "________", centred);
        heading = new wt::wtStaticText(chooser, "heading", {-0.3F, 0.02F}, {0.6F, 0.1F}, "Choose your song",
                                       centred);
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(play, plain);
        layout->add(chosen, airy);
        layout->add(list, plain);
        layout->add(heading, airy);
        chooser->setLayoutManager(layout);
    }

    static bool apart(const wt::Rect& a, const wt::Rect& b) {
        constexpr float slack = 1e-5F;
        return a.right() <= b.x + slack || b.right() <= a.x + slack || a.top() <= b.y + slack ||
               b.top() <= a.y + slack;
    }

    static void expectApartAndInside(const wt::wtWidget& parent) {
        constexpr float slack = 1e-5F;
        const auto& children = parent.children();
        for (std::size_t i = 0; i < children.size(); ++i) {
            const wt::Rect rect = children[i]->rect();
            EXPECT_GE(rect.x, -slack) << children[i]->name();
            EXPECT_GE(rect.y, -slack) << children[i]->name();
            EXPECT_LE(rect.right(), parent.rect().w + slack) << children[i]->name();
            EXPECT_LE(rect.top(), parent.rect().h + slack) << children[i]->name();
            for (std::size_t j = 0; j < i; ++j) {
                EXPECT_TRUE(apart(rect, children[j]->rect()))
                    << children[i]->name() << " overlaps " << children[j]->name();
            }
            expectApartAndInside(*children[i]);
        }
    }

    /// Whether the pointer, put on the middle of the widget, finds it there.
    static bool reachable(const wt::wtWidget& widget) {
        wt::wtWidget* window = const_cast<wt::wtWidget*>(&widget);
        while (window->parent() != nullptr) {
            window = window->parent();
        }
        const Pixel middle = on(widget);
        const tavi::Vec2<float> point = wt::screen().fromPixel(middle.x, middle.y);
        const bool onScreen =
            middle.x >= 0 && middle.x < wt::screen().width && middle.y >= 0 && middle.y < wt::screen().height;
        return onScreen && window->widgetAt(point - window->origin()) == &widget;
    }

    static bool textFits(const std::string& text, const wt::wtWidget& widget) {
        const float em = widget.emPixels();
        const float room = widget.rect().w / wt::screen().pixelX();
        const float height = widget.rect().h / wt::screen().pixelY();
        return wt::text::width(text, em) <= room && wt::text::height(em) <= height + 1;
    }

    wt::wtWindow* title = nullptr;
    wt::wtButton* newGame = nullptr;
    wt::wtButton* exit = nullptr;
    wt::wtWindow* panel = nullptr;
    Probe* plot = nullptr;
    wt::wtStaticText* peaks = nullptr;
    wt::wtWindow* chooser = nullptr;
    wt::wtListBox* list = nullptr;
    wt::wtButton* play = nullptr;
    wt::wtStaticText* chosen = nullptr;
    wt::wtStaticText* heading = nullptr;
};

TEST_P(FitTest, NoTwoWidgetsOverlapAndNoneLeavesItsParent) {
    for (const wt::wtWidget* window : {title, panel, chooser}) {
        expectApartAndInside(*window);
    }
}

TEST_P(FitTest, EveryWidgetCanBeReachedByThePointer) {
    const wt::wtWidget& closeBox = *panel->children().front()->children().front();
    const wt::wtWidget& scrollBar = *list->children().front();
    for (const wt::wtWidget* widget : std::initializer_list<const wt::wtWidget*>{
             newGame, exit, plot, peaks, list, play, chosen, heading, &closeBox, &scrollBar}) {
        EXPECT_TRUE(reachable(*widget)) << widget->name();
    }
}

TEST_P(FitTest, NoTextIsCut) {
    EXPECT_TRUE(textFits("New Game", *newGame));
    EXPECT_TRUE(textFits("Exit", *exit));
    EXPECT_TRUE(textFits("Play", *play));
    EXPECT_TRUE(textFits("Choose your song", *heading));
    EXPECT_TRUE(textFits("________", *chosen));
    EXPECT_TRUE(textFits("drunken_sailor.txt", *chosen));
    EXPECT_TRUE(textFits("1480 1490 1495 1499 ", *peaks));
}

TEST_P(FitTest, ListShowsSeveralRowsAndThePlotTakesMostOfItsPanel) {
    EXPECT_GE(list->view().visibleRows(), 3);
    EXPECT_GT(plot->rect().h, 0.5F * panel->rect().h);
    EXPECT_GT(plot->rect().w, 0.85F * panel->rect().w);
    EXPECT_GT(list->rect().w, 0.85F * chooser->rect().w);
}

TEST_P(FitTest, TitleButtonsSitInTheMiddleOfEachHalf) {
    const auto middleX = [](const wt::wtWidget& w) { return w.origin().x + w.rect().w / 2; };
    const auto middleY = [](const wt::wtWidget& w) { return w.origin().y + w.rect().h / 2; };
    const float px = wt::screen().pixelX();
    EXPECT_NEAR(middleX(*newGame), 0, px);
    EXPECT_NEAR(middleX(*exit), 0, px);
    EXPECT_NEAR(middleY(*newGame), 0.5F, 0.03F);
    EXPECT_NEAR(middleY(*exit), -0.5F, 0.03F);
    EXPECT_NEAR(newGame->rect().w, exit->rect().w, px) << "both buttons have one width";
}

TEST_P(FitTest, PeakTextNeverMovesOrResizesItsLine) {
    const wt::Rect before = peaks->rect();
    for (const char* text : {"440 ", "1480 1490 1495 1499 ", ""}) {
        peaks->setText(text);
        move(at(0, 0));
        EXPECT_EQ(peaks->rect().x, before.x);
        EXPECT_EQ(peaks->rect().y, before.y);
        EXPECT_EQ(peaks->rect().w, before.w);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, FitTest,
                         testing::Values(Size{640, 480}, Size{1280, 720}, Size{1920, 1080}, Size{3840, 2160},
                                         Size{2560, 1080}, Size{480, 640}, Size{800, 600}, Size{1366, 768},
                                         Size{1080, 1920}, Size{641, 479}, Size{8192, 4320}),
                         [](const testing::TestParamInfo<Size>& size) {
                             return std::to_string(size.param.width) + "x" +
                                    std::to_string(size.param.height);
                         });

/// Screens that nobody can read, but that a player may drag a window through.
class TinyFitTest : public FitTest {};

TEST_P(TinyFitTest, NoTwoWidgetsOverlapAndNoneLeavesItsParent) {
    for (const wt::wtWidget* window : {title, panel, chooser}) {
        expectApartAndInside(*window);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, TinyFitTest,
                         testing::Values(Size{320, 240}, Size{200, 200}, Size{100, 400}, Size{400, 50},
                                         Size{33, 17}, Size{5, 5}, Size{1, 1}),
                         [](const testing::TestParamInfo<Size>& size) {
                             return std::to_string(size.param.width) + "x" +
                                    std::to_string(size.param.height);
                         });

}  // namespace
