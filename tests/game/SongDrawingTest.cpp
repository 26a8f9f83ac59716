#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "tests/game/SongFixture.h"
#include "tests/support/GameCamera.h"
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

constexpr std::size_t staffLines = 5;

using Line = RecordingGL::Line;
using Lines = std::vector<Line>;

/// Matches a line by its ends, grey level and width.
MATCHER_P4(LineIs, from, to, grey, width, "") {
    return arg.from == from && arg.to == to && arg.color == RecordingGL::Color{grey, grey, grey, 1.0f} &&
           arg.width == width;
}

/// A point of the track as floats give it.
RecordingGL::Point at(float x, float y) {
    return {static_cast<double>(x), static_cast<double>(y), 0.0};
}

float row(int note) {
    return static_cast<float>(2.0 * note / 7.0);
}

/// Whether the current matrices bring the point (x, y, 0) between all sides of the view.
bool isInView(double x, double y) {
    double projection[16] = {};
    double modelview[16] = {};
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    double clip[4] = {};
    for (int k = 0; k < 4; ++k) {
        double const eye = modelview[k] * x + modelview[4 + k] * y + modelview[12 + k];
        for (int coordinate = 0; coordinate < 4; ++coordinate) {
            clip[coordinate] += projection[4 * k + coordinate] * eye;
        }
    }
    return std::abs(clip[0]) <= clip[3] && std::abs(clip[1]) <= clip[3];
}

/// The slots of which the lowest or the highest row is in view, when slot `middle` is the current one.
std::set<int> slotsInView(int middle) {
    constexpr int farthest = 60;  // more than any of the cameras here sees to either side
    std::set<int> slots;
    for (int slot = middle - farthest; slot <= middle + farthest; ++slot) {
        if (isInView(slot - middle, static_cast<double>(row(0))) ||
            isInView(slot - middle, static_cast<double>(row(6)))) {
            slots.insert(slot);
        }
    }
    return slots;
}

class SongDrawingTest : public SongFixture {
protected:
    SongDrawingTest() { lookThroughGameCamera(4.0 / 3.0); }

    void play(std::string const& lines) { ASSERT_TRUE(load("1 1\n" + lines)) << errors; }

    /// One frame at song time `t`.
    void draw(double t) {
        gl.forget();
        glPushMatrix();
        song.draw(t);
        glPopMatrix();
    }
    /// The lines of one frame behind those of the staff.
    Lines drawn(double t = 0.0) {
        draw(t);
        Lines lines = gl.lines();
        lines.erase(lines.begin(),
                    lines.begin() + static_cast<std::ptrdiff_t>(std::min(staffLines, lines.size())));
        return lines;
    }
    /// The same without the bar lines.
    Lines marks(double t = 0.0) {
        Lines result;
        for (Line const& line : drawn(t)) {
            if (line.width != 1.0f) {
                result.push_back(line);
            }
        }
        return result;
    }
    void hit(std::vector<Notes::NoteID> const& notes, double t = 0.0) {
        song.updateScore(score, t, holding(notes, 10.0f));
    }

    RecordingGL gl;
    RecordingFont recorded;
};

TEST_F(SongDrawingTest, ASongWithoutSlotsIsTheStaffUpToItsStartAndTheScene) {
    draw(0.0);
    EXPECT_THAT(gl.lines(), ElementsAre(LineIs(at(-0.5f, 0.0f), at(100.0f, 0.0f), 0.1f, 1.0f),
                                        LineIs(at(-0.5f, row(2)), at(0.0f, row(2)), 1.0f, 1.0f),
                                        LineIs(at(-0.5f, row(4)), at(0.0f, row(4)), 1.0f, 1.0f),
                                        LineIs(at(-0.5f, row(6)), at(0.0f, row(6)), 1.0f, 1.0f),
                                        LineIs(at(-0.5f, row(8)), at(0.0f, row(8)), 1.0f, 1.0f)));
    EXPECT_THAT(recorded.texts(), IsEmpty());

    play("C");
    hit({noteC});
    CapturedErrors const captured;
    song.load("nowhere");
    draw(0.0);
    EXPECT_THAT(gl.lines(), SizeIs(staffLines));
    EXPECT_THAT(recorded.texts(), SizeIs(1));
}

