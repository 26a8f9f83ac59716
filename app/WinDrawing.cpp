#include <GL/gl.h>

#include <array>
#include <vector>

#include "analysis/NoteState.h"
#include "analysis/Notes.h"
#include "app/Win.h"
#include "audio/RingBuffer.h"

namespace {

constexpr std::size_t signalSamples = 4096;
constexpr double signalWidth = 5.0;   // world units for the whole strip
constexpr float signalHeight = 3.0f;  // world units for an amplitude of 1
constexpr float signalY = -2.0f;      // world units

constexpr double shownAfterSeconds = 0.1;
constexpr float labelSpacing = 0.85f;    // world units
constexpr float labelLeft = -2.8f;       // world units
constexpr float labelY = -1.5f;          // world units
constexpr float labelBoxWidth = 100.0f;  // world units
constexpr float labelBoxHeight = 10.0f;  // world units

constexpr float timeLineBottom = -0.5f;  // world units
constexpr float timeLineTop = 2.5f;      // world units
constexpr float timeLineWidth = 1.0f;    // pixels
constexpr double noteBarReach = 0.2;     // world units above and below a note's row
constexpr float noteBarWidth = 5.0f;     // pixels

using Color = std::array<float, 3>;  // red, green, blue
constexpr Color timeLineColor = {0.0f, 0.0f, 1.0f};
constexpr Color noteBarColor = {0.2f, 0.2f, 1.0f};

void pen(float widthPx, const Color& color) {
    glLineWidth(widthPx);
    glColor3f(color[0], color[1], color[2]);
}

}  // namespace

void Win::drawSignal() {
    std::vector<float> samples(signalSamples, 0.0f);
    audioInput->getRingBuffer()->copyLatest(samples);

    glPushMatrix();
    glTranslatef(0.0f, signalY, 0.0f);
    glScalef(static_cast<float>(signalWidth / static_cast<double>(samples.size())), signalHeight, 1.0f);
    glTranslatef(static_cast<float>(samples.size()) / -2.0f, 0.0f, 0.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    glBegin(GL_LINE_STRIP);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        glVertex2f(static_cast<float>(i), samples[i]);
    }
    glEnd();
    glPopMatrix();
}

void Win::drawNotes() {
    glEnable(GL_TEXTURE_2D);
    const NoteState& noteState = noteEstimation.getNoteState();
    glDisable(GL_TEXTURE_2D);

    for (int id = 0; id < Notes::noteCount; ++id) {
        if (noteState.isDown(id) && static_cast<double>(noteState.downCount(id)) > shownAfterSeconds) {
            const float x = static_cast<float>(id) * labelSpacing + labelLeft;
            font.drawString(Notes::idToName(id).c_str(), x, labelY, labelBoxWidth, labelBoxHeight);
        }
    }
}

void Win::drawPlay() {
    glPushMatrix();
    song.draw(songTime());
    glPopMatrix();

    pen(timeLineWidth, timeLineColor);
    glBegin(GL_LINES);
    glVertex2f(0.0f, timeLineBottom);
    glVertex2f(0.0f, timeLineTop);
    glEnd();

    pen(noteBarWidth, noteBarColor);
    const NoteState& noteState = noteEstimation.getNoteState();
    analyse();
    song.updateScore(score, songTime(), noteState);
    glBegin(GL_LINES);
    for (int id = 0; id < Notes::noteCount; ++id) {
        if (noteState.isDown(id)) {
            const float y = Song::rowHeight(id);
            glVertex2f(0.0f, static_cast<float>(static_cast<double>(y) - noteBarReach));
            glVertex2f(0.0f, static_cast<float>(static_cast<double>(y) + noteBarReach));
        }
    }
    glEnd();
    pen(1.0f, {1.0f, 1.0f, 1.0f});  // as OpenGL starts
}
