#include "ui/ChooseSongWindow.h"

#include <boost/bind/bind.hpp>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "tests/ui/MenuFixture.h"

namespace {

const char* const threeSongs = "Scale scale.txt Ode ode.txt\nEcho\n  echo.txt\n";

class ChooseSongWindowTest : public MenuFixture {
protected:
    static wt::wtWindow* panel() { return widgets::window("Play Song"); }
    static wt::wtListBox* list() { return widgets::in<wt::wtListBox>("Play Song", "List"); }
    static wt::wtButton* playButton() { return widgets::in<wt::wtButton>("Play Song", "play_button"); }
    static std::string chosenLine() {
        return widgets::in<wt::wtStaticText>("Play Song", "chosen_song")->getText();
    }

    static void selectRow(int row) {
        wt::wtWindowManager::displayWidgets();
        const tavi::Vec2<float> corner = list()->origin();
        const wt::Rect rect = list()->rowRect(row);
        const float x = corner.x + rect.x + rect.w / 2.0f;
        const float y = corner.y + rect.y + rect.h / 2.0f;
        widgets::click({static_cast<int>((x + 1.0f) / 2.0f * screenWidth),
                        static_cast<int>((1.0f - y) / 2.0f * screenHeight)});
    }

    /// What pressing "Play" emits, joined by blanks.
    static std::string play(ChooseSongWindow& chooser) {
        std::string emitted;
        const boost::signals2::scoped_connection connection(
            chooser.connectPlaySong([&emitted](const std::string& file) { emitted += file + " "; }));
        wt::wtWindowManager::displayWidgets();
        click(*playButton());
        return emitted;
    }

    void SetUp() override {
        MenuFixture::SetUp();  // finds the typeface where the game runs
        folder = std::make_unique<TemporaryFolder>();
    }

    void TearDown() override {
        folder.reset();
        MenuFixture::TearDown();
    }

    std::unique_ptr<TemporaryFolder> folder;
};

class ListingTest : public ChooseSongWindowTest {
protected:
    static std::vector<std::string> rows() {
        std::vector<std::string> names;
        for (int row = 0; row < list()->rowCount(); ++row) {
            names.push_back(list()->row(row));
        }
        return names;
    }
};

TEST_F(ListingTest, PairsOfWordsBecomeRowsWhateverTheLines) {
    folder->write("Songs/listing.txt", threeSongs);
    const ChooseSongWindow chooser;
    EXPECT_EQ(rows(), (std::vector<std::string>{"Scale", "Ode", "Echo"}));
}

TEST_F(ListingTest, MissingListingGivesAnEmptyListAndThePlaceholderSilently) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const ChooseSongWindow chooser;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(list()->rowCount(), 0);
    EXPECT_EQ(chosenLine(), "________");
}

TEST_F(ListingTest, EmptyListingGivesAnEmptyListAndThePlaceholder) {
    folder->write("Songs/listing.txt", "\n  \n");
    const ChooseSongWindow chooser;
    EXPECT_EQ(list()->rowCount(), 0);
    EXPECT_EQ(chosenLine(), "________");
}

TEST_F(ListingTest, OddWordAtTheEndIsDropped) {
    folder->write("Songs/listing.txt", "Scale scale.txt Ode");
    const ChooseSongWindow chooser;
    EXPECT_EQ(rows(), std::vector<std::string>{"Scale"});
}

TEST_F(ListingTest, CarriageReturnsAreWhiteSpace) {
    folder->write("Songs/listing.txt", "Scale scale.txt\r\nOde ode.txt\r\n");
    ChooseSongWindow chooser;
    EXPECT_EQ(rows(), (std::vector<std::string>{"Scale", "Ode"}));
    chooser.show();
    EXPECT_EQ(play(chooser), "scale.txt ");
}

TEST_F(ListingTest, FolderInPlaceOfTheListingGivesAnEmptyList) {
    folder->write("Songs/listing.txt/inside.txt", "");
    const ChooseSongWindow chooser;
    EXPECT_EQ(list()->rowCount(), 0);
}

TEST_F(ListingTest, LaterChangesOfTheFileHaveNoEffect) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    folder->write("Songs/listing.txt", "Other other.txt");
    chooser.show();
    EXPECT_EQ(list()->rowCount(), 3);
    EXPECT_EQ(play(chooser), "scale.txt ");
}

