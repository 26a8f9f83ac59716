#include "tests/game/PlainSong.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <set>
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
        const std::string text(buffer);
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
                length = static_cast<int>(std::strtoll(token.substr(1).c_str(), nullptr, 10));
                token = token.substr(0, 1);
            }
            const Notes::NoteID note = Notes::nameToId(token);
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

void PlainSong::updateScore(double t, const NoteState& state) {
    const double rounded = std::round(2.0 * t);
    if (!(rounded >= 0.0 && rounded < static_cast<double>(slots.size()))) {
        return;
    }
    const int slot = static_cast<int>(rounded);
    const auto here = static_cast<std::size_t>(slot);
    const float dur = static_cast<float>(1.0 / 2.0);
    const float slotStart = static_cast<float>(static_cast<double>(static_cast<float>(slot) * dur) +
                                               -0.5 * static_cast<double>(dur));
    std::set<int> seen;
    for (Song::NoteMark& mark : slots[here]) {
        const float threshold = static_cast<float>(static_cast<double>(dur / -2.0f) +
                                                   static_cast<double>(dur) * 0.95 * mark.length);
        if (state.downCount(mark.note) > threshold && !mark.hit) {
            mark.hit = true;
            score += 100.0f;
        }
        seen.insert(mark.note);
    }
    for (int j = std::max(slot - 4, 0); j < slot; ++j) {
        for (Song::NoteMark& mark : slots[static_cast<std::size_t>(j)]) {
            const auto length = static_cast<float>(mark.length);
            const float threshold =
                static_cast<float>(static_cast<double>(dur / -2.0f) +
                                   static_cast<double>(dur) * 0.95 * static_cast<double>(length));
            if (std::int64_t{mark.length} + j <= slot) {
                continue;
            }
            if (state.downCount(mark.note) > threshold && !mark.hit) {
                mark.hit = true;
                score += 100.0f * length;
            }
            seen.insert(mark.note);
        }
    }
    for (int note = 0; note <= 6; ++note) {
        if (static_cast<double>(state.downCount(note)) > 0.35 &&
            t - static_cast<double>(slotStart) > 0.2 * static_cast<double>(dur) && seen.count(note) == 0) {
            Song::NoteMark penalty(note, 1);
            penalty.wrong = true;
            penalty.hit = true;
            slots[here].push_back(penalty);
            score += -20.0f;
        }
    }
}

bool PlainSong::complete(double t) const {
    return std::round(2.0 * t) >= static_cast<double>(slots.size()) + 4.0;
}

namespace {

void drawMark(Song::NoteMark& mark, int slot, float width, float fill) {
    const auto y = static_cast<float>(2.0 * mark.note / 7.0);
    const float x = static_cast<float>(slot) * width;
    const float extra = static_cast<float>(static_cast<double>(mark.length) - 1.0) * width;
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
    const float w = 1.0f;
    glTranslatef(static_cast<float>(2.0 * (-t)), 0.0f, 0.0f);
    glLineWidth(1.0f);
    glBegin(GL_LINES);
    glColor3f(0.1f, 0.1f, 0.1f);
    glVertex3f(-0.5f, 0.0f, 0.0f);
    glVertex3f(100.0f, 0.0f, 0.0f);
    glColor3f(1.0f, 1.0f, 1.0f);
    for (int k = 2; k <= 8; k += 2) {
        const auto y = static_cast<float>(2.0 * k / 7.0);
        glVertex3f(-0.5f, y, 0.0f);
        glVertex3f(2.0f * static_cast<float>(slots.size()) * w, y, 0.0f);
    }
    glEnd();
    for (std::size_t i = 0; i < slots.size(); ++i) {
        glLineWidth(1.0f);
        glColor3f(1.0f, 1.0f, 1.0f);
        if (i % 4 == 0) {
            const float x = -0.5f * w + static_cast<float>(i) * w;
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
