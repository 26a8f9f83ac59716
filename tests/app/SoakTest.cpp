// Ten thousand songs without a pause: the window, its menus and its rules, with doubles for screen, clock and
// microphone, so that hours of play take minutes. Label "long".

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include "app/Win.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/RecordingGL.h"
#include "tests/support/ScriptedAudioInput.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Widgets.h"

namespace {

constexpr int songs = 10000;
constexpr int songsOfTheFirstMinute = 3000;  // a song takes some 20 ms here
constexpr int width = 640;                   // pixels
constexpr int height = 480;
constexpr double aHz = 445.3125;  // in the middle of a bin that the test's table calls an A
constexpr double frameSeconds = 0.05;
constexpr double pauseSeconds = 0.01;  // of which each frame sleeps this much
constexpr long oneMebibyte = 1 << 20;  // bytes

long residentBytes() {
    std::ifstream in("/proc/self/statm");
    long total = 0;
    long resident = 0;
    in >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

long openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

/// What stands in a picture, without where its glyphs lie in the texture.
using Picture = std::vector<std::pair<RecordingGL::Point, RecordingGL::Color>>;

class Soak : public testing::Test {
protected:
    void SetUp() override {
        fakeclock::set(43200000000);
        fakeglut::reset(width, height);
        scriptedaudio::reset();
    }
    void TearDown() override { wt::wtWindowManager::clear(); }

    void frame() {
        gl.forget();
        fakeglut::state().display();
        fakeclock::advance(frameSeconds - pauseSeconds);
    }

    static void click(const char* window, const char* button) {
        const auto at = widgets::middle(*widgets::in<wt::wtButton>(window, button), width, height);
        fakeglut::state().passive(at.x, at.y);
        fakeglut::state().mouse(0, 0, at.x, at.y);
        fakeglut::state().mouse(0, 1, at.x, at.y);
    }

    Picture picture() const {
        Picture corners;
        for (const auto& primitive : gl.primitives()) {
            for (const auto& vertex : primitive.vertices) {
                corners.emplace_back(vertex.at, vertex.color);
            }
        }
        return corners;
    }

    /// Picks the song from the menus and plays it to its end; gives the picture once all of it is judged.
    Picture playOne() {
        constexpr int allIsJudged = 70;  // frames: one and a half seconds after the song's first slot
        frame();
        click("Options", "New Game");
        frame();
        click("Play Song", "play_button");
        Picture judged;
        for (int frames = 1; widgets::window("Options")->isShowing() == 0; ++frames) {
            frame();
            if (frames == allIsJudged) {
                judged = picture();
            }
        }
        return judged;
    }

    RecordingGL gl;
};

TEST_F(Soak, TenThousandSongsTakeNoMoreThanOne) {
    const std::filesystem::path data = std::filesystem::current_path();
    const TemporaryFolder folder;
    for (const char* name : {"Fonts", "Images"}) {
        std::filesystem::create_directory_symlink(data / name, folder.path() / name);
    }
    folder.write("notes.txt", "A 2 433.6 445.3\n");
    folder.write("Songs/listing.txt", "Short short.txt\n");
    // An A that is asked for, and a slot in which it goes on and is wrong.
    folder.write("Songs/short.txt", "1 1\nA\n");
    const auto audio = scriptedaudio::recording();
    scriptedaudio::speak(*audio, scriptedaudio::tone(aHz, 0.5, 0.5));
    Picture first;
    int otherSong = 0;
    long residentAfterAMinute = 0;
    int texturesAfterAMinute = 0;
    long filesAfterAMinute = 0;
    // One line for each analysis would be a gigabyte in the end.
    std::fflush(stdout);
    const int output = dup(STDOUT_FILENO);
    ASSERT_NE(std::freopen("/dev/null", "w", stdout), nullptr);
    {
        Win win(audio);
        for (int song = 1; song <= songs && otherSong == 0; ++song) {
            const Picture last = playOne();
            if (song == 2) {
                // The very first song has frames of another length: nothing was measured yet.
                first = last;
            } else if (song > 2 && last != first) {
                otherSong = song;
            }
            if (song == songsOfTheFirstMinute) {
                residentAfterAMinute = residentBytes();
                texturesAfterAMinute = gl.textures();
                filesAfterAMinute = openFiles();
            }
        }
        EXPECT_EQ(gl.textures(), texturesAfterAMinute);
        EXPECT_EQ(openFiles(), filesAfterAMinute);
    }
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    EXPECT_GT(first.size(), 5u);
    EXPECT_EQ(otherSong, 0) << "this song looks other than the second one once it is judged";
    EXPECT_LT(residentBytes() - residentAfterAMinute, oneMebibyte);
    EXPECT_EQ(gl.pushed(), 0);
    EXPECT_TRUE(gl.errors().empty()) << gl.errors()[0];
}

}  // namespace
