#include "app/GLWindow.h"

#include <GL/freeglut.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/FakeGlut.h"
#include "tests/support/OffscreenGL.h"

namespace {

/// Writes down what reaches it.
class LoggingWindow : public GLWindow {
public:
    explicit LoggingWindow(std::vector<std::string>& events) : GLWindow(320, 200), log(events) {}

    bool keyboard(unsigned char key, int x, int y) override { return note("keyboard", key, x, y); }
    bool keyboardUp(unsigned char key, int x, int y) override { return note("keyboardUp", key, x, y); }
    int mouse(int button, bool down, int x, int y) override {
        const std::string what = down ? "press" : "release";
        return note(shiftActive() ? "shift " + what : what, button, x, y) ? 1 : 0;
    }
    void motion(int x, int y) override { note("motion", x, y); }
    void draw() override { note("draw"); }
    void idle() override { note("idle"); }
    void entry(int state) override { note("entry", state); }
    void closing() override { note("closing"); }

private:
    bool note(const std::string& what, int a = 0, int b = 0, int c = 0) {
        log.push_back(what + " " + std::to_string(a) + " " + std::to_string(b) + " " + std::to_string(c));
        return true;
    }

    std::vector<std::string>& log;
};

class GLWindowTest : public testing::Test {
protected:
    void SetUp() override { fakeglut::reset(320, 200); }

    /// Every event that GLUT has, once.
    static void everything() {
        const fakeglut::State& glut = fakeglut::state();
        glut.keyboard('f', 1, 2);
        glut.keyboardUp('r', 3, 4);
        glut.display();
        glut.close();
        glut.idle();
        glut.entry(GLUT_ENTERED);
        glut.reshape(10, 10);
        glut.motion(5, 6);
        glut.passive(7, 8);
        glut.mouse(GLUT_RIGHT_BUTTON, GLUT_DOWN, 10, 20);
    }

    std::vector<std::string> events;
};

TEST_F(GLWindowTest, OpensOneUntitledWindowWithAlphaDepthAndStencil) {
    const LoggingWindow window(events);
    const fakeglut::State& glut = fakeglut::state();
    EXPECT_EQ(glut.arguments, std::vector<std::string>{"program"});
    EXPECT_EQ(glut.initialWidth, 320);
    EXPECT_EQ(glut.initialHeight, 200);
    EXPECT_EQ(glut.displayMode, 0x3au);
    EXPECT_EQ(glut.title, "");
    EXPECT_EQ(glut.actionOnClose, GLUT_ACTION_GLUTMAINLOOP_RETURNS);
    EXPECT_EQ(glut.registered, (std::vector<std::string>{"keyboard", "keyboardUp", "display", "close", "idle",
                                                         "entry", "reshape", "motion", "passive", "mouse"}));
}

TEST_F(GLWindowTest, EveryCallbackReachesItsHandlerUntilTheWindowIsDestroyed) {
    auto window = std::make_unique<LoggingWindow>(events);
    everything();
    EXPECT_EQ(events, (std::vector<std::string>{"keyboard 102 1 2", "keyboardUp 114 3 4", "draw 0 0 0",
                                                "closing 0 0 0", "idle 0 0 0", "entry 1 0 0", "motion 5 6 0",
                                                "motion 7 8 0", "press 2 10 20"}));
    window.reset();
    events.clear();
    EXPECT_EQ(fakeglut::state().windowData, nullptr);
    everything();
    EXPECT_TRUE(events.empty());
}

TEST_F(GLWindowTest, DestructionAfterTheMainLoopReturnedCallsNothingOfGlut) {
    {
        const LoggingWindow window(events);
        fakeglut::shutDown();
    }
    EXPECT_EQ(fakeglut::state().timers, 0);
}

TEST_F(GLWindowTest, TheBasesOwnHandlersConsumeNoKeyAndDragTheCamera) {
    GLWindow window(320, 200);
    EXPECT_FALSE(window.keyboard('f', 0, 0));
    EXPECT_FALSE(window.keyboardUp('f', 0, 0));
    fakeglut::state().mouse(GLUT_RIGHT_BUTTON, GLUT_DOWN, 10, 20);
    EXPECT_EQ(fakeglut::state().redisplays, 0);
    fakeglut::state().motion(10, 40);
    EXPECT_EQ(fakeglut::state().redisplays, 1);
    fakeglut::state().passive(10, 60);
    EXPECT_EQ(fakeglut::state().redisplays, 2);
}

TEST_F(GLWindowTest, MouseGetsTheModifiersOfThatMomentWhichStayUntilTheNextButtonEvent) {
    LoggingWindow window(events);
    EXPECT_FALSE(window.shiftActive());
    fakeglut::state().modifiers = GLUT_ACTIVE_SHIFT | GLUT_ACTIVE_CTRL;
    fakeglut::state().keyboard('f', 0, 0);
    EXPECT_FALSE(window.shiftActive()) << "a key event must not refresh the modifiers";
    events.clear();
    fakeglut::state().mouse(GLUT_RIGHT_BUTTON, GLUT_DOWN, 10, 20);
    fakeglut::state().modifiers = GLUT_ACTIVE_CTRL;
    EXPECT_TRUE(window.shiftActive()) << "Shift let go since the last button event";
    fakeglut::state().mouse(GLUT_RIGHT_BUTTON, GLUT_UP, 11, 21);
    EXPECT_FALSE(window.shiftActive());
    EXPECT_EQ(events, (std::vector<std::string>{"shift press 2 10 20", "release 2 11 21"}));
}

TEST_F(GLWindowTest, LoopRunsAndLeavesGlutsMainLoop) {
    LoggingWindow window(events);
    fakeglut::state().mainLoop = [this] { events.emplace_back("loop"); };
    window.loop(true);
    EXPECT_EQ(events, std::vector<std::string>{"loop"});
    window.loop(false);
    EXPECT_EQ(fakeglut::state().loopsLeft, 1);
}

using Matrix = std::array<double, 16>;

Matrix current(GLenum name) {
    Matrix matrix{};
    glGetDoublev(name, matrix.data());
    return matrix;
}

/// Keeps the matrices in force while its scene is drawn.
class ProbingWindow : public GLWindow {
public:
    ProbingWindow() : GLWindow(64, 64) {}
    void drawScene() override {
        projection = current(GL_PROJECTION_MATRIX);
        modelview = current(GL_MODELVIEW_MATRIX);
        GLWindow::drawScene();
    }

