// Any bytes as the song listing, read by the song chooser itself: its rows are the listing's pairs of words,
// and a row that is clicked is the song that "Play" emits.

#include <boost/bind/bind.hpp>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "tests/fuzz/Input.h"
#include "tests/fuzz/InputFile.h"
#include "tests/support/RecordingGL.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Widgets.h"
#include "ui/ChooseSongWindow.h"

namespace {

constexpr int screenWidth = 640;   // pixels
constexpr int screenHeight = 480;  // pixels

/// The typeface from the working folder, then a folder in which the listing is a file in memory.
struct Place {
    InputFile listing;
    TemporaryFolder* folder;

    Place() : folder((wt::loadDefaults(screenWidth, screenHeight), new TemporaryFolder)) {
        std::filesystem::create_directory("Songs");
        std::filesystem::create_symlink(listing.path(), "Songs/listing.txt");
    }
    ~Place() { delete folder; }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
};

struct Entry {
    std::string name;
    std::string file;
};

std::vector<Entry> plainListing(const std::string& text) {
    std::istringstream in(text);
    std::vector<Entry> entries;
    Entry entry;
    while (in >> entry.name >> entry.file) {
        entries.push_back(entry);
    }
    return entries;
}

widgets::Pixel middleOfRow(const wt::wtListBox& list, int row) {
    const wt::Rect rect = list.rowRect(row);
    const float x = list.origin().x + rect.x + rect.w / 2.0f;
    const float y = list.origin().y + rect.y + rect.h / 2.0f;
    return {static_cast<int>((x + 1.0f) / 2.0f * screenWidth),
            static_cast<int>((1.0f - y) / 2.0f * screenHeight)};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Place place;
    Input input(data, size);
    const int chosen = input.byte();
    const std::string text = input.text(size);
    const std::vector<Entry> entries = plainListing(text);
    place.listing.write(text);

    RecordingGL gl;
    wt::wtWindowManager::init(screenWidth, screenHeight, false);
    ChooseSongWindow chooser;
    std::vector<std::string> played;
    chooser.connectPlaySong([&played](const std::string& file) { played.push_back(file); });
    chooser.show();
    wt::wtWindowManager::displayWidgets();

    const auto* const list = widgets::in<wt::wtListBox>("Play Song", "List");
    require(static_cast<std::size_t>(list->rowCount()) == entries.size(), "every pair is a row");
    for (int row = 0; row < list->rowCount(); ++row) {
        require(list->row(row) == entries[static_cast<std::size_t>(row)].name, "a row shows its song's name");
    }
    std::size_t expected = 0;
    if (list->view().endRow() > list->view().firstRow()) {
        const int row = list->view().firstRow() + chosen % (list->view().endRow() - list->view().firstRow());
        widgets::click(middleOfRow(*list, row));
        require(list->selected() == row, "a click selects its row");
        expected = static_cast<std::size_t>(row);
    }
    const auto* const button = widgets::in<wt::wtButton>("Play Song", "play_button");
    widgets::click(widgets::middle(*button, screenWidth, screenHeight));
    require(played.size() == (entries.empty() ? 0u : 1u), "there is one song to play, or none");
    require(entries.empty() || played[0] == entries[expected].file, "the chosen song is played");
    wt::wtWindowManager::displayWidgets();
    require(gl.errors().empty(), "the chooser makes no OpenGL error");
    require(gl.pushed() == 0, "the chooser leaves nothing pushed");
    wt::wtWindowManager::clear();
    return 0;
}
