#include "ui/FrequencyPlot.h"

#include <GL/gl.h>

#include <algorithm>

namespace {

constexpr int plotFlags = wt::wtWidget::expandX | wt::wtWidget::expandY;
constexpr float minFrequencyHz = 0.0f;
constexpr float maxFrequencyHz = 1500.0f;
constexpr float minLevelDb = -90.0f;
constexpr float maxLevelDb = 0.0f;
constexpr float farBelowDb = -10000.0f;  // cut away, and finite

struct ClipPlane {
    GLenum name;
    GLdouble equation[4];
};

/// Left, right and bottom edge of the unit square. There is none at the top.
constexpr ClipPlane clipPlanes[] = {
    {GL_CLIP_PLANE0, {1.0, 0.0, 0.0, 0.0}},
    {GL_CLIP_PLANE1, {-1.0, 0.0, 0.0, 1.0}},
    {GL_CLIP_PLANE2, {0.0, 1.0, 0.0, 0.0}},
};

void drawSegment(float fromX, float fromY, float toX, float toY) {
    glBegin(GL_LINES);
    glVertex2f(fromX, fromY);
    glVertex2f(toX, toY);
    glEnd();
}

}  // namespace

FrequencyWindow::wtFreqWindow::wtFreqWindow(wt::wtWidget* parent)
    : wt::wtWidget("window", {0.0f, 0.0f}, {1.0f, 1.0f}, plotFlags) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

FrequencyWindow::wtFreqWindow::~wtFreqWindow() = default;

void FrequencyWindow::wtFreqWindow::draw() {
    glPushMatrix();
    glTranslatef(position.x, position.y, 0.0f);
    glScalef(size.x, size.y, 1.0f);
    for (const ClipPlane& plane : clipPlanes) {
        glEnable(plane.name);
        glClipPlane(plane.name, plane.equation);
    }

    glScalef(1.0f / (maxFrequencyHz - minFrequencyHz), 1.0f / (maxLevelDb - minLevelDb), 1.0f);
    glTranslatef(-minFrequencyHz, -minLevelDb, 0.0f);

    // In data units, so the box is one Hz by one dB. This is intended.
    glColor3f(0.0f, 0.0f, 0.0f);
    glBegin(GL_LINE_LOOP);
    glVertex2f(0.0f, 0.0f);
    glVertex2f(1.0f, 0.0f);
    glVertex2f(1.0f, 1.0f);
    glVertex2f(0.0f, 1.0f);
    glEnd();

    glColor3f(1.0f, 0.0f, 0.0f);
    glBegin(GL_LINE_STRIP);
    for (std::size_t i = 0; i < power.size(); ++i) {
        // A silent bin is minus infinity, which GL cannot clip.
        glVertex2f(static_cast<float>(frequencies[i]), std::max(farBelowDb, static_cast<float>(power[i])));
    }
    glEnd();

    for (const auto& peak : peaks) {
        const float frequencyHz = peak.second;
        glColor3f(0.0f, 1.0f, 0.0f);
        drawSegment(frequencyHz, minLevelDb, frequencyHz, maxLevelDb);
    }

    // In the colour of the peaks, or of the spectrum without peaks.
    const auto level = static_cast<float>(threshold);
    drawSegment(minFrequencyHz, level, maxFrequencyHz, level);

    for (const ClipPlane& plane : clipPlanes) {
        glDisable(plane.name);
    }
    glColor3f(1.0f, 1.0f, 1.0f);
    glPopMatrix();
}
