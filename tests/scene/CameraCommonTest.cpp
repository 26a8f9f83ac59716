#include "scene/CameraCommon.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/RecordingGL.h"

namespace {

class TestCamera : public CameraCommon {
public:
    using CameraCommon::fieldOfView;
    using CameraCommon::orbitOrigin;
    using CameraCommon::orientation;
    using CameraCommon::orthographic;
    using CameraCommon::position;
    using CameraCommon::zFar;
    using CameraCommon::zNear;

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

    RecordingGL gl;
    TestCamera camera;
};

TEST_F(CameraCommonTest, AFreshCameraLooksAtTheOriginFromTenUnitsInPerspective) {
    EXPECT_TRUE(camera.orbitOrigin);
    EXPECT_EQ(camera.zNear, 0.1);
    EXPECT_EQ(camera.zFar, 100.0);
    EXPECT_FALSE(camera.orthographic);
    EXPECT_EQ(camera.fieldOfView, 45.0);
    EXPECT_EQ(camera.position, tavi::Vec3<double>(0.0, 0.0, 10.0));
    EXPECT_EQ(camera.orientation.scalar(), 1.0);
    EXPECT_EQ(camera.orientation.vector(), tavi::Vec3<double>(0.0, 0.0, 0.0));

    load();
    expectNear(seen({0.0, 0.0, 0.0}), {0.0, 0.0, -10.0}, 1e-12);
    EXPECT_NEAR(onScreen({0.0, 0.0, 0.0}).x, 0.0, 1e-12);
    EXPECT_NEAR(onScreen({0.0, 0.0, 0.0}).y, 0.0, 1e-12);
}

TEST_F(CameraCommonTest, PerspectiveShows45DegreesFromTopToBottomAndTheAspectAcross) {
    load();
    EXPECT_EQ(camera.aspect(), 640.0 / 480.0);
    const double halfHeight = 10.0 * std::tan(22.5 * std::acos(-1.0) / 180.0);
    const tavi::Vec3<double> corner = onScreen({halfHeight * 640.0 / 480.0, halfHeight, 0.0});
    EXPECT_NEAR(corner.x, 1.0, 1e-9);
    EXPECT_NEAR(corner.y, 1.0, 1e-9);
    // The near and far planes are the ends of the depth range.
    EXPECT_NEAR(onScreen({0.0, 0.0, 10.0 - 0.1}).z, -1.0, 1e-9);
    EXPECT_NEAR(onScreen({0.0, 0.0, 10.0 - 100.0}).z, 1.0, 1e-9);
}

TEST_F(CameraCommonTest, OrthographicShowsTwoUnitsFromTopToBottomAtAnyDistance) {
    camera.orthographic = true;
    load();
    for (const double z : {0.0, -50.0}) {
        const tavi::Vec3<double> corner = onScreen({640.0 / 480.0, 1.0, z});
        EXPECT_NEAR(corner.x, 1.0, 1e-9);
        EXPECT_NEAR(corner.y, 1.0, 1e-9);
    }
    EXPECT_NEAR(onScreen({0.0, 0.0, 10.0 - 0.1}).z, -1.0, 1e-9);
    EXPECT_NEAR(onScreen({0.0, 0.0, 10.0 - 100.0}).z, 1.0, 1e-9);
}

TEST_F(CameraCommonTest, TheModelviewUndoesTheCamerasPose) {
    camera.position = {1.0, -2.0, 3.0};
    camera.orientation = tavi::Quaternion::rod({0.3, -0.8, 0.5});
    load();
    expectNear(seen({1.0, -2.0, 3.0}), {0.0, 0.0, 0.0}, 1e-9);
    const tavi::Vec3<double> ahead = camera.position + camera.orientation.rotate({0.0, 0.0, -5.0});
    expectNear(seen(ahead), {0.0, 0.0, -5.0}, 1e-9);
    const tavi::Vec3<double> right = camera.position + camera.orientation.rotate({2.0, 0.0, 0.0});
    expectNear(seen(right), {2.0, 0.0, 0.0}, 1e-9);
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