TEST_F(SongDrawingTest, TheStaffRunsToTwiceTheSongsLengthAndItsDarkLineTo100) {
    play(std::string(149, '\n'));
    draw(0.0);
    Lines const lines = gl.lines();
    EXPECT_THAT(lines[0], LineIs(at(-0.5f, 0.0f), at(100.0f, 0.0f), 0.1f, 1.0f));
    EXPECT_THAT(lines[1], LineIs(at(-0.5f, row(2)), at(300.0f, row(2)), 1.0f, 1.0f));
    EXPECT_THAT(lines[4], LineIs(at(-0.5f, row(8)), at(300.0f, row(8)), 1.0f, 1.0f));
}

TEST_F(SongDrawingTest, TheCurrentTimeLiesAtXZero) {
    play("C\nD");
    draw(0.0);
    Lines eye = gl.lines(RecordingGL::Space::eye);
    EXPECT_NEAR((eye[6].from.x + eye[6].to.x) / 2.0, 0.0, 1e-6);  // slot 0, behind its bar line
    draw(0.5);
    eye = gl.lines(RecordingGL::Space::eye);
    EXPECT_NEAR((eye[7].from.x + eye[7].to.x) / 2.0, 0.0, 1e-6);  // slot 1
    draw(-2.0);
    eye = gl.lines(RecordingGL::Space::eye);
    EXPECT_NEAR((eye[6].from.x + eye[6].to.x) / 2.0, 4.0, 1e-6);
}

TEST_F(SongDrawingTest, LeavesTheTrackTranslatedForItsCaller) {
    song.draw(1.25);
    EXPECT_EQ(gl.modelview()[12], -2.5);
    EXPECT_EQ(gl.pushed(), 0);
}

TEST_F(SongDrawingTest, BarLinesStandBeforeEveryFourthSlot) {
    play(std::string(8, '\n'));
    EXPECT_THAT(drawn(2.0), ElementsAre(LineIs(at(-0.5f, 0.5714286f), at(-0.5f, 2.5f), 1.0f, 1.0f),
                                        LineIs(at(3.5f, 0.5714286f), at(3.5f, 2.5f), 1.0f, 1.0f),
                                        LineIs(at(7.5f, 0.5714286f), at(7.5f, 2.5f), 1.0f, 1.0f)));
}

TEST_F(SongDrawingTest, ANoteIsAWhiteLineOnItsRow) {
    play("\nC D E F G A B");
    Lines const lines = marks();
    ASSERT_THAT(lines, SizeIs(7));
    for (int note = 0; note < 7; ++note) {
        EXPECT_THAT(lines[static_cast<std::size_t>(note)],
                    LineIs(at(1.0f - 0.4f, row(note)), at(1.0f + 0.4f, row(note)), 1.0f, 5.0f));
    }
}

TEST_F(SongDrawingTest, ALongNoteSpansItsSlots) {
    play("\n\nD3");
    EXPECT_THAT(marks(), ElementsAre(LineIs(at(1.6f, row(1)), at(4.4f, row(1)), 1.0f, 5.0f)));
}

TEST_F(SongDrawingTest, ANegativeLengthReachesBack) {
    play("\n\n\n\n\nG-2");
    EXPECT_THAT(marks(), ElementsAre(LineIs(at(4.6f, row(4)), at(2.0f + 0.4f, row(4)), 1.0f, 5.0f)));
}

TEST_F(SongDrawingTest, TheLowestLengthDoesNotOverflow) {
    play("G-2147483648");
    EXPECT_THAT(marks(), ElementsAre(LineIs(at(-0.4f, row(4)), at(-2147483648.0f, row(4)), 1.0f, 5.0f)));
}

TEST_F(SongDrawingTest, AHitNoteIsThinAndFadesToBlackInTenFrames) {
    play("G");
    hit({noteG});
    float grey = 1.0f;
    for (int frame = 1; frame <= 12; ++frame) {
        grey = frame < 10 ? static_cast<float>(static_cast<double>(grey) - 0.1) : 0.0f;
        EXPECT_NEAR(grey, std::max(0.0, 1.0 - 0.1 * frame), 1e-6);
        EXPECT_THAT(marks(), ElementsAre(LineIs(at(-0.4f, row(4)), at(0.4f, row(4)), grey, 3.0f)))
            << "frame " << frame;
    }
}

