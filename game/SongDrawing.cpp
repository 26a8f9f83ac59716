#include <GL/gl.h>

#include <algorithm>
#include <limits>
#include <optional>

#include "game/Song.h"

namespace {

// All in track coordinates: x in slots, one world unit wide, y in world units.
constexpr float slotWidth = 1.0f;
constexpr float noteFill = 0.8f;  // of a slot
constexpr double crossHalfSize = 0.1;
constexpr std::size_t slotsPerBar = 4;
constexpr float barBottom = 0.5714286f;
constexpr float barTop = 2.5f;
constexpr float staffStart = -0.5f;
constexpr float lowestRowEnd = 100.0f;

constexpr double fadePerDrawing = 0.1;

// Pixels.
constexpr float staffLineWidth = 1.0f;
constexpr float hitLineWidth = 3.0f;
constexpr float noteLineWidth = 5.0f;

float rowHeight(int row) {
    return static_cast<float>(2.0 * row / 7.0);
}

// The x of a note's two ends.
struct Span {
    float start;
    float end;
};

Span spanOf(Song::NoteMark const& mark, int slot, float width, float fill) {
    float const x = static_cast<float>(slot) * width;
    float const extra = static_cast<float>(static_cast<std::int64_t>(mark.length) - 1) * width;
    return {x + (width * fill) / -2.0f, (x + extra) + (width * fill) / 2.0f};
}

// Draws lines in the order in which they come, those of one width that follow each other as one group.
class LineGroups {
public:
    LineGroups() = default;
    LineGroups(LineGroups const&) = delete;
    LineGroups& operator=(LineGroups const&) = delete;
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

void drawMark(Song::NoteMark const& mark, int slot, float width, float fill, LineGroups& lines) {
    float const y = rowHeight(mark.note);
    if (mark.wrong) {
        lines.pen(hitLineWidth, mark.brightness);
        lines.cross(static_cast<float>(slot) * width, y);
    } else {
        Span const span = spanOf(mark, slot, width, fill);
        lines.pen(mark.hit ? hitLineWidth : noteLineWidth, mark.brightness);
        lines.line(span.start, y, span.end, y);
    }
}

// The stretch of the track that the current matrices may bring onto the screen. Without a context, or with
// matrices that leave it open, that is all of it.
TrackIndex::Extent visibleStretch() {
    double projection[16] = {};
    double modelview[16] = {};
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    // How clip coordinate `row` depends on track coordinate `column` (0 for x, 1 for y, 3 for neither).
    auto const factor = [&](int row, int column) {
        double sum = 0.0;
        for (int k = 0; k < 4; ++k) {
            sum += projection[k * 4 + row] * modelview[column * 4 + k];
        }
        return sum;
    };
    constexpr double lowest = -1.0;
    constexpr double highest = 3.0;
    constexpr double lineThickness = 1.0;

    TrackIndex::Extent seen{-std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::infinity()};
    for (double const side : {1.0, -1.0}) {
        // A point is inside this side of the view where perX * x + perY * y + rest >= 0.
        double const perX = factor(3, 0) + side * factor(0, 0);
        double const perY = factor(3, 1) + side * factor(0, 1);
        double const rest = factor(3, 3) + side * factor(0, 3);
        double const border = -(rest + std::max(perY * lowest, perY * highest)) / perX;
        if (perX > 0.0) {
            seen.left = std::max(seen.left, border - lineThickness);
        } else if (perX < 0.0) {
            seen.right = std::min(seen.right, border + lineThickness);
        }
    }
    return seen;
}

}  // namespace

float Song::getNoteHeight(Notes::NoteID const& note) {
    return 0.2857143f * static_cast<float>(note);
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
    auto const fadesToBlack = [this](MarkPlace const& place) {
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
    LineGroups lines;
    track.visit(visibleStretch(), [&](std::size_t first, std::size_t last) {
        for (std::size_t i = first; i < last; ++i) {
            int const slot = static_cast<int>(i);
            if (i % slotsPerBar == 0) {
                float const x = -0.5f * slotWidth + static_cast<float>(slot) * slotWidth;
                lines.pen(staffLineWidth, 1.0f);
                lines.line(x, barBottom, x, barTop);
            }
            for (NoteMark const& mark : slots[i]) {
                drawMark(mark, slot, slotWidth, noteFill, lines);
            }
        }
    });
}

void Song::indexTrack() {
    std::vector<TrackIndex::Extent> extents;
    extents.reserve(slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        // The slot itself: bar line, the beginnings of its notes, and the penalty marks that may come.
        int const slot = static_cast<int>(i);
        double const centre = static_cast<double>(slot) * slotWidth;
        TrackIndex::Extent extent{centre - 0.5 * slotWidth, centre + 0.5 * slotWidth};
        for (NoteMark const& mark : slots[i]) {
            double const end = spanOf(mark, slot, slotWidth, noteFill).end;
            extent.cover({end, end});
        }
        extents.push_back(extent);
    }
    track.build(extents);
}
