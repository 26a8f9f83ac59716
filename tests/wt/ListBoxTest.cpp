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
        panel = window("panel", {-0.5F, -0.5F, 1, 1});
        list = new wt::wtListBox(panel, "list", {0, 0}, {0.5F, 0.5F});
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

    Pixel onRow(int row) const {
        const wt::Rect rect = list->rowRect(row);
        return at(list->origin().x + rect.x + rect.w / 2, list->origin().y + rect.y + rect.h / 2);
    }
    const wt::wtWidget& bar() const { return *list->children().front(); }
    int visible() const { return list->view().visibleRows(); }
    int first() const { return list->view().firstRow(); }

    wt::wtWindow* panel = nullptr;
    wt::wtListBox* list = nullptr;
    std::vector<std::pair<wt::wtListBox*, int>> told;
};

TEST_F(ListBoxTest, RowsAreAppendedInTheirOrder) {
    std::list<std::string> rows = {"Scale", "Ode"};
    list->append(rows);
    rows = {"Fr\u00e8re_Jacques"};
    list->append(rows);
    ASSERT_EQ(list->rowCount(), 3);
    EXPECT_EQ(list->row(0), "Scale");
    EXPECT_EQ(list->row(1), "Ode");
    EXPECT_EQ(list->row(2), "Fr\u00e8re_Jacques");
}

TEST_F(ListBoxTest, RowsStandFromTheTopDownWholeAndWithoutGaps) {
    fill(50);
    EXPECT_GE(visible(), 5);
    for (int row = 1; row < visible(); ++row) {
        EXPECT_NEAR(list->rowRect(row).top(), list->rowRect(row - 1).y, 1e-5F);
    }
    EXPECT_LE(list->rowRect(0).top(), list->rect().h);
    EXPECT_GE(list->rowRect(visible() - 1).y, 0);
    EXPECT_EQ(list->rowRect(visible()).h, 0) << "the row after the last visible one is not there";
}

TEST_F(ListBoxTest, PressingARowSelectsItAndTellsItsIndex) {
    fill(3);
    click(onRow(2));
    EXPECT_EQ(list->selected(), 2);
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0], std::make_pair(list, 2));
}

TEST_F(ListBoxTest, PressingBelowTheLastRowSelectsNothing) {
    fill(2);
    click(on(*list, 0.5F, 0.05F));
    EXPECT_EQ(list->selected(), -1);
    EXPECT_TRUE(told.empty());
}

TEST_F(ListBoxTest, EmptyListTakesPressesAndTheWheelInSilence) {
    click(on(*list));
    turn(on(*list), wheelDown);
    move(on(*list));
    EXPECT_EQ(list->selected(), -1);
    EXPECT_EQ(list->hoveredRow(), -1);
    EXPECT_TRUE(told.empty());
}

TEST_F(ListBoxTest, WheelScrollsTowardsTheUserAndStopsAtTheEnds) {
    fill(40);
    turn(on(*list), wheelUp);
    EXPECT_EQ(first(), 0);
    turn(on(*list), wheelDown);
    const int step = first();
    EXPECT_GT(step, 0);
    EXPECT_LT(step, visible()) << "no row is passed unseen";
    for (int i = 0; i < 100; ++i) {
        turn(on(*list), wheelDown);
    }
    EXPECT_EQ(first(), 40 - visible());
    EXPECT_FALSE(list->view().moreBelow());
    turn(on(*list), wheelUp);
    EXPECT_EQ(first(), 40 - visible() - step);
}

TEST_F(ListBoxTest, WheelOverAnotherWidgetOrWithAButtonHeldDoesNotScroll) {
    fill(40);
    turn(at(-0.9F, 0.9F), wheelDown);
    EXPECT_EQ(first(), 0);
    press(on(*list));
    turn(on(*list), wheelDown);
    EXPECT_EQ(first(), 0);
}

TEST_F(ListBoxTest, PressAfterScrollingSelectsTheRowThatIsSeen) {
    fill(40);
    turn(on(*list), wheelDown);
    const int third = first() + 2;
    click(onRow(third));
    EXPECT_EQ(list->selected(), third);
}

TEST_F(ListBoxTest, HoverIsTheRowUnderThePointer) {
    fill(10);
    move(onRow(1));
    EXPECT_EQ(list->hoveredRow(), 1);
    turn(onRow(1), wheelDown);
    EXPECT_EQ(list->hoveredRow(), 1 + first()) << "the list moved under the pointer";
    move(at(-0.9F, 0.9F));
    EXPECT_EQ(list->hoveredRow(), -1);
}

TEST_F(ListBoxTest, BarIsThereOnlyWhenThereIsSomethingToScroll) {
    fill(3);
    EXPECT_EQ(bar().rect().w, 0);
    fill(40);
    EXPECT_GT(bar().rect().w, 0);
    EXPECT_LE(list->rowRect(0).right(), bar().rect().x + 1e-5F) << "rows end where the bar begins";
}

TEST_F(ListBoxTest, DraggingTheThumbScrollsToBothEnds) {
    fill(40);
    const auto& scrollBar = dynamic_cast<const wt::ScrollBar&>(bar());
    const wt::Rect thumb = scrollBar.thumb();
    const Pixel grip = on(bar(), 0.5F, (thumb.y + thumb.h / 2) / bar().rect().h);
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

TEST_F(ListBoxTest, PressingTheTroughGoesAPageTowardsThePointer) {
    fill(60);
    click(on(bar(), 0.5F, 0.2F));
    EXPECT_EQ(first(), visible());
    click(on(bar(), 0.5F, 0.2F));
    EXPECT_EQ(first(), 2 * visible());
    click(on(bar(), 0.5F, 0.9F));
    EXPECT_EQ(first(), visible());
}

TEST_F(ListBoxTest, ArrowsAtTheEndsOfTheBarGoOneRow) {
    fill(40);
    click(on(bar(), 0.5F, 0.01F));
    click(on(bar(), 0.5F, 0.01F));
    EXPECT_EQ(first(), 2);
    click(on(bar(), 0.5F, 0.99F));
    EXPECT_EQ(first(), 1);
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

TEST_F(ListBoxTest, SelectionStaysInViewWhenThePanelShrinks) {
    fill(40);
    const int last = visible() - 1;
    click(onRow(last));
    panel->resize(0.6F, 0.5F);
    ASSERT_LT(visible(), last + 1);
    EXPECT_TRUE(list->view().inView(last));
}

TEST_F(ListBoxTest, SelectionThatWasScrolledAwayStaysAway) {
    fill(40);
    click(onRow(0));
    for (int i = 0; i < 10; ++i) {
        turn(on(*list), wheelDown);
    }
    ASSERT_FALSE(list->view().inView(0));
    panel->resize(0.6F, 0.5F);
    EXPECT_FALSE(list->view().inView(0));
    EXPECT_EQ(list->selected(), 0);
}

TEST_F(ListBoxTest, SlotMayDestroyTheList) {
    fill(5);
    list->connectItemSelected([](wt::wtListBox*, int) { wt::wtWindowManager::clear(); });
    click(onRow(1));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
}

TEST_F(ListBoxTest, DisabledListKeepsItsSelection) {
    fill(5);
    list->setEnabled(0);
    click(onRow(1));
    EXPECT_EQ(list->selected(), -1);
}

}  // namespace
