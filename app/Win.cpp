#include "app/Win.h"

#include <GL/glut.h>
#include <unistd.h>

#include <boost/bind/bind.hpp>
#include <boost/make_shared.hpp>
#include <chrono>
#include <cstdio>
#include <iostream>
#include <utility>
#include <vector>

#include "app/glewInit.h"
#include "game/Rules.h"
#include "platform/settings/Settings.h"
#include "platform/wt/wt.h"
#include "scene/Globals.h"
#include "ui/ChooseSongWindow.h"
#include "ui/FrequencyWindow.h"
#include "ui/MainWindow.h"

namespace {

constexpr int windowWidth = 640;   // pixels
constexpr int windowHeight = 480;  // pixels
constexpr float scoreX = -5.5f;    // world units
constexpr float scoreY = -4.0f;    // world units
constexpr float scoreScale = 0.8f;

constexpr unsigned int framePauseMicroseconds = 10000;
constexpr double firstFrameIntervalSeconds = 0.02;
constexpr int framesPerMeasurement = 10;

const char* const songFolder = "Songs/";

}  // namespace

Win::Win(boost::shared_ptr<AudioInput> input)
    : GLWindow(windowWidth, windowHeight),
      audioInput(std::move(input)),
      frameInterval(firstFrameIntervalSeconds),
      score(scoreX, scoreY) {
    glewInit();
    font = Globals::getInstance().getDefaultFont();
    score.setFont(font, scoreScale);
    songWatch.reset();

    std::puts("Win::Win() initing wt");
    wt::wtWindowManager::init(width(), height(), false);
    wt::loadDefaults(width(), height());

    // The main menu comes first: it sets the toolkit's defaults that the other two are built with.
    mainWindow = boost::make_shared<MainWindow>();
    frequencyWindow = boost::make_shared<FrequencyWindow>();
    frequencyWindow->hide();
    chooseSongWindow = boost::make_shared<ChooseSongWindow>();

    chooseSongWindow->connectPlaySong(boost::bind(&Win::playSong, this, boost::placeholders::_1));
    chooseSongWindow->connectPlaySong(boost::bind(&ChooseSongWindow::hide, chooseSongWindow.get()));
    mainWindow->connectNewGameSignal(boost::bind(&ChooseSongWindow::show, chooseSongWindow.get()));

    if (settings::choice("ZANTO_SPECTRUM", {"0", "1"}) == 1) {
        frequencyWindow->show();
    }
}

Win::~Win() = default;

void Win::playSong(const std::string& name) {
    if (mainWindow) {
        mainWindow->hide();
    }
    songPath = songFolder + name;
    if (!start()) {
        std::cerr << "Cannot load song:" << songPath << std::endl;
    }
}

bool Win::start() {
    const bool isWhole = song.load(songPath.c_str());
    songWatch.reset();
    score.reset();
    playing = true;
    return isWhole;
}

bool Win::keyboard(unsigned char key, int, int) {
    switch (key) {
        case 'f':
            frequencyWindow->show();
            return true;
        case 'r':
            start();
            return true;
        default:
            return false;
    }
}

int Win::mouse(int button, bool down, int x, int y) {
    wt::wtWindowManager::mouseCallback(button, down ? GLUT_DOWN : GLUT_UP, x, y);
    return 1;
}

void Win::motion(int x, int y) {
    wt::wtWindowManager::motionCallback(x, y);
}

double Win::songTime() const {
    return songWatch - rules::leadInSeconds;
}

void Win::analyse() {
    noteEstimation.update(audioInput->getRingBuffer(), frameInterval);
}

void Win::tend() {
    const std::chrono::duration<double> now = std::chrono::steady_clock::now().time_since_epoch();
    audioInput->tend(now.count());
}

void Win::drawScene() {
    glDisable(GL_TEXTURE_2D);
    drawSignal();
    drawNotes();
    usleep(framePauseMicroseconds);
    refresh();

    if (playing) {
        drawPlay();
    }
    score.draw();
    measureFrame();

    // Taken now, because the song may end below: a playing frame has already been analysed.
    const bool analysed = playing;
    if (playing) {
        goOn();
    }
    if (frequencyWindow && frequencyWindow->isShowing()) {
        if (!analysed) {
            analyse();
        }
        showSpectrum();
    }
    wt::wtWindowManager::displayWidgets();
    wt::wtWindowManager::animate();
}

void Win::measureFrame() {
    ++frameCount;
    if (frameCount % framesPerMeasurement == 0) {
        frameInterval = frameWatch / static_cast<double>(framesPerMeasurement);
        frameWatch.reset();
    }
}

void Win::goOn() {
    song.animate(frameInterval);
    score.animate(frameInterval);
    if (song.complete(songTime())) {
        playing = false;
        mainWindow->show();
    }
}

void Win::showSpectrum() {
    const std::vector<double>& spectrum = noteEstimation.getPowerSpectrum();
    std::vector<double> frequencies(spectrum.size());
    for (std::size_t bin = 0; bin < frequencies.size(); ++bin) {
        frequencies[bin] = static_cast<double>(noteEstimation.indexToFrequency(static_cast<int>(bin)));
    }
    frequencyWindow->setSignal(frequencies, spectrum, noteEstimation.getCandidatePeaks(),
                               static_cast<double>(noteEstimation.getMinDecibel()));
}
