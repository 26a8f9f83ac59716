#include "platform/wt/wtListBox.h"

#include <list>
#include <string>
#include <utility>
#include <vector>

#include "platform/wt/ScrollBar.h"
#include "tests/wt/Stage.h"

namespace {

std::list<std::string> numbered(int count) {
    std::list<std::string> rows;
    for (int i = 0; i < count; ++i) {
        rows.push_back("Row_" + std::to_string(i));
    }
    return rows;
}

class ListBoxTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        panel = window("panel", {-0.5f, -0.5f, 1, 1});
        list = new wt::wtListBox(panel, "list", {0, 0}, {0.5f, 0.5f});
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(list, attributes(0, 1));
        panel->setLayoutManager(layout);
        list->connectItemSelected([this](wt::wtListBox* sender, int row) { told.emplace_back(sender, row); });
        layOut();
    }
    void fill(int count) {
        std::list<std::string> rows = numbered(count);
        list->append(rows);
        layOut();
    }
    static void layOut() { wt::wtWindowManager::setViewport(wt::screen().width, wt::screen().height); }

    Pixel onRow(int row) const { return Stage::onRow(*list, row); }
    const wt::wtWidget& bar() const { return *list->children().front(); }
    int visible() const { return list->view().visibleRows(); }
    int first() const { return list->view().firstRow(); }

    wt::wtWindow* panel = nullptr;
    wt::wtListBox* list = nullptr;
    std::vector<std::pair<wt::wtListBox*, int>> told;
};

TEST_F(ListBoxTest, RowsStandFromTheTopDownWholeAndWithoutGaps) {
    fill(20);
    fill(30);
    ASSERT_EQ(list->rowCount(), 50);
    EXPECT_EQ(list->row(19), "Row_19");
    EXPECT_EQ(list->row(20), "Row_0");
    EXPECT_GE(visible(), 5);
    for (int row = 1; row < visible(); ++row) {
        EXPECT_NEAR(list->rowRect(row).top(), list->rowRect(row - 1).y, 1e-5f);
    }
    EXPECT_LE(list->rowRect(0).top(), list->rect().h);
    EXPECT_GE(list->rowRect(visible() - 1).y, 0);
    EXPECT_EQ(list->rowRect(visible()).h, 0) << "the row after the last visible one is not there";
}

TEST_F(ListBoxTest, PressingARowOfAnEnabledListSelectsItAndTellsItsIndex) {
    for (const int rows : {0, 3}) {  // below the last row
        fill(rows);
        click(on(*list, 0.5f, 0.05f));
        turn(on(*list, 0.5f, 0.05f), wheelDown);
        EXPECT_EQ(list->selected(), -1);
        EXPECT_EQ(list->hoveredRow(), -1);
    }
    list->setEnabled(0);
    click(onRow(1));
    EXPECT_EQ(list->selected(), -1);
    EXPECT_TRUE(told.empty());
    list->setEnabled(1);
    click(onRow(2));
    EXPECT_EQ(list->selected(), 2);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0], std::make_pair(list, 2));
}

TEST_F(ListBoxTest, WheelScrollsTowardsTheUserAndStopsAtTheEnds) {
    fill(40);
    turn(on(*list), wheelUp);
    EXPECT_EQ(first(), 0);
    EXPECT_FALSE(list->view().moreAbove());
    EXPECT_TRUE(list->view().moreBelow());
    turn(on(*list), wheelDown);
    const int step = first();
    EXPECT_GT(step, 0);
    EXPECT_LT(step, visible()) << "no row is passed unseen";
    for (int i = 0; i < 100; ++i) {
        turn(on(*list), wheelDown);
    }
    EXPECT_EQ(first(), 40 - visible());
    EXPECT_TRUE(list->view().moreAbove());
    EXPECT_FALSE(list->view().moreBelow());
    turn(on(*list), wheelUp);
    EXPECT_EQ(first(), 40 - visible() - step);
}

