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

#include "tests/app/GameFixture.h"
#include "tests/support/RecordingGL.h"

namespace {

constexpr int songs = 10000;
constexpr int songsOfTheFirstMinute = 3000;  // a song takes some 20 ms here
constexpr double aHz = 445.3125;             // in the middle of a bin that the test's table calls an A
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

class Soak : public GameFixture {
protected:
    void supply(const std::filesystem::path& data) override {
        GameFixture::supply(data);
        folder->write("Songs/listing.txt", "Short short.txt\n");
        // An A that is asked for, and a slot in which it goes on and is wrong.
        folder->write("Songs/short.txt", "1 1\nA\n");
    }

    void frame() {
        gl.forget();
        fakeglut::state().display();
        fakeclock::advance(frameSeconds - pauseSeconds);
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
        click(*widgets::in<wt::wtButton>("Options", "New Game"));
        frame();
        click(*widgets::in<wt::wtButton>("Play Song", "play_button"));
        Picture judged;
        for (int frames = 1; title()->isShowing() == 0; ++frames) {
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
    sound(aHz, 0.5);
    Picture first;
    int otherSong = 0;
    long residentAfterAMinute = 0;
    int texturesAfterAMinute = 0;
    long filesAfterAMinute = 0;
    // One line for each analysis would be a gigabyte in the end.
    std::fflush(stdout);
    const int output = dup(STDOUT_FILENO);
    ASSERT_NE(std::freopen("/dev/null", "w", stdout), nullptr);
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
    win.reset();
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    EXPECT_GT(first.size(), 5u);
    EXPECT_EQ(otherSong, 0) << "this song looks other than the second one once it is judged";
    EXPECT_LT(residentBytes() - residentAfterAMinute, oneMebibyte);
    EXPECT_EQ(gl.pushed(), 0);
    EXPECT_TRUE(gl.errors().empty()) << gl.errors()[0];
}

}  // namespace
