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
    static void expectNear(const Vec3& actual, const Vec3& expected) {
        EXPECT_NEAR(actual.x, expected.x, 1e-12);
        EXPECT_NEAR(actual.y, expected.y, 1e-12);
        EXPECT_NEAR(actual.z, expected.z, 1e-12);
    }
    void expectPosition(const Vec3& expected) { expectNear(view.position, expected); }
    /// Where the camera sees `world`.
    Vec3 seen(const Vec3& world) { return view.orientation.conj().rotate(world - view.position); }

    TestView view;
};

TEST_F(InteractiveCameraViewTest, AnOrbitKeepsTheOriginWhereItIsSeen) {
    view.position = {1.0, 2.0, 10.0};
    const Vec3 before = seen({0.0, 0.0, 0.0});
    const double distance = std::sqrt(view.position.dot(view.position));
    drag(middleButton, 130, -70);
    expectNear(seen({0.0, 0.0, 0.0}), before);
    EXPECT_NEAR(std::sqrt(view.position.dot(view.position)), distance, 1e-12);
    EXPECT_GT(std::abs(view.position.x - 1.0), 0.1) << "the camera did not move at all";
}

TEST_F(InteractiveCameraViewTest, AnOrbitTurnsByOneRadianForADragOfOneWindowHeight) {
    drag(middleButton, 400, 0);  // about y by -1
    expectPosition({-10.0 * std::sin(1.0), 0.0, 10.0 * std::cos(1.0)});
    drag(middleButton, -400, 0);
    drag(middleButton, 0, 400);  // about x by -1
    expectPosition({0.0, 10.0 * std::sin(1.0), 10.0 * std::cos(1.0)});
}

TEST_F(InteractiveCameraViewTest, ATurnIsAboutTheWorldsYAxisAndTheCamerasXAxisAndInPlaceTheOtherWay) {
    for (const bool orbit : {true, false}) {
        view.orbitOrigin = orbit;
        view.position = {0.0, 0.0, 10.0};
        view.orientation = tavi::Quaternion::rod({0.4, 0.2, 0.1});
        const double sign = orbit ? -1.0 : 1.0;
        const tavi::Quaternion expected = tavi::Quaternion::rod({0.0, sign * 0.25, 0.0}) * view.orientation *
                                          tavi::Quaternion::rod({sign * 0.5, 0.0, 0.0});
        drag(middleButton, 100, 200);
        EXPECT_EQ(view.orientation.scalar(), expected.scalar());
        EXPECT_EQ(view.orientation.vector(), expected.vector());
    }
    expectPosition({0.0, 0.0, 10.0});
}

TEST_F(InteractiveCameraViewTest, ARightDragOfOneWindowHeightMovesTenUnitsAlongTheCamerasAxis) {
    drag(rightButton, 123, -800);
    expectPosition({0.0, 0.0, -10.0});
    drag(rightButton, 0, 800);
    view.orientation = tavi::Quaternion::rod({0.0, std::acos(-1.0) / 2.0, 0.0});
    drag(rightButton, 0, 400);
    expectPosition({10.0, 0.0, 10.0});
}

TEST_F(InteractiveCameraViewTest, APanMovesTheSceneWithThePointerAndScalesByTheCamerasDistanceAlongItsAxis) {
    view.shift = true;
    const double perUnit = 2.0 * std::tan(22.5 * std::acos(-1.0) / 180.0);
    double scale = perUnit * 10.0 + 0.01;
    drag(middleButton, 100, 200);
    expectPosition({-0.25 * scale, 0.5 * scale, 10.0});
    view.position = {5.0, 3.0, 2.0};
    view.orientation = tavi::Quaternion::rod({0.0, std::acos(-1.0) / 2.0, 0.0});  // the axis is world x
    scale = perUnit * 5.0 + 0.01;
    drag(middleButton, 100, 200);
    expectPosition({5.0, 3.0 + 0.5 * scale, 2.0 + 0.25 * scale});
}

TEST_F(InteractiveCameraViewTest, APanAtTheOriginKeepsItsLeastSpeedAndHasAFixedRateWithoutAnOrbit) {
    view.shift = true;
    view.position = {0.0, 0.0, 0.0};
    drag(middleButton, 400, 0);
    expectPosition({-0.01, 0.0, 0.0});
    view.orbitOrigin = false;
    view.position = {0.0, 0.0, 10.0};
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

TEST_F(InteractiveCameraViewTest, ALeftDragAndTheBarePointerMoveNothingButAreConsumed) {
    EXPECT_EQ(view.mouse(leftButton, true, 0, 0), 1);
    view.motion(50, 60);
    EXPECT_EQ(view.mouse(leftButton, false, 50, 60), 1);
    drag(rightButton, 0, 0);
    view.motion(300, 300);
    expectPosition({0.0, 0.0, 10.0});
    EXPECT_EQ(view.orientation.vector(), Vec3(0.0, 0.0, 0.0));
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
