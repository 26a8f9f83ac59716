#pragma once

/// Switches the active GLSL program off, and back on in its destructor.
class FixedFunction {
public:
    FixedFunction();
    FixedFunction(const FixedFunction&) = delete;
    FixedFunction& operator=(const FixedFunction&) = delete;
    ~FixedFunction();

    /// Whether the current GL context has GLSL programs at all: from OpenGL 2.0 on.
    static bool programsExist();

private:
    unsigned int programBefore = 0;
};
