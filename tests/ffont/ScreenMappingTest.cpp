#include "platform/ffont/ScreenMapping.h"

#include <cmath>
#include <limits>

#include <GL/gl.h>
#include <GL/glu.h>
#include <gtest/gtest.h>

#include "tests/ffont/WorldView.h"
#include "tests/support/OffscreenGL.h"

namespace {

class ScreenMappingInContext : public testing::Test {
protected:
    // Where OpenGL itself says that a point of the plane falls.
    ScreenMapping::Point projected(double x, double y) const {
        double modelview[16];
        double projection[16];
        int viewport[4];
        glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
        glGetDoublev(GL_PROJECTION_MATRIX, projection);
        glGetIntegerv(GL_VIEWPORT, viewport);
        ScreenMapping::Point pixels{};
        double depth = 0.0;
        gluProject(x, y, 0.0, modelview, projection, viewport, &pixels.x, &pixels.y, &depth);
        return pixels;
    }

    const OffscreenGL gl{640, 480};
};

}  // namespace

TEST(ScreenMapping, ShowsNothingWithoutAContext) {
    const ScreenMapping mapping;
    EXPECT_FALSE(mapping.visible());
    EXPECT_FALSE(mapping.aligned());
}

TEST_F(ScreenMappingInContext, WorldInFrontOfTheCameraIsAlignedAndNotParallel) {
    const WorldView view(gl);
    glTranslatef(1.25F, -0.5F, 0.0F);
    const ScreenMapping mapping;
    EXPECT_TRUE(mapping.visible());
    EXPECT_TRUE(mapping.aligned());
    EXPECT_FALSE(mapping.parallel());
    EXPECT_NEAR(mapping.scaleAt({0.0, 0.0}).x, view.pixelsPerUnit(), 1e-3);
    EXPECT_NEAR(mapping.scaleAt({0.0, 0.0}).y, view.pixelsPerUnit(), 1e-3);
    EXPECT_NEAR(mapping.toPixels({-2.0, 3.0}).x, projected(-2.0, 3.0).x, 1e-3);
    EXPECT_NEAR(mapping.toPixels({-2.0, 3.0}).y, projected(-2.0, 3.0).y, 1e-3);
    const ScreenMapping::Point back = mapping.toPlane(mapping.toPixels({-2.0, 3.0}));
    EXPECT_NEAR(back.x, -2.0, 1e-9);
    EXPECT_NEAR(back.y, 3.0, 1e-9);
}

TEST_F(ScreenMappingInContext, IdentityIsAlignedAndParallel) {
    viewScreen();
    glViewport(10, 20, 300, 100);
    const ScreenMapping mapping;
    EXPECT_TRUE(mapping.aligned());
    EXPECT_TRUE(mapping.parallel());
    EXPECT_DOUBLE_EQ(mapping.scaleAt({0.0, 0.0}).x, 150.0);
    EXPECT_DOUBLE_EQ(mapping.scaleAt({0.0, 0.0}).y, 50.0);
    EXPECT_DOUBLE_EQ(mapping.toPixels({-1.0, -1.0}).x, 10.0);
    EXPECT_DOUBLE_EQ(mapping.toPixels({1.0, 1.0}).y, 120.0);
    EXPECT_TRUE(mapping.inViewport(300.0, 110.0, 400.0, 200.0));
    EXPECT_FALSE(mapping.inViewport(311.0, 30.0, 400.0, 40.0));
    EXPECT_FALSE(mapping.inViewport(0.0, 30.0, 9.0, 40.0));
    EXPECT_FALSE(mapping.inViewport(20.0, 0.0, 30.0, 19.0));
    EXPECT_FALSE(mapping.inViewport(20.0, 121.0, 30.0, 130.0));
}

TEST_F(ScreenMappingInContext, TurnedShearedMirroredOrTiltedIsNotAligned) {
    const WorldView view(gl);
    const auto alignedAfter = [](auto transform) {
        glPushMatrix();
        transform();
        const ScreenMapping mapping;
        glPopMatrix();
        EXPECT_TRUE(mapping.visible());
        return mapping.aligned();
    };
    EXPECT_TRUE(alignedAfter([] { glScalef(2.0F, 3.0F, 1.0F); }));
    EXPECT_FALSE(alignedAfter([] { glRotatef(1.0F, 0.0F, 0.0F, 1.0F); }));
    EXPECT_FALSE(alignedAfter([] { glRotatef(180.0F, 0.0F, 0.0F, 1.0F); }));
    EXPECT_FALSE(alignedAfter([] { glRotatef(5.0F, 0.0F, 1.0F, 0.0F); }));
    EXPECT_FALSE(alignedAfter([] { glRotatef(5.0F, 1.0F, 0.0F, 0.0F); }));
    const double alongX[] = {1, 0, 0, 0, 0.2, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const double alongY[] = {1, 0.2, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    EXPECT_FALSE(alignedAfter([&] { glMultMatrixd(alongX); }));
    EXPECT_FALSE(alignedAfter([&] { glMultMatrixd(alongY); }));
    EXPECT_FALSE(alignedAfter([] { glScalef(-1.0F, 1.0F, 1.0F); }));
    EXPECT_FALSE(alignedAfter([] { glScalef(1.0F, -1.0F, 1.0F); }));
    EXPECT_FALSE(alignedAfter([] { glScalef(0.0F, 0.0F, 0.0F); }));
    EXPECT_FALSE(alignedAfter([] { glTranslatef(0.0F, 0.0F, 20.0F); }));
}

TEST_F(ScreenMappingInContext, ScaleOfATiltedPlaneIsTheLocalOne) {
    const WorldView view(gl);
    glTranslatef(1.0F, 0.5F, 0.0F);
    glRotatef(50.0F, 0.3F, 1.0F, 0.2F);
    const ScreenMapping mapping;
    for (const auto& at : {ScreenMapping::Point{0.0, 0.0}, {1.0, -1.0}, {-2.0, 0.5}}) {
        const double step = 1e-5;
        const auto middle = projected(at.x, at.y);
        const auto alongX = projected(at.x + step, at.y);
        const auto alongY = projected(at.x, at.y + step);
        const ScreenMapping::Point scale = mapping.scaleAt(at);
        EXPECT_NEAR(scale.x, std::hypot(alongX.x - middle.x, alongX.y - middle.y) / step, 0.01);
        EXPECT_NEAR(scale.y, std::hypot(alongY.x - middle.x, alongY.y - middle.y) / step, 0.01);
    }
}

TEST_F(ScreenMappingInContext, BehindTheEyeThereIsNoScale) {
    const WorldView view(gl);
    glTranslatef(0.0F, 0.0F, 20.0F);
    const ScreenMapping mapping;
    EXPECT_EQ(mapping.scaleAt({0.0, 0.0}).x, 0.0);
    EXPECT_EQ(mapping.scaleAt({0.0, 0.0}).y, 0.0);
}

TEST_F(ScreenMappingInContext, ShowsNothingInAnEmptyViewportOrThroughABrokenMatrix) {
    viewScreen();
    glViewport(0, 0, 0, 480);
    EXPECT_FALSE(ScreenMapping().visible());
    glViewport(0, 0, 640, 480);
    EXPECT_TRUE(ScreenMapping().visible());
    glScalef(std::numeric_limits<float>::quiet_NaN(), 1.0F, 1.0F);
    EXPECT_FALSE(ScreenMapping().visible());
}
