#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "scene/SceneObject.h"

/// Objects that are animated and drawn together, in the order in which they were added. It shares them, and
/// drops those that are finished. A scene itself is never finished, so a scene inside a scene stays. Main
/// thread only.
///
///     scene.addObject(boost::make_shared<ScoreAnnotation>(x, y, font, 100));
///     scene.animate(dt);   // every frame
///     scene.draw();
class Scene : public SceneObject {
public:
    void addObject(const boost::shared_ptr<SceneObject>& object);

    /// Draws every object, first to last: the newest lies on top.
    void draw() override;

    /// Animates every object, then drops the finished ones.
    void animate(double dtSeconds) override;

    /// Drops the finished objects; the others keep their order.
    void removeCompleted();

private:
    std::vector<boost::shared_ptr<SceneObject>> objects;
};
