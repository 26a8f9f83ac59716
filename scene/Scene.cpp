#include "scene/Scene.h"

#include <utility>

void Scene::addObject(const boost::shared_ptr<SceneObject>& object) {
    objects.push_back(object);
}

void Scene::draw() {
    for (const auto& object : objects) {
        object->draw();
    }
}

void Scene::animate(double dtSeconds) {
    for (const auto& object : objects) {
        object->animate(dtSeconds);
    }
    removeCompleted();
}

void Scene::removeCompleted() {
    std::vector<boost::shared_ptr<SceneObject>> unfinished;
    for (const auto& object : objects) {
        if (!object->isComplete()) {
            unfinished.push_back(object);
        }
    }
    objects = std::move(unfinished);
}
