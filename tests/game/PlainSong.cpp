#include "tests/game/PlainSong.h"

#include <GL/gl.h>

#include <cstdlib>
#include <istream>
#include <ostream>
#include <sstream>
#include <string>

bool PlainSong::load(std::istream& in, std::ostream& report) {
    if (!in.good()) {
        report << "Song: input is not good.\n";
        return false;
    }
    int first = 0;
    int second = 0;
    in >> first;
    in >> second;
    if (!in.good()) {
        report << "Error loading timing information.\n";
        return false;
    }
    char buffer[1024];
    in.getline(buffer, 1024);
    while (in.good()) {
        in.getline(buffer, 1024);
        std::vector<Song::NoteMark> slot;
        std::string const text(buffer);
        if (text.empty()) {
            slots.push_back(slot);
            continue;
        }
        std::istringstream line(text);
        while (line.good()) {
            std::string token;
            line >> token;
            int length = 1;
            if (token.size() > 1) {
                length = std::atoi(token.substr(1).c_str());
                token = token.substr(0, 1);
            }
            Notes::NoteID const note = Notes::nameToId(token);
            if (note == -1) {
                report << "Song: Got invalid note.\n";
                return false;
            }
            slot.push_back(Song::NoteMark(note, length));
        }
        slots.push_back(slot);
    }
    return true;
}

void PlainSong::follow(std::vector<std::vector<Song::NoteMark>> const& scored) {
    slots.resize(scored.size());
    for (std::size_t i = 0; i < scored.size(); ++i) {
        for (std::size_t k = 0; k < scored[i].size(); ++k) {
            if (k < slots[i].size()) {
                slots[i][k].hit = scored[i][k].hit;
            } else {
                slots[i].push_back(scored[i][k]);
            }
        }
    }
}

namespace {

void drawMark(Song::NoteMark& mark, int slot, float width, float fill) {
    auto const y = static_cast<float>(2.0 * mark.note / 7.0);
    float const x = static_cast<float>(slot) * width;
    float const extra = static_cast<float>(static_cast<double>(mark.length) - 1.0) * width;
    if (mark.wrong) {
        glLineWidth(3.0f);
        glColor3f(mark.brightness, mark.brightness, mark.brightness);
        glBegin(GL_LINES);
        glVertex3d(x - 0.1, y - 0.1, 0.0);
        glVertex3d(x + 0.1, y + 0.1, 0.0);
        glVertex3d(x - 0.1, y + 0.1, 0.0);
        glVertex3d(x + 0.1, y - 0.1, 0.0);
        glEnd();
        return;
    }
    if (mark.hit) {
        mark.brightness = static_cast<float>(static_cast<double>(mark.brightness) - 0.1);
        if (mark.brightness < 0.0f) {
            mark.brightness = 0.0f;
        }
        glLineWidth(3.0f);
    } else {
        glLineWidth(5.0f);
    }
    glColor3f(mark.brightness, mark.brightness, mark.brightness);
    glBegin(GL_LINES);
    glVertex3f(x + (width * fill) / -2.0f, y, 0.0f);
    glVertex3f((x + extra) + (width * fill) / 2.0f, y, 0.0f);
    glEnd();
}

}  // namespace

void PlainSong::draw(double t) {
    float const w = 1.0f;
    glTranslatef(static_cast<float>(2.0 * (-t)), 0.0f, 0.0f);
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    glColor3f(0.1f, 0.1f, 0.1f);
    glVertex3f(-0.5f, 0.0f, 0.0f);
    glVertex3f(100.0f, 0.0f, 0.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    for (int k = 2; k <= 8; k += 2) {
        auto const y = static_cast<float>(2.0 * k / 7.0);
        glVertex3f(-0.5f, y, 0.0f);
        glVertex3f(2.0f * static_cast<float>(slots.size()) * w, y, 0.0f);
    }
    glEnd();
    for (std::size_t i = 0; i < slots.size(); ++i) {
        glLineWidth(1.0f);
        glColor3f(1.0f, 1.0f, 1.0f);
        if (i % 4 == 0) {
            float const x = -0.5f * w + static_cast<float>(i) * w;
            glBegin(GL_LINES);
            glVertex3f(x, 0.5714286f, 0.0f);
            glVertex3f(x, 2.5f, 0.0f);
            glEnd();
        }
        for (Song::NoteMark& mark : slots[i]) {
            drawMark(mark, static_cast<int>(i), w, 0.8f);
        }
    }
}
