#include <GL/gl.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "game/Rules.h"
#include "game/Song.h"

namespace {

// All in track coordinates: x in slots, one world unit wide, y in world units.
constexpr float slotWidth = 1.0f;
constexpr float noteFill = 0.8f;  // of a slot
constexpr double crossHalfSize = 0.1;
constexpr float barBottom = 0.5714286f;
constexpr float barTop = 2.5f;
constexpr float staffStart = -0.5f;
constexpr float lowestRowEnd = 100.0f;

constexpr double fadePerDrawing = 0.1;

// Pixels.
constexpr float staffLineWidth = 1.0f;
constexpr float hitLineWidth = 3.0f;
constexpr float noteLineWidth = 5.0f;

// The x of a note's two ends.
struct Span {
    float start;
    float end;
};

Span spanOf(const Song::NoteMark& mark, int slot, float width, float fill) {
    const float x = static_cast<float>(slot) * width;
    const float extra = static_cast<float>(static_cast<std::int64_t>(mark.length) - 1) * width;
    return {x + (width * fill) / -2.0f, (x + extra) + (width * fill) / 2.0f};
}

// Draws lines in the order in which they come, those of one width that follow each other as one group.
class LineGroups {
public:
    LineGroups() = default;
    LineGroups(const LineGroups&) = delete;
    LineGroups& operator=(const LineGroups&) = delete;
    ~LineGroups() { close(); }

    // The width in pixels and the grey level of the lines that follow.
    void pen(float width, float grey) {
        if (openWidth != width) {
            close();
            glLineWidth(width);
            glBegin(GL_LINES);
            openWidth = width;
        }
        glColor3f(grey, grey, grey);
    }
    void line(float x1, float y1, float x2, float y2) {
        glVertex2f(x1, y1);
        glVertex2f(x2, y2);
    }
    void cross(float x, float y) {
        glVertex2d(x - crossHalfSize, y - crossHalfSize);
        glVertex2d(x + crossHalfSize, y + crossHalfSize);
        glVertex2d(x - crossHalfSize, y + crossHalfSize);
        glVertex2d(x + crossHalfSize, y - crossHalfSize);
    }

private:
    void close() {
        if (openWidth) {
            glEnd();
        }
    }

    std::optional<float> openWidth;
};

void drawMark(const Song::NoteMark& mark, int slot, float width, float fill, LineGroups& lines) {
    const float y = Song::rowHeight(mark.note);
    if (mark.wrong) {
        lines.pen(hitLineWidth, mark.brightness);
        lines.cross(static_cast<float>(slot) * width, y);
    } else {
        const Span span = spanOf(mark, slot, width, fill);
        lines.pen(mark.hit ? hitLineWidth : noteLineWidth, mark.brightness);
        lines.line(span.start, y, span.end, y);
    }
}

// From `left` to `right` on the track's x axis.
struct Stretch {
    double left;
    double right;
};

// The stretch of the track that the current matrices may bring onto the screen. Without a context, or with
// matrices that leave it open, that is all of it.
Stretch visibleStretch() {
    double projection[16] = {};
    double modelview[16] = {};
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    // How clip coordinate `row` depends on track coordinate `column` (0 for x, 1 for y, 3 for neither).
    const auto factor = [&](int row, int column) {
        double sum = 0.0;
        for (int k = 0; k < 4; ++k) {
            sum += projection[k * 4 + row] * modelview[column * 4 + k];
        }
        return sum;
    };
    constexpr double lowest = -1.0;
    constexpr double highest = 3.0;
    constexpr double lineThickness = 1.0;

    constexpr double infinity = std::numeric_limits<double>::infinity();
    Stretch seen{-infinity, infinity};
    for (const double side : {1.0, -1.0}) {
        // A point is inside this side of the view where perX * x + perY * y + rest >= 0.
        const double perX = factor(3, 0) + side * factor(0, 0);
        const double perY = factor(3, 1) + side * factor(0, 1);
        const double rest = factor(3, 3) + side * factor(0, 3);
        const double border = -(rest + std::max(perY * lowest, perY * highest)) / perX;
        if (perX > 0.0) {
            seen.left = std::max(seen.left, border - lineThickness);
        } else if (perX < 0.0) {
            seen.right = std::min(seen.right, border + lineThickness);
        }
    }
    return seen;
}

}  // namespace

