#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

#include "analysis/NoteEstimation.h"
#include "app/GLWindow.h"
#include "app/StopWatch.h"
#include "audio/AudioInput.h"
#include "game/Score.h"
#include "game/Song.h"
#include "scene/FFont.h"

class ChooseSongWindow;
class FrequencyWindow;
class MainWindow;

/// The game: the window that owns the note estimator, the current song, the score, the menus and the clocks,
/// and runs one frame of all of them from `drawScene()`. It lives on the stack of `main`, on the thread that
/// runs GLUT's main loop; the audio input's ring buffer is all that it shares with another thread.
///
///     Win window(audioInput);
///     window.playSong("ode.txt");
///     window.loop(true);
class Win : public GLWindow {
public:
    /// Opens the window with the title menu showing. `audioInput` must not be empty.
    explicit Win(boost::shared_ptr<AudioInput> audioInput);
    ~Win() override;

    /// Starts the song file `name` of the song folder. One that cannot be loaded is reported on standard
    /// error and played as far as it was read.
    void playSong(const std::string& name);

    /// "f" opens the spectrum panel, "r" starts the current song again; other keys do nothing.
    bool keyboard(unsigned char key, int x, int y) override;

    /// The mouse belongs to the menus; the camera stays where it is.
    int mouse(int button, bool down, int x, int y) override;
    void motion(int x, int y) override;

    /// One frame of the game, drawn in the camera's world.
    void drawScene() override;

    /// Keeps the audio input alive.
    void tend() override;

private:
    /// Starts the song file `songPath` from its beginning. False when it could not be loaded to its end: what
    /// comes before the fault is played.
    bool start();
    void drawSignal();
    void drawNotes();
    void drawPlay();
    void analyse();
    void measureFrame();
    /// Animates song and score; at the song's end shows the menu.
    void goOn();
    void showSpectrum();
    double songTime() const;

    NoteEstimation noteEstimation;
    boost::shared_ptr<AudioInput> audioInput;
    FFont font{nullptr, 0};
    Song song;
    std::string songPath;
    tavi::StopWatch songWatch{true};
    tavi::StopWatch frameWatch{true};
    double frameInterval;  ///< average seconds per frame
    Score score;
    int frameCount = 0;
    bool playing = false;
    boost::shared_ptr<MainWindow> mainWindow;
    boost::shared_ptr<ChooseSongWindow> chooseSongWindow;
    boost::shared_ptr<FrequencyWindow> frequencyWindow;
};