TEST_F(SongDrawingTest, AHitNoteFadesOutOfSightToo) {
    play("G" + std::string(999, '\n'));
    hit({noteG});
    for (int frame = 0; frame < 4; ++frame) {
        draw(450.0);
    }
    EXPECT_NEAR(song.getSlots()[0][0].brightness, 0.6f, 1e-6f);
    EXPECT_NEAR(marks(0.0).at(0).color[0], 0.5f, 1e-6f);
}

TEST_F(SongDrawingTest, APenaltyIsAWhiteCrossThatDoesNotFade) {
    play("\n\n\n\n\n");
    song.updateScore(score, 2.5, holding({noteE}, 0.4f));
    double const x = 5.0;
    auto const y = static_cast<double>(row(2));
    for (int frame = 0; frame < 12; ++frame) {
        EXPECT_THAT(marks(2.5), ElementsAre(LineIs(RecordingGL::Point{x - 0.1, y - 0.1, 0.0},
                                                   RecordingGL::Point{x + 0.1, y + 0.1, 0.0}, 1.0f, 3.0f),
                                            LineIs(RecordingGL::Point{x - 0.1, y + 0.1, 0.0},
                                                   RecordingGL::Point{x + 0.1, y - 0.1, 0.0}, 1.0f, 3.0f)));
    }
}

TEST_F(SongDrawingTest, LaterMarksAreDrawnOverEarlierOnes) {
    play("C3\nC\n\n\nE C");
    hit({noteC});
    std::vector<float> widths;
    for (Line const& line : drawn()) {
        widths.push_back(line.width);
    }
    // A bar, the C of slot 0, that of slot 1, a bar, the two notes of slot 4.
    EXPECT_THAT(widths, ElementsAre(1.0f, 3.0f, 5.0f, 1.0f, 5.0f, 5.0f));
}

TEST_F(SongDrawingTest, OpenGLHasNothingToComplainAbout) {
    play("C D\nE2 F\n\n\nG");
    hit({noteC, noteA});
    draw(0.0);
    EXPECT_THAT(gl.errors(), IsEmpty());
    EXPECT_EQ(gl.pushed(), 0);
}

TEST_F(SongDrawingTest, LinesOfOneWidthShareAGroup) {
    play("C D E\nF G A\nC D E\nC D E\nF G A\nC D E");
    draw(0.0);
    EXPECT_LE(gl.groups(), 5);  // the staff, a bar, twelve notes, a bar, six notes
    EXPECT_THAT(gl.lines(), SizeIs(staffLines + 20));
}

TEST_F(SongDrawingTest, FloatingNumbersAreDrawnInTheTracksCoordinates) {
    play("\nD");
    song.updateScore(score, 0.5, holding({noteD}, 0.3f));
    draw(0.5);
    ASSERT_THAT(recorded.texts(), SizeIs(1));
    EXPECT_EQ(recorded.texts()[0].text, "100");
    EXPECT_FLOAT_EQ(recorded.texts()[0].x, 1.3f);
}

TEST_F(SongDrawingTest, OnlyWhatCanBeSeenIsDrawnHoweverLongTheSong) {
    std::string lines;
    for (int i = 0; i < 20000; ++i) {
        lines += "C E G\n";
    }
    play(lines);
    Lines const seen = marks(5000.0);
    // The view is 11 slots wide; what surrounds it may take part of an index block on each side.
    EXPECT_GE(seen.size(), 3u * 11u);
    EXPECT_LE(seen.size(), 3u * 48u);
    for (Line const& line : seen) {
        EXPECT_NEAR(line.from.x, 10000.0, 32.0);
    }
}

TEST_F(SongDrawingTest, AWiderWindowSeesMore) {
    play(std::string(400, '\n'));
    std::size_t const narrow = drawn(100.0).size();
    lookThroughGameCamera(32.0 / 9.0);
    std::size_t const wide = drawn(100.0).size();
    lookThroughGameCamera(100.0);
    std::size_t const everything = drawn(100.0).size();
    EXPECT_LT(narrow, wide);
    EXPECT_LT(wide, everything);
    EXPECT_EQ(everything, 101u);
}

