#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "scene/SceneObject.h"

/// The objects that are animated and drawn together, in the order in which they were added. It shares each
/// with whoever else holds it, lets go of those that are finished, and is never finished itself, so a scene
/// inside a scene stays there. Main thread only.
///
///     scene.addObject(boost::make_shared<ScoreAnnotation>(x, y, font, 100));
///     scene.animate(dt);   // every frame
///     scene.draw();
class Scene : public SceneObject {
public:
    void addObject(boost::shared_ptr<SceneObject> const& object);

    /// Draws every object, first to last: the newest lies on top.
    void draw() override;

    /// Animates every object, then drops those that this finished.
    void animate(double dtSeconds) override;

    /// Drops the finished objects; the others keep their order.
    void removeCompleted();

private:
    std::vector<boost::shared_ptr<SceneObject>> objects;
};
