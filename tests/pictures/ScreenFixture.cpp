#include "tests/pictures/ScreenFixture.h"

#include <GL/gl.h>

#include <map>

#include "game/Rules.h"

namespace {

constexpr double frameSeconds = 0.03;  // what a slow machine takes
constexpr double pauseSeconds = 0.01;  // of it, what the game sleeps
constexpr double loud = 0.2;           // amplitude of one note
constexpr int framesToSettle = 30;

/// Middles of bins, in Hz, an octave above middle C.
const std::map<char, double> pitches = {{'C', 515.625},   {'D', 585.9375},  {'E', 656.25}, {'F', 703.125},
                                        {'G', 785.15625}, {'A', 878.90625}, {'B', 984.375}};

const char* const noteTable = "C 1 515.6\nD 1 585.9\nE 1 656.2\nF 1 703.1\nG 1 785.2\nA 1 878.9\nB 1 984.4\n";

/// Sixteen slots with notes of all lengths, a chord and rests.
const char* const songText = "120 4\nC\nD\nE2\n\nG\nA\nB\nC\nC E G\n\nA3\n\n\nG\nE\nC2\n";
constexpr double songEndSeconds = 9.4;

/// What sounds from a time of the song on: hits, a wrong note in slot 4, nothing in slot 6.
const std::vector<std::pair<double, std::string>> performance = {
    {-0.3, "C"}, {0.2, ""}, {0.28, "D"}, {0.7, ""}, {0.78, "E"},   {1.7, ""}, {1.78, "F"}, {2.25, ""},
    {2.3, "A"},  {2.7, ""}, {3.3, "C"},  {3.7, ""}, {3.78, "CEG"}, {4.2, ""}, {4.8, "A"},  {6.2, ""},
    {6.3, "G"},  {6.7, ""}, {6.8, "D"},  {7.2, ""}, {7.3, "C"},    {8.2, ""}};

/// Names as they occur: short, long, accented, and too long for any list.
std::string listing(int songs) {
    static const std::vector<std::string> names = {
        "First_notes", "Hänschen_klein", "Frère_Jacques", "Row_row_row_your_Boat",
        "The_very_long_name_of_a_song_that_nobody_remembers_in_full_and_that_fits_no_list_at_all"};
    std::string text;
    for (int i = 0; i < songs; ++i) {
        const std::string& name = names[static_cast<std::size_t>(i) % names.size()];
        text += name + " song" + std::to_string(i) + ".txt\n";
    }
    return text;
}

}  // namespace

const std::vector<std::string>& ScreenFixture::screens() {
    static const std::vector<std::string> names = {"title",        "chooser-few",   "chooser-many",
                                                   "chooser-none", "song-start",    "song-middle",
                                                   "song-end",     "panel-silence", "panel-chord"};
    return names;
}

void ScreenFixture::supply(const std::filesystem::path& data) {
    WinFixture::supply(data);
    folder->write("notes.txt", noteTable);
    folder->write("Songs/pictures.txt", songText);
    folder->write("Songs/listing.txt", listing(songs));
}

void ScreenFixture::show(const std::string& screen) {
    songs = screen == "chooser-few" ? 3 : screen == "chooser-many" ? 24 : 0;
    WinFixture::SetUp();
    ASSERT_NE(win, nullptr);

    if (screen == "song-start") {
        song(-1.0);
    } else if (screen == "song-middle") {
        song(4.1);
    } else if (screen == "song-end") {
        song(songEndSeconds);
    } else if (screen.rfind("panel-", 0) == 0) {
        spectrumPanel(screen == "panel-chord");
    } else if (screen != "title") {
        openChooser();
    }
    resize(screenWidth, screenHeight);
    constexpr int framesToLook = 2;
    frames(framesToLook);
}

void ScreenFixture::openChooser() {
    frame();
    click(*widgets::in<wt::wtButton>("Options", "New Game"));
    frame();
    if (songs > 0) {
        const auto* list = widgets::in<wt::wtListBox>("Play Song", "List");
        widgets::click(widgets::inRow(*list, 1, 1.0f / 3.0f, screenWidth, screenHeight));
    }
    frames(framesToSettle);
}

void ScreenFixture::song(double seconds) {
    startSong();
    auto turn = performance.begin();
    for (double now = -rules::leadInSeconds; now < seconds; now += frameSeconds) {
        for (; turn != performance.end() && turn->first <= now; ++turn) {
            hear(turn->second);
        }
        frame();
        fakeclock::advance(frameSeconds - pauseSeconds);
    }
}

void ScreenFixture::startSong() {
    resize(64, 48);  // frames that are quick, until the next one is to be looked at
    win->playSong("pictures.txt");
}

void ScreenFixture::spectrumPanel(bool chord) {
    startSong();
    fakeglut::state().keyboard('f', 0, 0);
    hear(chord ? "CEG" : "");
    frames(framesToSettle);
}

void ScreenFixture::resize(int width, int height) {
    fakeglut::state().width = width;
    fakeglut::state().height = height;
    fakeglut::state().reshape(width, height);
    // Clearing knows no viewport.
    glEnable(GL_SCISSOR_TEST);
    glScissor(0, 0, width, height);
}

void ScreenFixture::hear(const std::string& notes) {
    if (notes == sounding) {
        return;
    }
    sounding = notes;
    std::vector<double> hertz;
    for (const char note : notes) {
        hertz.push_back(pitches.at(note));
    }
    sound(hertz, loud);
}