TEST_F(SongDrawingTest, WhatACameraSeesThatIsTurnedAndRolledIsDrawnAndLittleElse) {
    // Index blocks that are seen in part, and slots that only the upper or the lower side hides.
    constexpr int slack = 64;
    std::string lines;
    for (int slot = 0; slot < 2000; ++slot) {
        lines += "C B\n";
    }
    play(lines);
    for (auto const& [aspect, rise] : {std::pair(4.0 / 3.0, 0.0), std::pair(0.3, 5.0)}) {
        for (double const turn : {-25.0, 0.0, 25.0}) {
            for (double const roll : {-70.0, -30.0, 0.0, 30.0, 70.0}) {
                lookThroughGameCamera(aspect);
                glTranslated(0.0, -rise, 0.0);
                glRotated(turn, 0.0, 1.0, 0.0);
                glRotated(roll, 0.0, 0.0, 1.0);
                // Each place that a slot can have in a block of the index.
                for (int middle = 1000; middle < 1016; ++middle) {
                    std::set<int> const visible = slotsInView(middle);
                    std::set<int> seen;
                    for (Line const& line : marks(middle / 2.0)) {
                        seen.insert(static_cast<int>(std::lround((line.from.x + line.to.x) / 2)));
                    }
                    ASSERT_FALSE(visible.empty() || seen.empty());
                    EXPECT_TRUE(std::includes(seen.begin(), seen.end(), visible.begin(), visible.end()))
                        << aspect << ", " << turn << ", " << roll << " at " << middle;
                    EXPECT_GE(*seen.begin(), *visible.begin() - slack)
                        << aspect << ", " << turn << ", " << roll;
                    EXPECT_LE(*seen.rbegin(), *visible.rbegin() + slack)
                        << aspect << ", " << turn << ", " << roll;
                }
            }
        }
    }
}

TEST_F(SongDrawingTest, WithMatricesThatShowNoPlaceEverythingIsDrawn) {
    play(std::string(400, '\n'));
    double const zeros[16] = {};
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(zeros);
    glMatrixMode(GL_MODELVIEW);
    EXPECT_THAT(drawn(0.0), SizeIs(101));
}

TEST_F(SongDrawingTest, ALongNoteThatBeganOutOfSightIsDrawnWhileItSounds) {
    play("C\nG10000\n\n" + std::string(10000, '\n'));
    auto const theNote = LineIs(at(0.6f, row(4)), at(10000.4f, row(4)), 1.0f, 5.0f);
    EXPECT_THAT(marks(4000.0), Contains(theNote));
    EXPECT_THAT(marks(4998.0), Contains(theNote));
    EXPECT_THAT(marks(5010.0), IsEmpty());
}

TEST_F(SongDrawingTest, ANoteThatReachesBackFromOutOfSightIsDrawn) {
    play(std::string(10000, '\n') + "G-9990\nC");
    auto const theNote = LineIs(at(9999.6f, row(4)), at(9.4f, row(4)), 1.0f, 5.0f);
    EXPECT_THAT(marks(500.0), Contains(theNote));
    EXPECT_THAT(marks(-10.0), IsEmpty());
}

TEST(NoteMarkDrawing, AMarkDrawsItselfInAnySlotWidth) {
    RecordingGL gl;
    Song::NoteMark mark(noteE, 2);
    mark.draw(3, 2.0f, 0.5f);
    EXPECT_THAT(gl.lines(), ElementsAre(LineIs(at(5.5f, row(2)), at(8.5f, row(2)), 1.0f, 5.0f)));

    gl.forget();
    mark.hit = true;
    mark.draw(3, 2.0f, 0.5f);
    EXPECT_THAT(gl.lines(), ElementsAre(LineIs(at(5.5f, row(2)), at(8.5f, row(2)), 0.9f, 3.0f)));
    EXPECT_EQ(mark.brightness, 0.9f);
    EXPECT_THAT(gl.errors(), IsEmpty());
}

TEST(NoteMarkDrawing, APenaltyMarkDrawsItselfWithoutFading) {
    RecordingGL const gl;
    Song::NoteMark mark(noteC, 1);
    mark.hit = true;
    mark.wrong = true;
    mark.draw(0, 1.0f, 0.8f);
    EXPECT_EQ(mark.brightness, 1.0f);
    EXPECT_THAT(gl.lines(), SizeIs(2));
}

TEST(NoteHeight, IsTheFloatNearestTwoSeventhsTimesTheNote) {
    for (int note = 0; note < 7; ++note) {
        EXPECT_EQ(Song::getNoteHeight(note), 0.2857143f * static_cast<float>(note));
    }
}

}  // namespace
