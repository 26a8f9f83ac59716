#include "ui/ChooseSongWindow.h"

#include <boost/bind/bind.hpp>
#include <filesystem>
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
        DrawnStage::click(onRow(*list(), row));
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

    static std::vector<std::string> rows() {
        std::vector<std::string> names;
        for (int row = 0; row < list()->rowCount(); ++row) {
            names.push_back(list()->row(row));
        }
        return names;
    }

    std::unique_ptr<TemporaryFolder> folder;
};

TEST_F(ChooseSongWindowTest, PairsOfWordsBecomeRowsWhateverTheLines) {
    for (const char* const listing : {threeSongs, "Scale scale.txt\r\nOde ode.txt\r\nEcho echo.txt\r\n",
                                      "Scale scale.txt Ode ode.txt Echo echo.txt Odd"}) {
        folder->write("Songs/listing.txt", listing);
        ChooseSongWindow chooser;
        folder->write("Songs/listing.txt", "Later too_late.txt");
        EXPECT_EQ(rows(), (std::vector<std::string>{"Scale", "Ode", "Echo"}));
        chooser.show();
        EXPECT_EQ(chosenLine(), "________");
        EXPECT_EQ(play(chooser), "scale.txt ") << "the first before any selection";
        wt::wtWindowManager::clear();
    }
}

TEST_F(ChooseSongWindowTest, MissingEmptyOrUnreadableListingGivesAnEmptyListSilently) {
    for (const char* const file : {"Songs/other.txt", "Songs/listing.txt", "Songs/listing.txt/inside.txt"}) {
        std::filesystem::remove_all("Songs/listing.txt");
        folder->write(file, "\n  \n");
        testing::internal::CaptureStderr();
        testing::internal::CaptureStdout();
        ChooseSongWindow chooser;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(list()->rowCount(), 0);
        EXPECT_EQ(chosenLine(), "________");
        chooser.show();
        EXPECT_EQ(play(chooser), "");
        wt::wtWindowManager::clear();
    }
}

TEST_F(ChooseSongWindowTest, IsHiddenUntilShownAtTheFront) {
    ChooseSongWindow chooser;
    window("other", {-1.0f, -1.0f, 2.0f, 2.0f});
    EXPECT_EQ(panel()->isShowing(), 0);
    chooser.show();
    EXPECT_EQ(panel()->isShowing(), 1);
    EXPECT_EQ(wt::wtWindowManager::windows().back(), panel());
    chooser.hide();
    EXPECT_EQ(panel()->isShowing(), 0);
}

TEST_F(ChooseSongWindowTest, SelectedRowIsShownAndEmittedAlsoAfterHidingAndShowing) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    selectRow(1);
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(chosenLine(), "ode.txt");
        EXPECT_EQ(play(chooser), "ode.txt ");
        chooser.hide();
        chooser.show();
    }
}

TEST_F(ChooseSongWindowTest, SlotsRunInTheOrderOfConnection) {
    folder->write("Songs/listing.txt", threeSongs);
    ChooseSongWindow chooser;
    chooser.show();
    std::vector<std::string> order;
    const auto noteDown = [&order](const std::string& file) {
        order.push_back(file + (panel()->isShowing() != 0 ? " shown" : " hidden"));
    };
    chooser.connectPlaySong(noteDown);
    chooser.connectPlaySong(boost::bind(&ChooseSongWindow::hide, &chooser));
    chooser.connectPlaySong(noteDown);
    wt::wtWindowManager::displayWidgets();
    click(*playButton());
    EXPECT_EQ(order, (std::vector<std::string>{"scale.txt shown", "scale.txt hidden"}));
}

TEST_F(ChooseSongWindowTest, ItsSlotsEndWithIt) {
    auto chooser = std::make_unique<ChooseSongWindow>();
    const auto held = std::make_shared<int>();
    const auto connection = chooser->connectPlaySong([held](const std::string&) {});
    EXPECT_EQ(held.use_count(), 2);
    chooser.reset();
    EXPECT_FALSE(connection.connected());
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(ChooseSongWindowTest, StandsInTheMiddleAndItsTextLinesHaveTwiceTheAir) {
    constexpr float pixel = 2.0f / screenHeight;
    ChooseSongWindow chooser;
    chooser.show();
    wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    const wt::Rect rect = panel()->rect();
    expectPanelsPlace(rect);
    EXPECT_EQ(widgets::in<wt::wtStaticText>("Play Song", "song_title")->getText(), "Choose your song");
    EXPECT_EQ(playButton()->getText(), "Play");
    const wt::Rect heading = widgets::in<wt::wtStaticText>("Play Song", "song_title")->rect();
    const wt::Rect chosen = widgets::in<wt::wtStaticText>("Play Song", "chosen_song")->rect();
    EXPECT_NEAR(heading.y - list()->rect().top(), 0.01f + 0.02f, 2 * pixel);
    EXPECT_NEAR(list()->rect().y - chosen.top(), 0.01f + 0.02f, 2 * pixel);
    EXPECT_NEAR(chosen.y - playButton()->rect().top(), 0.02f + 0.01f, 2 * pixel);
    EXPECT_NEAR(list()->rect().x, rect.w - list()->rect().right(), 2 * pixel);
}

TEST_F(ChooseSongWindowTest, DrawsAPaleBluePanel) {
    ChooseSongWindow chooser;
    chooser.show();
    draw();
    // Just inside the panel's lower left corner: (0.9, 0.9, 1.0) at an opacity of 0.9 * 0.9 over black.
    expectColor(pixel(on(*panel(), 0.02f, 0.02f)), {186, 186, 207});
}

}  // namespace
