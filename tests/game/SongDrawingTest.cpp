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
        const double eye = modelview[k] * x + modelview[4 + k] * y + modelview[12 + k];
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

    void play(const std::string& lines) { ASSERT_TRUE(load("1 1\n" + lines)) << errors; }

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
        for (const Line& line : drawn(t)) {
            if (line.width != 1.0f) {
                result.push_back(line);
            }
        }
        return result;
    }
    void hit(const std::vector<Notes::NoteID>& notes, double t = 0.0) {
        song.updateScore(score, t, holding(notes, 10.0f));
    }

    RecordingGL gl;
    RecordingFont recorded;
};

TEST_F(SongDrawingTest, ASongWithoutSlotsIsTheStaffAndTheScene) {
    draw(0.0);
    EXPECT_THAT(gl.lines(), SizeIs(staffLines));
    EXPECT_THAT(gl.lines()[4], LineIs(at(-0.5f, row(8)), at(0.0f, row(8)), 1.0f, 1.0f));
    EXPECT_THAT(recorded.texts(), IsEmpty());

    play("C");
    hit({noteC});
    song.load("nowhere");
    draw(0.0);
    EXPECT_THAT(gl.lines(), SizeIs(staffLines));
    EXPECT_THAT(recorded.texts(), SizeIs(1));
}

TEST_F(SongDrawingTest, TheTrackScrollsBySlotsAndStaysTranslatedForItsCaller) {
    song.draw(1.25);
    EXPECT_EQ(gl.modelview()[12], -2.5);
    EXPECT_EQ(gl.pushed(), 0);
}

TEST_F(SongDrawingTest, TheLowestLengthDoesNotOverflow) {
    play("G-2147483648");
    EXPECT_THAT(marks(), ElementsAre(LineIs(at(-0.4f, row(4)), at(-2147483648.0f, row(4)), 1.0f, 5.0f)));
}

TEST_F(SongDrawingTest, LinesOfOneWidthShareAGroup) {
    play("C D E\nF G A\nC D E\nC D E\nF G A\nC D E");
    draw(0.0);
    EXPECT_LE(gl.groups(), 5);  // the staff, a bar, twelve notes, a bar, six notes
    EXPECT_THAT(gl.lines(), SizeIs(staffLines + 20));
}

TEST_F(SongDrawingTest, WhatACameraSeesThatIsTurnedAndRolledIsDrawnAndLittleElse) {
    constexpr int slack = 48;  // slots that only the upper or the lower side of the view hides
    std::string lines;
    for (int slot = 0; slot < 2000; ++slot) {
        lines += "C B\n";
    }
    play(lines);
    for (const auto& [aspect, rise] : {std::pair(4.0 / 3.0, 0.0), std::pair(0.3, 5.0)}) {
        for (const double turn : {-25.0, 0.0, 25.0}) {
            for (const double roll : {-70.0, -30.0, 0.0, 30.0, 70.0}) {
                lookThroughGameCamera(aspect);
                glTranslated(0.0, -rise, 0.0);
                glRotated(turn, 0.0, 1.0, 0.0);
                glRotated(roll, 0.0, 0.0, 1.0);
                constexpr int middle = 1000;
                const std::set<int> visible = slotsInView(middle);
                std::set<int> seen;
                for (const Line& line : marks(middle / 2.0)) {
                    seen.insert(static_cast<int>(std::lround((line.from.x + line.to.x) / 2)));
                }
                ASSERT_FALSE(visible.empty() || seen.empty());
                const testing::Message where = testing::Message() << aspect << ", " << turn << ", " << roll;
                EXPECT_TRUE(std::includes(seen.begin(), seen.end(), visible.begin(), visible.end())) << where;
                EXPECT_GE(*seen.begin(), *visible.begin() - slack) << where;
                EXPECT_LE(*seen.rbegin(), *visible.rbegin() + slack) << where;
            }
        }
    }
}

TEST_F(SongDrawingTest, WithMatricesThatShowNoPlaceEverythingIsDrawn) {
    play(std::string(400, '\n'));
    for (const double nearness : {0.0, 1.0}) {  // every point at infinity, or in the middle of the view
        double projection[16] = {};
        projection[15] = nearness;
        glMatrixMode(GL_PROJECTION);
        glLoadMatrixd(projection);
        glMatrixMode(GL_MODELVIEW);
        EXPECT_THAT(drawn(0.0), SizeIs(101));
    }
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

TEST(NoteHeight, IsTheFloatNearestTwoSeventhsTimesTheNote) {
    // Two of them are not the floats nearest 6/7 and 12/7.
    constexpr float heights[] = {0.0f,        0.285714298f, 0.571428597f, 0.857142925f,
                                 1.14285719f, 1.42857146f,  1.71428585f};
    for (int note = 0; note < 7; ++note) {
        EXPECT_EQ(Song::getNoteHeight(note), heights[note]) << note;
    }
}

}  // namespace
