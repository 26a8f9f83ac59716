#include "platform/tmath/Quaternion.h"

#include <array>
#include <cmath>

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordingGL.h"

using tavi::Quaternion;
using tavi::Vec3;

namespace {

const double roundingError = 1e-14;

void expectNear(const Vec3<double>& actual, const Vec3<double>& expected, double error = roundingError) {
    EXPECT_NEAR(actual.x, expected.x, error);
    EXPECT_NEAR(actual.y, expected.y, error);
    EXPECT_NEAR(actual.z, expected.z, error);
}

// Rodrigues' formula: an independent way to the same rotation.
Vec3<double> rodrigues(const Vec3<double>& rotation, const Vec3<double>& point) {
    const double angle = std::sqrt(rotation.dot(rotation));
    const Vec3<double> axis = rotation * (1.0 / angle);
    return point * std::cos(angle) + axis.cross(point) * std::sin(angle) +
           axis * (axis.dot(point) * (1.0 - std::cos(angle)));
}

}  // namespace

TEST(Quaternion, ProductIsHamiltons) {
    const Quaternion product = Quaternion(1.0, {2.0, 3.0, 4.0}) * Quaternion(5.0, {6.0, 7.0, 8.0});
    EXPECT_EQ(product.scalar(), -60.0);
    EXPECT_EQ(product.vector(), Vec3<double>(12.0, 30.0, 24.0));
}

TEST(Quaternion, ConjugateTurnsBack) {
    const Quaternion turn = Quaternion::rod({0.3, -0.7, 1.1});
    EXPECT_EQ(turn.conj().scalar(), turn.scalar());
    EXPECT_EQ(turn.conj().vector(), turn.vector() * -1.0);
    expectNear(turn.conj().rotate(turn.rotate({1.0, 2.0, 3.0})), {1.0, 2.0, 3.0});
}

TEST(Quaternion, RodTurnsByTheVectorsLengthInRadians) {
    for (const Vec3<double>& rotation :
         {Vec3<double>(0.1, 0.2, -0.3), Vec3<double>(-2.0, 1.0, 0.5), Vec3<double>(0.0, 5.0, 0.0)}) {
        expectNear(Quaternion::rod(rotation).rotate({1.0, -2.0, 0.5}), rodrigues(rotation, {1.0, -2.0, 0.5}));
    }
}

TEST(Quaternion, RodOfTheZeroVectorIsTheIdentityAndOfATinyOneStillARotation) {
    EXPECT_EQ(Quaternion::rod({0.0, 0.0, 0.0}).scalar(), 1.0);
    EXPECT_EQ(Quaternion::rod({0.0, 0.0, 0.0}).vector(), Vec3<double>(0.0, 0.0, 0.0));
    const Quaternion turn = Quaternion::rod({1e-200, 0.0, 0.0});
    EXPECT_EQ(turn.scalar(), 1.0);
    EXPECT_DOUBLE_EQ(turn.vector().x, 0.5e-200);
}

TEST(Quaternion, RotationKeepsLengthOverThousandsOfProducts) {
    Quaternion orientation;
    for (int drag = 0; drag < 10000; ++drag) {
        orientation = Quaternion::rod({0.0, -0.01, 0.0}) * orientation * Quaternion::rod({0.02, 0.0, 0.0});
    }
    const Vec3<double> turned = orientation.rotate({0.0, 0.0, 10.0});
    EXPECT_NEAR(std::sqrt(turned.dot(turned)), 10.0, 1e-9);
}

TEST(Quaternion, GlRotateMultipliesTheCurrentMatrix) {
    const RecordingGL gl;
    for (const Vec3<double>& rotation : {Vec3<double>(0.4, -1.2, 0.7), Vec3<double>(0.0, 4.0, 0.0),
                                         Vec3<double>(0.0, 0.0, -0.5), Vec3<double>(0.0, 0.0, 0.0)}) {
        const Quaternion turn = Quaternion::rod(rotation);
        glLoadIdentity();
        glTranslated(1.0, 2.0, 3.0);
        turn.glRotate();
        std::array<double, 16> matrix{};
        glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
        expectNear({matrix[0], matrix[1], matrix[2]}, turn.rotate({1.0, 0.0, 0.0}));
        expectNear({matrix[4], matrix[5], matrix[6]}, turn.rotate({0.0, 1.0, 0.0}));
        expectNear({matrix[8], matrix[9], matrix[10]}, turn.rotate({0.0, 0.0, 1.0}));
        expectNear({matrix[12], matrix[13], matrix[14]}, {1.0, 2.0, 3.0});
    }
    EXPECT_THAT(gl.errors(), testing::IsEmpty());
}
