#pragma once

/// Something that moves with the frame time, is drawn, and is dropped once it is finished. Owned by a Scene
/// and anyone else who holds its shared pointer; main thread only.
class SceneObject {
public:
    SceneObject() = default;
    SceneObject(const SceneObject&) = delete;
    SceneObject& operator=(const SceneObject&) = delete;
    virtual ~SceneObject() = default;

    /// Draws in the current model-view transform. Needs a current GL context.
    virtual void draw() = 0;

    /// Whether the object is finished and can be dropped. Called after every `animate`.
    virtual bool isComplete();

    /// Advances the object by `dtSeconds`.
    virtual void animate(double dtSeconds);
};