float Song::getNoteHeight(const Notes::NoteID& note) {
    return 0.2857143f * static_cast<float>(note);
}

float Song::rowHeight(int row) {
    return static_cast<float>(2.0 * row / 7.0);
}

void Song::NoteMark::draw(int slot, float width, float fill) {
    fade();
    LineGroups lines;
    drawMark(*this, slot, width, fill, lines);
}

void Song::NoteMark::fade() {
    if (hit && !wrong) {
        brightness = std::max(0.0f, static_cast<float>(static_cast<double>(brightness) - fadePerDrawing));
    }
}

void Song::draw(double t) {
    glTranslatef(static_cast<float>(slotsPerSecond * -t), 0.0f, 0.0f);
    fadeHitMarks();
    drawStaff();
    drawSlots();
    scene.draw();
}

void Song::fadeHitMarks() {
    const auto fadesToBlack = [this](const MarkPlace& place) {
        NoteMark& mark = slots[place.slot][place.index];
        mark.fade();
        return mark.brightness == 0.0f;
    };
    fading.erase(std::remove_if(fading.begin(), fading.end(), fadesToBlack), fading.end());
}

void Song::drawStaff() const {
    LineGroups lines;
    lines.pen(staffLineWidth, 0.1f);
    lines.line(staffStart, 0.0f, lowestRowEnd, 0.0f);
    lines.pen(staffLineWidth, 1.0f);
    for (int row = 2; row <= 8; row += 2) {
        lines.line(staffStart, rowHeight(row), 2.0f * static_cast<float>(slots.size()) * slotWidth,
                   rowHeight(row));
    }
}

void Song::drawSlots() const {
    const Stretch seen = visibleStretch();
    // No slot before `first` reaches right into view, and none from `last` on reaches left into it.
    const auto first = static_cast<std::size_t>(
        std::lower_bound(furthestRight.begin(), furthestRight.end(), seen.left) - furthestRight.begin());
    const auto last = static_cast<std::size_t>(
        std::upper_bound(furthestLeft.begin(), furthestLeft.end(), seen.right) - furthestLeft.begin());
    LineGroups lines;
    for (std::size_t i = first; i < last; ++i) {
        const int slot = static_cast<int>(i);
        if (i % rules::slotsPerBar == 0) {
            const float x = -0.5f * slotWidth + static_cast<float>(slot) * slotWidth;
            lines.pen(staffLineWidth, 1.0f);
            lines.line(x, barBottom, x, barTop);
        }
        for (const NoteMark& mark : slots[i]) {
            drawMark(mark, slot, slotWidth, noteFill, lines);
        }
    }
}

void Song::measureTrack() {
    furthestLeft.resize(slots.size());
    furthestRight.resize(slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        // The slot itself: bar line, the beginnings of its notes, and the penalty marks that may come.
        const int slot = static_cast<int>(i);
        const float centre = static_cast<float>(slot) * slotWidth;
        float left = centre - 0.5f * slotWidth;
        float right = centre + 0.5f * slotWidth;
        for (const NoteMark& mark : slots[i]) {
            const float end = spanOf(mark, slot, slotWidth, noteFill).end;
            left = std::min(left, end);
            right = std::max(right, end);
        }
        furthestLeft[i] = left;
        furthestRight[i] = i == 0 ? right : std::max(right, furthestRight[i - 1]);
    }
    for (std::size_t i = slots.size(); i-- > 1;) {
        furthestLeft[i - 1] = std::min(furthestLeft[i - 1], furthestLeft[i]);
    }
}
