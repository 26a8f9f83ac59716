#include "scene/CameraCommon.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/RecordingGL.h"

namespace {

class TestCamera : public CameraCommon {
public:
    using CameraCommon::orientation;
    using CameraCommon::orthographic;
    using CameraCommon::position;

    int width() override { return 640; }
    int height() override { return 480; }
};

/// Where `matrix` takes a point, divided by w.
tavi::Vec3<double> transformed(const RecordingGL::Matrix& m, const tavi::Vec3<double>& p) {
    const auto row = [&](std::size_t i) { return m[i] * p.x + m[4 + i] * p.y + m[8 + i] * p.z + m[12 + i]; };
    return {row(0) / row(3), row(1) / row(3), row(2) / row(3)};
}

void expectNear(const tavi::Vec3<double>& actual, const tavi::Vec3<double>& expected, double tolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

class CameraCommonTest : public testing::Test {
protected:
    void load() {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        camera.applyProjection();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        camera.applyModelview();
    }
    tavi::Vec3<double> seen(const tavi::Vec3<double>& world) const {
        return transformed(gl.modelview(), world);
    }
    tavi::Vec3<double> onScreen(const tavi::Vec3<double>& world) const {
        return transformed(gl.projection(), seen(world));
    }
    /// The world's point is seen in the upper right corner.
    void expectCorner(const tavi::Vec3<double>& world) const {
        expectNear(onScreen(world), {1.0, 1.0, onScreen(world).z}, 1e-9);
    }
    /// The near and far planes are its ends.
    void expectDepthRange() const {
        expectNear(onScreen({0.0, 0.0, 10.0 - 0.1}), {0.0, 0.0, -1.0}, 1e-9);
        expectNear(onScreen({0.0, 0.0, 10.0 - 100.0}), {0.0, 0.0, 1.0}, 1e-9);
    }

    RecordingGL gl;
    TestCamera camera;
};

TEST_F(CameraCommonTest, AFreshCameraShows45DegreesFromTopToBottomTenUnitsFromTheOriginAndTheAspectAcross) {
    load();
    EXPECT_EQ(camera.aspect(), 640.0 / 480.0);
    const double halfHeight = 10.0 * std::tan(22.5 * std::acos(-1.0) / 180.0);
    expectCorner({halfHeight * 640.0 / 480.0, halfHeight, 0.0});
    expectDepthRange();
}

TEST_F(CameraCommonTest, OrthographicShowsTwoUnitsFromTopToBottomAtAnyDistance) {
    camera.orthographic = true;
    load();
    expectCorner({640.0 / 480.0, 1.0, 0.0});
    expectCorner({640.0 / 480.0, 1.0, -50.0});
    expectDepthRange();
}

TEST_F(CameraCommonTest, TheModelviewUndoesTheCamerasPose) {
    camera.position = {1.0, -2.0, 3.0};
    camera.orientation = tavi::Quaternion::rod({0.3, -0.8, 0.5});
    load();
    expectNear(seen({1.0, -2.0, 3.0}), {0.0, 0.0, 0.0}, 1e-9);
    const tavi::Vec3<double> aheadToTheRight{2.0, 0.0, -5.0};
    expectNear(seen(camera.position + camera.orientation.rotate(aheadToTheRight)), aheadToTheRight, 1e-9);
}

TEST_F(CameraCommonTest, MultipliesIntoTheCurrentMatrixAndClearsNothing) {
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0.0f, 0.0f, -1.0f);
    camera.applyModelview();
    expectNear(seen({0.0, 0.0, 0.0}), {0.0, 0.0, -11.0}, 1e-12);
    EXPECT_TRUE(gl.errors().empty());
}

}  // namespace
