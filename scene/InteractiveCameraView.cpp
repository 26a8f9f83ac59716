#include "scene/InteractiveCameraView.h"

#include <cmath>

namespace {

// Values of buttonState.
constexpr int middleButton = 2;
constexpr int rightButton = 3;

constexpr double pi = 3.141592653589793;
constexpr double dollyUnitsPerHeight = 10.0;
constexpr double leastPanScale = 0.01;  // keeps a pan moving when the camera stands at the origin

using Vec3 = tavi::Vec3<double>;
using tavi::Quaternion;

}  // namespace

int InteractiveCameraView::mouse(int button, bool down, int x, int y) {
    buttonState = down ? button + 1 : 0;
    lastX = x;
    lastY = y;
    return 1;
}

void InteractiveCameraView::motion(int x, int y) {
    // Both by the height: a drag of one length turns the view by one amount, whichever way it goes.
    const double dx = (static_cast<double>(x) - lastX) / height();
    const double dy = (static_cast<double>(y) - lastY) / height();

    if (buttonState == middleButton) {
        if (shiftActive()) {
            pan(dx, dy);
        } else {
            turn(dx, dy);
        }
    } else if (buttonState == rightButton) {
        position += orientation.rotate(Vec3(0.0, 0.0, dy * dollyUnitsPerHeight));
    }
    lastX = x;
    lastY = y;
    refresh();
}

void InteractiveCameraView::refresh() {
}

// About the world's y axis and the camera's own x axis. An orbit and a turn in place go opposite ways.
void InteractiveCameraView::turn(double dx, double dy) {
    if (orbitOrigin) {
        const Vec3 originSeen = orientation.conj().rotate(Vec3(0.0, 0.0, 0.0) - position);
        orientation =
            Quaternion::rod(Vec3(0.0, -dx, 0.0)) * orientation * Quaternion::rod(Vec3(-dy, 0.0, 0.0));
        position = orientation.rotate(originSeen) * -1.0;
    } else {
        orientation = Quaternion::rod(Vec3(0.0, dx, 0.0)) * orientation * Quaternion::rod(Vec3(dy, 0.0, 0.0));
    }
}

void InteractiveCameraView::pan(double dx, double dy) {
    double scale = 1.0;
    if (orbitOrigin) {
        const double halfHeightAtUnitDistance = std::tan(fieldOfView * pi / 180.0 / 2.0);
        const double distance = orientation.rotate(Vec3(0.0, 0.0, 1.0)).dot(position);
        scale = 2.0 * halfHeightAtUnitDistance * distance + leastPanScale;
    }
    position += orientation.rotate(Vec3(-dx * scale, dy * scale, 0.0));
}
