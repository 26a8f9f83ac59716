#include "scene/Scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <string>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// Writes what happens to it into a list, and is complete once it has been animated `lifetime` times.
class Witness : public SceneObject {
public:
    Witness(std::string name_, std::vector<std::string>& log_, int lifetime_ = 1000)
        : name(std::move(name_)), log(log_), lifetime(lifetime_) {}
    ~Witness() override { log.push_back("gone " + name); }

    void draw() override { log.push_back("draw " + name); }
    bool isComplete() override { return lifetime <= 0; }
    void animate(double dtSeconds) override {
        --lifetime;
        log.push_back("animate " + name + " " + std::to_string(dtSeconds).substr(0, 4));
    }

private:
    std::string name;
    std::vector<std::string>& log;
    int lifetime;
};

class SceneTest : public testing::Test {
protected:
    boost::shared_ptr<SceneObject> witness(const std::string& name, int lifetime = 1000) {
        return boost::make_shared<Witness>(name, log, lifetime);
    }

    std::vector<std::string> log;  // outlives the scene, which writes into it
    Scene scene;
};

TEST_F(SceneTest, AnimatesAndDrawsInTheOrderOfAdding) {
    scene.animate(0.02);
    scene.draw();
    EXPECT_FALSE(scene.isComplete());
    scene.addObject(witness("A"));
    scene.addObject(witness("B"));
    scene.animate(0.25);
    scene.draw();
    EXPECT_THAT(log, ElementsAre("animate A 0.25", "animate B 0.25", "draw A", "draw B"));
}

TEST_F(SceneTest, DropsWhatItsAnimationCompletedAndKeepsTheOthersInOrder) {
    scene.addObject(witness("A"));
    scene.addObject(witness("B", 1));
    scene.addObject(witness("C"));
    scene.animate(0.25);
    EXPECT_THAT(log, ElementsAre("animate A 0.25", "animate B 0.25", "animate C 0.25", "gone B"));

    log.clear();
    scene.draw();
    EXPECT_THAT(log, ElementsAre("draw A", "draw C"));
}

TEST_F(SceneTest, KeepsACompleteObjectUntilTheNextAnimation) {
    scene.addObject(witness("A", 0));
    scene.draw();
    EXPECT_THAT(log, ElementsAre("draw A"));

    log.clear();
    scene.removeCompleted();
    EXPECT_THAT(log, ElementsAre("gone A"));
}

TEST_F(SceneTest, AnObjectHeldElsewhereSurvivesItsRemoval) {
    boost::shared_ptr<SceneObject> held = witness("A", 1);
    scene.addObject(held);
    scene.animate(0.25);
    log.clear();
    scene.draw();
    EXPECT_THAT(log, IsEmpty());

    held.reset();
    EXPECT_THAT(log, ElementsAre("gone A"));
}

TEST_F(SceneTest, ASceneInASceneIsAnimatedAndDrawnAndTakesItsObjectsWithItAtTheEnd) {
    auto inner = boost::make_shared<Scene>();
    inner->addObject(witness("A", 2));
    scene.addObject(inner);
    inner.reset();

    scene.animate(0.25);
    scene.draw();
    scene.animate(0.25);  // A goes, the scene around it stays
    scene.draw();
    EXPECT_THAT(log, ElementsAre("animate A 0.25", "draw A", "animate A 0.25", "gone A"));

    log.clear();
    {
        Scene other;
        other.addObject(witness("B"));
    }
    EXPECT_THAT(log, ElementsAre("gone B"));
}

TEST(SceneObject, IsNeverCompleteAndStandsStillUnlessItSaysOtherwise) {
    struct Still : SceneObject {
        void draw() override {}
    } still;
    still.animate(100.0);
    EXPECT_FALSE(still.isComplete());
}

}  // namespace