TEST_F(ListBoxTest, WheelOverAnotherWidgetOrWithAButtonHeldDoesNotScroll) {
    fill(40);
    turn(at(-0.9f, 0.9f), wheelDown);
    EXPECT_EQ(first(), 0);
    press(on(*list));
    turn(on(*list), wheelDown);
    EXPECT_EQ(first(), 0);
}

TEST_F(ListBoxTest, HoverAndPressAreOnTheRowUnderThePointerAlsoAfterScrolling) {
    fill(40);
    move(onRow(1));
    EXPECT_EQ(list->hoveredRow(), 1);
    turn(onRow(1), wheelDown);
    EXPECT_EQ(list->hoveredRow(), 1 + first()) << "the list moved under the pointer";
    const int third = first() + 2;
    click(onRow(third));
    EXPECT_EQ(list->selected(), third);
    move(at(-0.9f, 0.9f));
    EXPECT_EQ(list->hoveredRow(), -1);
}

TEST_F(ListBoxTest, BarIsThereOnlyWhenThereIsSomethingToScroll) {
    fill(3);
    EXPECT_EQ(bar().rect().w, 0);
    fill(40);
    EXPECT_GT(bar().rect().w, 0);
    EXPECT_LE(list->rowRect(0).right(), bar().rect().x + 1e-5f) << "rows end where the bar begins";
}

TEST_F(ListBoxTest, DraggingTheThumbScrollsToBothEnds) {
    fill(40);
    const auto& scrollBar = dynamic_cast<const wt::ScrollBar&>(bar());
    const wt::Rect thumb = scrollBar.thumb();
    const Pixel grip = on(bar(), 0.5f, (thumb.y + thumb.h / 2) / bar().rect().h);
    press(grip);
    move({grip.x, grip.y + 20});
    EXPECT_GT(first(), 0);
    move({grip.x + 200, screenHeight + 500});
    EXPECT_EQ(first(), 40 - visible());
    move({-1000, -1000});
    EXPECT_EQ(first(), 0);
    move(grip);
    release(grip);
    EXPECT_EQ(first(), 0) << "back where it was taken it is where it was";
    move({grip.x, grip.y + 50});
    EXPECT_EQ(first(), 0);
    EXPECT_EQ(list->selected(), -1);
}

TEST_F(ListBoxTest, TroughGoesAPageTowardsThePointerAndTheArrowsAtItsEndsGoOneRow) {
    fill(60);
    int expected = 0;
    for (const auto& [height, rows] : {std::pair(0.2f, visible()),
                                       {0.2f, visible()},
                                       {0.9f, -visible()},
                                       {0.01f, 1},
                                       {0.01f, 1},
                                       {0.99f, -1}}) {
        click(on(bar(), 0.5f, height));
        EXPECT_EQ(first(), expected += rows) << height;
    }
}

TEST_F(ListBoxTest, SelectingFromOutsideBringsTheRowIntoViewAndTellsNobody) {
    fill(40);
    list->select(30);
    layOut();
    EXPECT_TRUE(list->view().inView(30));
    EXPECT_TRUE(told.empty());
    list->select(99);
    EXPECT_EQ(list->selected(), -1);
}

TEST_F(ListBoxTest, SelectionStaysInViewWhenThePanelShrinksUnlessItWasScrolledAway) {
    fill(40);
    const int last = visible() - 1;
    click(onRow(last));
    panel->resize(0.6f, 0.5f);
    ASSERT_LT(visible(), last + 1);
    EXPECT_TRUE(list->view().inView(last));
    for (int i = 0; i < 10; ++i) {
        turn(on(*list), wheelDown);
    }
    ASSERT_FALSE(list->view().inView(last));
    panel->resize(0.6f, 0.4f);
    EXPECT_FALSE(list->view().inView(last));
    EXPECT_EQ(list->selected(), last);
}

TEST_F(ListBoxTest, SlotMayDestroyTheList) {
    fill(5);
    list->connectItemSelected([](wt::wtListBox*, int) { wt::wtWindowManager::clear(); });
    click(onRow(1));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
}

}  // namespace
