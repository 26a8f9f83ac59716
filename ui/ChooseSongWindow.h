#pragma once

#include <boost/function.hpp>
#include <boost/signals2/signal.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/wt/wt.h"

/// The panel on which the player picks a song: the names of the song listing in a list box, the file name of
/// the highlighted one below it, and a "Play" button. The toolkit's window manager owns the window; this only
/// points at it. GLUT thread only.
///
///     ChooseSongWindow chooser;
///     chooser.connectPlaySong(boost::bind(&Win::playSong, win, boost::placeholders::_1));
///     chooser.show();
class ChooseSongWindow {
public:
    using PlaySongSignal = boost::signals2::signal<void(const std::string&)>;

    /// Reads "Songs/listing.txt", once, and builds the panel, hidden. A listing that cannot be read gives an
    /// empty list.
    ChooseSongWindow();

    /// Shows the panel in front of every other window.
    void show();
    void hide();

    /// Calls `slot` with the file name of the highlighted song (of the first one before any was highlighted)
    /// when "Play" is pressed. Does nothing without such a song. Slots run in the order of connection.
    boost::signals2::connection connectPlaySong(const PlaySongSignal::slot_type& slot);

private:
    wt::wtWindow* createSongWindow();
    void itemSelected(wt::wtListBox* list, int index);
    void playPressed();
    bool isSong(int index) const;

    wt::wtStaticText* chosenSongText = nullptr;
    wt::wtWindow* window = nullptr;
    std::vector<std::string> songFiles;  ///< one a row of the list box, in its order
    std::int32_t selectedIndex = 0;
    PlaySongSignal playSongSignal;
};
