#pragma once

#include <boost/signals2/connection.hpp>

#include "platform/wt/wt.h"

/// The title screen: a toolkit window over the whole screen with the title picture and the buttons
/// "New Game" and "Exit". The toolkit's window manager owns the window; this only points at it. Must be
/// created before every other toolkit window, because it sets the defaults that they are built with.
/// GLUT thread only.
///
///     MainWindow menu;
///     menu.connectNewGameSignal(boost::bind(&ChooseSongWindow::show, chooser));
class MainWindow {
public:
    /// Builds the window and leaves it showing. Needs a GL context for the title picture's texture.
    MainWindow();

    void show();
    void hide();

    /// Calls `slot` when "New Game" is pressed, after the title screen has hidden itself.
    boost::signals2::connection connectNewGameSignal(const boost::function<void()>& slot);

private:
    wt::wtWindow* createMainWindow();

    wt::wtWindow* window = nullptr;
    wt::wtButton* newGameButton = nullptr;
};