    Matrix projection{};
    Matrix modelview{};
};

TEST_F(GLWindowTest, ReshapeChangesOnlyTheViewportAndTheProjectionFollowsInTheNextFrame) {
    OffscreenGL gl(64, 64);
    fakeglut::reset(64, 64);
    ProbingWindow window;
    EXPECT_DOUBLE_EQ(window.aspect(), 1.0);
    fakeglut::state().display();
    const double squareX = window.projection[0];

    const Matrix before = current(GL_PROJECTION_MATRIX);
    fakeglut::state().height = 32;
    fakeglut::state().reshape(64, 32);
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    EXPECT_EQ(viewport, (std::array<GLint, 4>{0, 0, 64, 32}));
    EXPECT_EQ(current(GL_PROJECTION_MATRIX), before);

    EXPECT_DOUBLE_EQ(window.aspect(), 2.0);
    fakeglut::state().display();
    EXPECT_NEAR(window.projection[0], squareX / 2.0, 1e-6);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(GLWindowTest, FrameClearsDrawsTheDefaultQuadAndSwaps) {
    OffscreenGL gl(64, 64);
    fakeglut::reset(64, 64);
    ProbingWindow window;
    glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
    fakeglut::state().display();
    EXPECT_EQ(fakeglut::state().swaps, 1);
    EXPECT_EQ(fakeglut::state().redisplays, 0) << "the base asks for no further frame";
    EXPECT_NEAR(window.modelview[14], -10.0, 1e-6);

    // The quad reaches one unit from the centre of a view of 2 * 10 * tan(22.5 degrees) units.
    const auto picture = gl.read();
    const auto red = [&picture](int x, int y) { return picture.at(x, y, 0); };
    EXPECT_EQ(red(32, 32), 255);
    EXPECT_EQ(red(32, 32 - 6), 255);
    EXPECT_EQ(red(32, 32 - 10), 0);
    EXPECT_EQ(red(2, 2), 0);
}

}  // namespace
