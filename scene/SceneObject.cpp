#include "scene/SceneObject.h"

bool SceneObject::isComplete() {
    return false;
}

void SceneObject::animate(double) {
}
