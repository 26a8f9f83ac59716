#include "scene/Scene.h"

#include <utility>

void Scene::addObject(boost::shared_ptr<SceneObject> const& object) {
    objects.push_back(object);
}

void Scene::draw() {
    for (auto const& object : objects) {
        object->draw();
    }
}

void Scene::animate(double dtSeconds) {
    for (auto const& object : objects) {
        object->animate(dtSeconds);
    }
    removeCompleted();
}

void Scene::removeCompleted() {
    std::vector<boost::shared_ptr<SceneObject>> unfinished;
    for (auto const& object : objects) {
        if (!object->isComplete()) {
            unfinished.push_back(object);
        }
    }
    objects = std::move(unfinished);
}
