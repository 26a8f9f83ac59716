#include "scene/InteractiveCameraView.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int leftButton = 0;
constexpr int middleButton = 1;
constexpr int rightButton = 2;

using Vec3 = tavi::Vec3<double>;

class TestView : public InteractiveCameraView {
public:
    using CameraCommon::fieldOfView;
    using CameraCommon::orbitOrigin;
    using CameraCommon::orientation;
    using CameraCommon::position;

    int width() override { return 800; }
    int height() override { return 400; }
    bool shiftActive() override { return shift; }
    void refresh() override { ++refreshes; }

    bool shift = false;
    int refreshes = 0;
};

class InteractiveCameraViewTest : public testing::Test {
protected:
    /// A drag by (`dx`, `dy`) pixels with `button` held.
    void drag(int button, int dx, int dy) {
        view.mouse(button, true, 100, 100);
        view.motion(100 + dx, 100 + dy);
        view.mouse(button, false, 100 + dx, 100 + dy);
    }
    void expectPosition(Vec3 const& expected) {
        EXPECT_NEAR(view.position.x, expected.x, 1e-12);
        EXPECT_NEAR(view.position.y, expected.y, 1e-12);
        EXPECT_NEAR(view.position.z, expected.z, 1e-12);
    }
    /// Where the camera sees `world`.
    Vec3 seen(Vec3 const& world) { return view.orientation.conj().rotate(world - view.position); }
    void expectFreshPose() {
        expectPosition({0.0, 0.0, 10.0});
        EXPECT_EQ(view.orientation.scalar(), 1.0);
        EXPECT_EQ(view.orientation.vector(), Vec3(0.0, 0.0, 0.0));
    }

    TestView view;
};

TEST_F(InteractiveCameraViewTest, MouseEventsAreConsumed) {
    EXPECT_EQ(view.mouse(leftButton, true, 1, 2), 1);
    EXPECT_EQ(view.mouse(leftButton, false, 1, 2), 1);
}

TEST_F(InteractiveCameraViewTest, AnOrbitKeepsTheOriginWhereItIsSeen) {
    view.position = {1.0, 2.0, 10.0};
    Vec3 const before = seen({0.0, 0.0, 0.0});
    double const distance = std::sqrt(view.position.dot(view.position));
    drag(middleButton, 130, -70);
    Vec3 const after = seen({0.0, 0.0, 0.0});
    EXPECT_NEAR(after.x, before.x, 1e-12);
    EXPECT_NEAR(after.y, before.y, 1e-12);
    EXPECT_NEAR(after.z, before.z, 1e-12);
    EXPECT_NEAR(std::sqrt(view.position.dot(view.position)), distance, 1e-12);
    EXPECT_GT(std::abs(view.position.x - 1.0), 0.1) << "the camera did not move at all";
}

TEST_F(InteractiveCameraViewTest, AnOrbitTurnsByOneRadianForADragOfOneWindowHeight) {
    drag(middleButton, 400, 0);  // about y by -1
    expectPosition({-10.0 * std::sin(1.0), 0.0, 10.0 * std::cos(1.0)});
}

TEST_F(InteractiveCameraViewTest, AVerticalOrbitDividesByTheHeightToo) {
    drag(middleButton, 0, 400);  // about x by -1
    expectPosition({0.0, 10.0 * std::sin(1.0), 10.0 * std::cos(1.0)});
}

TEST_F(InteractiveCameraViewTest, AnOrbitTurnsAboutTheWorldsYAxisAndTheCamerasXAxis) {
    view.orientation = tavi::Quaternion::rod({0.4, 0.2, 0.1});
    tavi::Quaternion const expected =
        tavi::Quaternion::rod({0.0, -0.25, 0.0}) * view.orientation * tavi::Quaternion::rod({-0.5, 0.0, 0.0});
    drag(middleButton, 100, 200);
    EXPECT_EQ(view.orientation.scalar(), expected.scalar());
    EXPECT_EQ(view.orientation.vector(), expected.vector());
}

