#include "platform/ffont/ScreenMapping.h"

#include <cmath>

#include <GL/gl.h>

namespace {

// A slant of less than a hundredth of a pixel over a screen's width.
const double alignmentTolerance = 2e-6;

bool negligible(double value, double against) {
    return std::abs(value) <= alignmentTolerance * std::abs(against);
}

}  // namespace

ScreenMapping::ScreenMapping() {
    Matrix projection{};
    Matrix modelview{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    glGetDoublev(GL_PROJECTION_MATRIX, projection.data());
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview.data());
    clipX = rowOf(projection, modelview, 0);
    clipY = rowOf(projection, modelview, 1);
    clipW = rowOf(projection, modelview, 3);
    parallelProjection = projection[3] == 0.0 && projection[7] == 0.0 && projection[11] == 0.0;

    bool finite = true;
    for (const Row& row : {clipX, clipY, clipW}) {
        finite = finite && std::isfinite(row.x) && std::isfinite(row.y) && std::isfinite(row.one);
    }
    anythingVisible = finite && viewport[2] > 0 && viewport[3] > 0;
    alongPixels = anythingVisible && clipW.one > 0.0 && clipX.x > 0.0 && clipY.y > 0.0 &&
                  negligible(clipX.y, clipX.x) && negligible(clipY.x, clipY.y) &&
                  negligible(clipW.x, clipW.one) && negligible(clipW.y, clipW.one);
    if (alongPixels) {
        scale = {clipX.x / clipW.one * viewport[2] / 2, clipY.y / clipW.one * viewport[3] / 2};
        origin = {viewport[0] + (clipX.one / clipW.one + 1.0) * viewport[2] / 2,
                  viewport[1] + (clipY.one / clipW.one + 1.0) * viewport[3] / 2};
    }
}

// Without the z column, as z is 0 in the plane.
ScreenMapping::Row ScreenMapping::rowOf(const Matrix& projection, const Matrix& modelview, int row) const {
    const auto entry = [&](std::size_t column) {
        double sum = 0.0;
        for (std::size_t k = 0; k < 4; ++k) {
            sum += projection[k * 4 + static_cast<std::size_t>(row)] * modelview[column * 4 + k];
        }
        return sum;
    };
    return {entry(0), entry(1), entry(3)};
}

ScreenMapping::Point ScreenMapping::scaleAt(Point at) const {
    if (alongPixels) {
        return scale;
    }
    const double w = clipW.at(at);
    if (!(w > 0.0)) {
        return {0.0, 0.0};
    }
    // Derivatives of clip/w along x and y, in pixels.
    const double screenX = clipX.at(at) / w;
    const double screenY = clipY.at(at) / w;
    const double halfWidth = viewport[2] / 2.0;
    const double halfHeight = viewport[3] / 2.0;
    return {std::hypot((clipX.x - screenX * clipW.x) / w * halfWidth,
                       (clipY.x - screenY * clipW.x) / w * halfHeight),
            std::hypot((clipX.y - screenX * clipW.y) / w * halfWidth,
                       (clipY.y - screenY * clipW.y) / w * halfHeight)};
}

ScreenMapping::Point ScreenMapping::toPixels(Point inPlane) const {
    return {origin.x + inPlane.x * scale.x, origin.y + inPlane.y * scale.y};
}

ScreenMapping::Point ScreenMapping::toPlane(Point pixels) const {
    return {(pixels.x - origin.x) / scale.x, (pixels.y - origin.y) / scale.y};
}

bool ScreenMapping::inViewport(double left, double bottom, double right, double top) const {
    return right >= viewport[0] && left <= viewport[0] + viewport[2] && top >= viewport[1] &&
           bottom <= viewport[1] + viewport[3];
}
