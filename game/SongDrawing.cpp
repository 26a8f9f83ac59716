#include <GL/gl.h>

#include "game/Song.h"

namespace {

constexpr float slotWidth = 1.0f;  // world units
constexpr float noteFill = 0.8f;   // of a slot

}  // namespace

float Song::getNoteHeight(Notes::NoteID const& note) {
    return 0.2857143f * static_cast<float>(note);
}

void Song::draw(double t) {
    glTranslatef(static_cast<float>(slotsPerSecond * -t), 0.0f, 0.0f);

    glLineWidth(1.0f);
    glBegin(GL_LINES);
    glColor3f(0.1f, 0.1f, 0.1f);
    glVertex2f(-0.5f, 0.0f);
    glVertex2f(100.0f, 0.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    for (int row = 2; row <= 8; row += 2) {
        float const y = static_cast<float>(2.0 * row / 7.0);
        glVertex2f(-0.5f, y);
        glVertex2f(2.0f * static_cast<float>(slots.size()) * slotWidth, y);
    }
    glEnd();

    int i = 0;
    for (auto& slot : slots) {
        if (i % 4 == 0) {
            float const x = -0.5f * slotWidth + static_cast<float>(i) * slotWidth;
            glLineWidth(1.0f);
            glColor3f(1.0f, 1.0f, 1.0f);
            glBegin(GL_LINES);
            glVertex2f(x, 0.5714286f);
            glVertex2f(x, 2.5f);
            glEnd();
        }
        for (NoteMark& mark : slot) {
            mark.draw(i, slotWidth, noteFill);
        }
        ++i;
    }
    scene.draw();
}

void Song::NoteMark::draw(int slot, float width, float fill) {
    float const y = static_cast<float>(2.0 * note / 7.0);
    float const x = static_cast<float>(slot) * width;
    if (wrong) {
        glLineWidth(3.0f);
        glColor3f(brightness, brightness, brightness);
        glBegin(GL_LINES);
        glVertex3d(x - 0.1, y - 0.1, 0.0);
        glVertex3d(x + 0.1, y + 0.1, 0.0);
        glVertex3d(x - 0.1, y + 0.1, 0.0);
        glVertex3d(x + 0.1, y - 0.1, 0.0);
        glEnd();
        return;
    }
    if (hit) {
        brightness = static_cast<float>(brightness - 0.1);
        if (brightness < 0.0f) {
            brightness = 0.0f;
        }
    }
    glLineWidth(hit ? 3.0f : 5.0f);
    glColor3f(brightness, brightness, brightness);
    float const extra = static_cast<float>(static_cast<std::int64_t>(length) - 1) * width;
    glBegin(GL_LINES);
    glVertex3f(x + (width * fill) / -2.0f, y, 0.0f);
    glVertex3f((x + extra) + (width * fill) / 2.0f, y, 0.0f);
    glEnd();
}
