#include "ui/ChooseSongWindow.h"

#include <boost/bind/bind.hpp>
#include <fstream>
#include <list>

#include "ui/Layout.h"

namespace {

constexpr float panelOpacity = 0.9f;
const char* const listingFile = "Songs/listing.txt";
const char* const nothingChosen = "________";

/// Reads pairs of shown name and file name up to the end or a word without a partner.
std::list<std::string> readListing(std::istream& in, std::vector<std::string>& songFiles) {
    std::list<std::string> names;
    songFiles.clear();
    while (in.good()) {
        std::string name;
        std::string file;
        in >> name >> file;
        if (name.empty() || file.empty()) {
            break;
        }
        names.push_back(name);
        songFiles.push_back(file);
    }
    return names;
}

wt::GridGraphic panelBackground() {
    wt::GridGraphic grid;
    grid.init(1, 1);
    grid.setSizeX(0, 1.0f);
    grid.setSizeY(0, 1.0f);
    wt::Polygon& cell = grid(0, 0);
    cell = wt::Polygon(wt::makeQuad({0.0f, 0.0f}, {1.0f, 1.0f}));
    cell.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
    cell.setColor(wt::Color(tavi::Vec3<float>(0.9f, 0.9f, 1.0f)));
    cell.setAlpha(panelOpacity);
    grid.setBorder(1);
    return grid;
}

}  // namespace

ChooseSongWindow::ChooseSongWindow() {
    window = createSongWindow();
    window->setShowing(0);
}

void ChooseSongWindow::show() {
    window->setShowing(1);
    wt::wtWindowManager::raiseWidget(window, 0);
}

void ChooseSongWindow::hide() {
    window->setShowing(0);
}

boost::signals2::connection ChooseSongWindow::connectPlaySong(const PlaySongSignal::slot_type& slot) {
    return playSongSignal.connect(slot);
}

wt::wtWindow* ChooseSongWindow::createSongWindow() {
    auto* panel = new wt::wtWindow("Play Song", {-0.4f, -0.5f}, {0.8f, 0.9f}, 0);

    auto* list = new wt::wtListBox(panel, "List", {-0.3f, -0.3f}, {0.7f, 0.7f});
    std::ifstream listing(listingFile);
    std::list<std::string> names = readListing(listing, songFiles);
    list->append(names);

    auto* playButton = new wt::wtButton(panel, "play_button", {0.02f, 0.02f}, {-1.0f, -1.0f}, "Play");

    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(playButton, ui::plainAttributes());

    chosenSongText =
        new wt::wtStaticText(panel, "chosen_song", {-0.3f, 0.02f}, {0.6f, 0.1f}, nothingChosen, ui::centred);
    layout->add(chosenSongText, ui::airyAttributes());
    layout->add(list, ui::plainAttributes());
    auto* heading = new wt::wtStaticText(panel, "song_title", {-0.3f, 0.02f}, {0.6f, 0.1f},
                                         "Choose your song", ui::centred);
    layout->add(heading, ui::airyAttributes());
    panel->setLayoutManager(layout);

    panel->setAlpha(panelOpacity);
    panel->setBackground(panelBackground());

    panel->setShowing(0);
    wt::wtWindowManager::appendWidget(panel);
    list->connectItemSelected(
        boost::bind(&ChooseSongWindow::itemSelected, this, boost::placeholders::_1, boost::placeholders::_2));
    panel->setShowing(1);
    playButton->connectButtonPressed(boost::bind(&ChooseSongWindow::playPressed, this));
    return panel;
}

bool ChooseSongWindow::isSong(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < songFiles.size();
}

void ChooseSongWindow::itemSelected(wt::wtListBox*, int index) {
    if (!isSong(index)) {
        return;
    }
    chosenSongText->setText(songFiles[static_cast<std::size_t>(index)]);
    selectedIndex = index;
}

void ChooseSongWindow::playPressed() {
    if (isSong(selectedIndex)) {
        playSongSignal(songFiles[static_cast<std::size_t>(selectedIndex)]);
    }
}