TEST_F(ChooseSongWindowTest, IsHiddenUntilShown) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    EXPECT_EQ(panel()->isShowing(), 0);
    chooser.show();
    EXPECT_EQ(panel()->isShowing(), 1);
    chooser.hide();
    EXPECT_EQ(panel()->isShowing(), 0);
}

TEST_F(ChooseSongWindowTest, ShowingRaisesItToTheFront) {
    ChooseSongWindow chooser;
    auto* other = new wt::wtWindow("other", {-1.0f, -1.0f}, {2.0f, 2.0f}, 0);
    wt::wtWindowManager::appendWidget(other);
    chooser.show();
    EXPECT_EQ(wt::wtWindowManager::windows().back(), panel());
}

TEST_F(ChooseSongWindowTest, StacksHeadingListChosenLineAndButtonDownward) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    wt::wtWindowManager::displayWidgets();
    const wt::Rect heading = widgets::in<wt::wtStaticText>("Play Song", "song_title")->rect();
    const wt::Rect chosen = widgets::in<wt::wtStaticText>("Play Song", "chosen_song")->rect();
    EXPECT_EQ(widgets::in<wt::wtStaticText>("Play Song", "song_title")->getText(), "Choose your song");
    EXPECT_EQ(playButton()->getText(), "Play");
    EXPECT_GE(heading.y, list()->rect().top());
    EXPECT_GE(list()->rect().y, chosen.top());
    EXPECT_GE(chosen.y, playButton()->rect().top());
}

TEST_F(ChooseSongWindowTest, SelectedRowIsShownAndEmitted) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    selectRow(2);
    EXPECT_EQ(chosenLine(), "echo.txt");
    EXPECT_EQ(play(chooser), "echo.txt ");
}

TEST_F(ChooseSongWindowTest, PlayBeforeAnySelectionEmitsTheFirstSong) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    EXPECT_EQ(chosenLine(), "________");
    EXPECT_EQ(play(chooser), "scale.txt ");
}

TEST_F(ChooseSongWindowTest, PlayWithAnEmptyListDoesNothing) {
    ChooseSongWindow chooser;
    chooser.show();
    EXPECT_EQ(play(chooser), "");
}

TEST_F(ChooseSongWindowTest, SelectionSurvivesHidingAndShowing) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    selectRow(1);
    EXPECT_EQ(play(chooser), "ode.txt ");
    chooser.hide();
    chooser.show();
    EXPECT_EQ(chosenLine(), "ode.txt");
    EXPECT_EQ(play(chooser), "ode.txt ");
}

TEST_F(ChooseSongWindowTest, SlotsRunInTheOrderOfConnection) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    std::vector<std::string> order;
    chooser.connectPlaySong([&order](const std::string& file) {
        order.push_back(file + (panel()->isShowing() != 0 ? " shown" : " hidden"));
    });
    chooser.connectPlaySong(boost::bind(&ChooseSongWindow::hide, &chooser));
    chooser.connectPlaySong([&order](const std::string& file) {
        order.push_back(file + (panel()->isShowing() != 0 ? " shown" : " hidden"));
    });
    wt::wtWindowManager::displayWidgets();
    click(*playButton());
    EXPECT_EQ(order, (std::vector<std::string>{"scale.txt shown", "scale.txt hidden"}));
}

TEST_F(ChooseSongWindowTest, DrawsAPaleBluePanel) {
    ChooseSongWindow chooser;
    chooser.show();
    wt::wtWindowManager::displayWidgets();
    const auto screen = gl.read();
    // Just inside the panel's lower left corner: (0.9, 0.9, 1.0) at an opacity of 0.9 * 0.9 over black.
    const tavi::Vec2<float> corner = panel()->origin();
    const int x = static_cast<int>((corner.x + 1.0f) / 2.0f * screenWidth) + 5;
    const int y = screenHeight - 1 - static_cast<int>((corner.y + 1.0f) / 2.0f * screenHeight) - 5;
    const double opacity = 0.9 * 0.9;
    EXPECT_NEAR(screen.at(x, y, 0), 255 * 0.9 * opacity, 2.0);
    EXPECT_NEAR(screen.at(x, y, 1), 255 * 0.9 * opacity, 2.0);
    EXPECT_NEAR(screen.at(x, y, 2), 255 * opacity, 2.0);
}

}  // namespace
