#include "ui/MainWindow.h"

#include <array>
#include <boost/bind/bind.hpp>
#include <cstdlib>
#include <vector>

#include "platform/timage/Image.h"
#include "ui/Layout.h"

namespace {

constexpr float windowOpacity = 0.8f;
constexpr int exitStatus = 1;
constexpr float frameThickness = 0.05f;  // screen units
constexpr float pictureExtent = 0.8f;    // screen units before it stretches
constexpr int gridCells = 3;
const char* const titlePicture = "Images/title.png";

/// Windows created from here on are 80 % opaque and throw no shadow.
void setWindowDefaults() {
    wt::wtDefaults::Window::alpha = windowOpacity;
    wt::wtDefaults::Window::shadowOffsY = 0.0f;
    wt::wtDefaults::Window::shadowOffsX = 0.0f;
    wt::wtDefaults::Window::shadow_bg = wt::GridGraphic(1, 1);
    wt::wtDefaults::Window::shadow_bg(0, 0).setAlpha(0.0f);
}

/// The title picture in a frame of eight solid cells. A picture that cannot be read leaves the centre plain.
wt::GridGraphic titleBackground() {
    tavi::Image<unsigned char> picture(0, 0, 0);
    picture.read(titlePicture);

    // The picture's rows run from the top down, so v is turned over.
    const std::vector<tavi::Vec2<float>> textureCoords = {
        {0.0f, 1.0f}, {1.0f, 1.0f}, {1.0f, 0.0f}, {0.0f, 0.0f}};

    wt::GridGraphic grid;
    grid.init(gridCells, gridCells);
    constexpr std::array<float, gridCells> fixedOrStretching = {1.0f, 0.0f, 1.0f};
    for (int i = 0; i < gridCells; ++i) {
        grid.setSizeX(i, fixedOrStretching[static_cast<std::size_t>(i)]);
        grid.setSizeY(i, fixedOrStretching[static_cast<std::size_t>(i)]);
    }

    constexpr std::array<float, gridCells> extents = {frameThickness, pictureExtent, frameThickness};
    for (std::size_t i = 0; i < gridCells; ++i) {
        for (std::size_t j = 0; j < gridCells; ++j) {
            wt::Polygon& cell = grid(static_cast<int>(i), static_cast<int>(j));
            cell = wt::Polygon(wt::makeQuad({0.0f, 0.0f}, {extents[i], extents[j]}));
            cell.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
        }
    }

    wt::Polygon centre(wt::makeQuad({0.0f, 0.0f}, {pictureExtent, pictureExtent}));
    centre.setTexture(picture, 0);
    centre.setTextureCoords(textureCoords, 0);
    grid(1, 1) = centre;
    return grid;
}

/// Not std::exit itself: some compilers refuse a function that never returns as a slot.
void leave() {
    std::exit(exitStatus);
}

}  // namespace

MainWindow::MainWindow() {
    window = createMainWindow();
}

void MainWindow::show() {
    window->setShowing(1);
}

void MainWindow::hide() {
    window->setShowing(0);
}

boost::signals2::connection MainWindow::connectNewGameSignal(const boost::function<void()>& slot) {
    return newGameButton->connectButtonPressed(slot);
}

wt::wtWindow* MainWindow::createMainWindow() {
    setWindowDefaults();

    auto* title = new wt::wtWindow("Options", {-0.6f, -0.5f}, {1.0f, 0.85f}, 0);
    newGameButton = new wt::wtButton(title, "New Game", {0.02f, 0.02f}, {-1.0f, -1.0f}, "New Game");
    auto* exitButton = new wt::wtButton(title, "Exit", {0.02f, 0.15f}, {-1.0f, -1.0f}, "Exit");

    // The layout stacks upward: "Exit" below, "New Game" above.
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(exitButton, ui::plainAttributes());
    layout->add(newGameButton, ui::plainAttributes());
    title->setLayoutManager(layout);

    exitButton->connectButtonPressed(boost::bind(&leave));
    newGameButton->connectButtonPressed(boost::bind(&wt::wtWindow::setShowing, title, false));

    title->setBackground(titleBackground());
    title->recomputeMinSize();
    title->resize(1.0f, 1.0f);
    title->maximize();
    wt::wtWindowManager::appendWidget(title);
    return title;
}
