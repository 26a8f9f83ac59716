#include "tests/support/RecordingGL.h"

#include <GL/gl.h>
#include <GL/glu.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

void expectTheTwoLines(RecordingGL const& gl) {
    auto const lines = gl.lines();
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_EQ(lines[0].from, (RecordingGL::Point{0.0, 1.0, 0.0}));
    EXPECT_EQ(lines[0].to, (RecordingGL::Point{2.0, 3.0, 0.0}));
    EXPECT_THAT(lines[0].color, ElementsAre(1.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_EQ(lines[1].from, (RecordingGL::Point{4.0, 5.0, 0.0}));
    EXPECT_EQ(lines[1].to, (RecordingGL::Point{6.0, 7.0, 0.0}));
    EXPECT_THAT(lines[1].color, ElementsAre(0.0f, 0.0f, 1.0f, 1.0f));
    EXPECT_EQ(lines[1].width, 3.0f);
    EXPECT_THAT(gl.errors(), IsEmpty());
}

float const points[] = {0, 1, 2, 3, 4, 5, 6, 7};
float const colors[] = {1, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 1};

TEST(RecordingGL, RecordsImmediateMode) {
    RecordingGL const gl;
    glLineWidth(3.0f);
    glBegin(GL_LINES);
    glColor3f(1.0f, 0.0f, 0.0f);
    glVertex2f(0.0f, 1.0f);
    glVertex2d(2.0, 3.0);
    glColor4f(0.0f, 0.0f, 1.0f, 1.0f);
    glVertex3f(4.0f, 5.0f, 0.0f);
    glVertex3d(6.0, 7.0, 0.0);
    glEnd();
    expectTheTwoLines(gl);
}

TEST(RecordingGL, RecordsClientArraysAlike) {
    RecordingGL gl;
    glLineWidth(3.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, points);
    glColorPointer(3, GL_FLOAT, 0, colors);
    glDrawArrays(GL_LINES, 0, 4);
    expectTheTwoLines(gl);

    gl.forget();
    unsigned short const order[] = {0, 1, 2, 3};
    glDrawElements(GL_LINES, 4, GL_UNSIGNED_SHORT, order);
    expectTheTwoLines(gl);
}

TEST(RecordingGL, RecordsInterleavedArraysOfBytesAndDoubles) {
    struct Corner {
        double x, y;
        unsigned char rgba[4];
    };
    Corner const corners[] = {{0, 1, {255, 0, 0, 255}},
                              {2, 3, {255, 0, 0, 255}},
                              {4, 5, {0, 0, 255, 255}},
                              {6, 7, {0, 0, 255, 255}}};
    RecordingGL const gl;
    glLineWidth(3.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    glVertexPointer(2, GL_DOUBLE, sizeof(Corner), &corners[0].x);
    glColorPointer(4, GL_UNSIGNED_BYTE, sizeof(Corner), corners[0].rgba);
    glDrawArrays(GL_LINES, 0, 4);
    expectTheTwoLines(gl);
}

TEST(RecordingGL, StripsAndLoopsAreLinesToo) {
    RecordingGL gl;
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, points);
    glDrawArrays(GL_LINE_STRIP, 0, 4);
    EXPECT_THAT(gl.lines(), SizeIs(3));
    gl.forget();
    glDrawArrays(GL_LINE_LOOP, 0, 4);
    ASSERT_THAT(gl.lines(), SizeIs(4));
    EXPECT_EQ(gl.lines()[3].to, (RecordingGL::Point{0.0, 1.0, 0.0}));
    gl.forget();
    glDrawArrays(GL_QUADS, 0, 4);
    EXPECT_THAT(gl.lines(), IsEmpty());
    EXPECT_THAT(gl.primitives(), SizeIs(1));
}

TEST(RecordingGL, TransformsWithTheMatrixOfTheMoment) {
    RecordingGL const gl;
    glPushMatrix();
    glTranslatef(10.0f, 0.0f, 0.0f);
    glRotated(90.0, 0.0, 0.0, 1.0);
    glScaled(2.0, 1.0, 1.0);
    glBegin(GL_LINES);
    glVertex2f(0.0f, 0.0f);
    glVertex2f(1.0f, 0.0f);
    glEnd();
    EXPECT_EQ(gl.pushed(), 1);
    glPopMatrix();
    auto const line = gl.lines(RecordingGL::Space::eye).at(0);
    EXPECT_NEAR(line.from.x, 10.0, 1e-12);
    EXPECT_NEAR(line.to.x, 10.0, 1e-12);
    EXPECT_NEAR(line.to.y, 2.0, 1e-12);
    EXPECT_EQ(gl.pushed(), 0);
}

TEST(RecordingGL, TakesTheCallsOfTheUtilityLibraryAndGivesMatricesBack) {
    RecordingGL const gl;
    glMatrixMode(GL_PROJECTION);
    gluPerspective(90.0, 2.0, 1.0, 3.0);
    EXPECT_NEAR(gl.projection()[0], 0.5, 1e-12);
    EXPECT_NEAR(gl.projection()[5], 1.0, 1e-12);
    float matrix[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, matrix);
    EXPECT_FLOAT_EQ(matrix[0], 0.5f);
}

TEST(RecordingGL, GivesTheViewportBack) {
    RecordingGL const gl;
    int viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, ElementsAre(0, 0, 640, 480));
    glViewport(1, 2, 0, 300);
    glViewport(0, 0, -1, 5);
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_THAT(viewport, ElementsAre(1, 2, 0, 300));
    EXPECT_THAT(gl.errors(), SizeIs(1));
}

TEST(RecordingGL, RefusesWhatOpenGLRefuses) {
    RecordingGL const gl;
    glBegin(GL_LINES);
    glLineWidth(2.0f);
    glBegin(GL_LINES);
    glEnd();
    glEnd();
    glVertex2f(0.0f, 0.0f);
    glPopMatrix();
    glPopAttrib();
    EXPECT_THAT(gl.errors(), SizeIs(6));
    EXPECT_EQ(gl.lineWidth(), 1.0f);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_INVALID_OPERATION));
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(RecordingGL, AttributeGroupsComeBackByTheirMask) {
    RecordingGL const gl;
    glEnable(GL_BLEND);
    glLineWidth(2.0f);
    glPushAttrib(GL_LINE_BIT);
    glLineWidth(4.0f);
    glDisable(GL_BLEND);
    glPopAttrib();
    EXPECT_EQ(gl.lineWidth(), 2.0f);
    EXPECT_FALSE(gl.enabled(GL_BLEND));
}

TEST(RecordingGL, NotesTheTextureOfAPrimitive) {
    RecordingGL const gl;
    GLuint name = 0;
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_FLOAT, 0, points);
    glDrawArrays(GL_QUADS, 0, 4);
    glEnable(GL_TEXTURE_2D);
    glDrawArrays(GL_QUADS, 0, 4);
    EXPECT_EQ(gl.primitives().at(0).texture, 0u);
    EXPECT_EQ(gl.primitives().at(1).texture, name);
    EXPECT_EQ(gl.textures(), 1);
    glDeleteTextures(1, &name);
    EXPECT_EQ(gl.textures(), 0);
}

}  // namespace