TEST_F(InteractiveCameraViewTest, ATurnInPlaceGoesTheOtherWayAndDoesNotMoveTheCamera) {
    view.orbitOrigin = false;
    view.orientation = tavi::Quaternion::rod({0.4, 0.2, 0.1});
    tavi::Quaternion const expected =
        tavi::Quaternion::rod({0.0, 0.25, 0.0}) * view.orientation * tavi::Quaternion::rod({0.5, 0.0, 0.0});
    drag(middleButton, 100, 200);
    EXPECT_EQ(view.orientation.scalar(), expected.scalar());
    EXPECT_EQ(view.orientation.vector(), expected.vector());
    expectPosition({0.0, 0.0, 10.0});
}

TEST_F(InteractiveCameraViewTest, ARightDragOfOneWindowHeightMovesTenUnitsAlongTheAxis) {
    drag(rightButton, 0, 400);
    expectPosition({0.0, 0.0, 20.0});
    drag(rightButton, 123, -800);
    expectPosition({0.0, 0.0, 0.0});
    drag(rightButton, 0, -40);
    expectPosition({0.0, 0.0, -1.0});
}

TEST_F(InteractiveCameraViewTest, ADollyFollowsTheCamerasOwnAxis) {
    view.orientation = tavi::Quaternion::rod({0.0, std::acos(-1.0) / 2.0, 0.0});
    drag(rightButton, 0, 400);
    expectPosition({10.0, 0.0, 10.0});
}

TEST_F(InteractiveCameraViewTest, APanMovesTheSceneWithThePointer) {
    view.shift = true;
    double const scale = 2.0 * std::tan(22.5 * std::acos(-1.0) / 180.0) * 10.0 + 0.01;
    EXPECT_NEAR(scale, 8.294, 0.001);
    drag(middleButton, 100, 0);
    expectPosition({-0.25 * scale, 0.0, 10.0});
    drag(middleButton, 0, 200);
    expectPosition({-0.25 * scale, 0.5 * scale, 10.0});
}

TEST_F(InteractiveCameraViewTest, APanAtTheOriginKeepsItsLeastSpeed) {
    view.shift = true;
    view.position = {0.0, 0.0, 0.0};
    drag(middleButton, 400, 0);
    expectPosition({-0.01, 0.0, 0.0});
}

TEST_F(InteractiveCameraViewTest, APanWithoutAnOrbitHasAFixedRate) {
    view.shift = true;
    view.orbitOrigin = false;
    drag(middleButton, 400, 200);
    expectPosition({-1.0, 0.5, 10.0});
}

TEST_F(InteractiveCameraViewTest, EachMotionCountsFromTheOneBefore) {
    view.mouse(rightButton, true, 0, 0);
    view.motion(0, 40);
    view.motion(0, 40);
    view.motion(0, 80);
    expectPosition({0.0, 0.0, 12.0});
}

TEST_F(InteractiveCameraViewTest, ALeftDragAndTheBarePointerMoveNothing) {
    drag(leftButton, 50, 60);
    view.motion(300, 300);
    expectFreshPose();
}

TEST_F(InteractiveCameraViewTest, AfterTheReleaseADragMovesNothing) {
    view.mouse(rightButton, true, 0, 0);
    view.mouse(rightButton, false, 0, 0);
    view.motion(0, 400);
    expectFreshPose();
}

TEST_F(InteractiveCameraViewTest, EveryMotionAsksForARedraw) {
    view.motion(1, 1);
    drag(middleButton, 5, 5);
    drag(rightButton, 5, 5);
    EXPECT_EQ(view.refreshes, 3);
}

TEST(InteractiveCameraView, ADragNeedsNobodyToRedraw) {
    struct Plain : InteractiveCameraView {
        using CameraCommon::position;
        int width() override { return 800; }
        int height() override { return 400; }
        bool shiftActive() override { return false; }
    } plain;
    plain.refresh();
    EXPECT_EQ(plain.position, Vec3(0.0, 0.0, 10.0));
    plain.mouse(rightButton, true, 0, 0);
    plain.motion(0, 400);
    EXPECT_EQ(plain.position, Vec3(0.0, 0.0, 20.0));
}

}  // namespace
