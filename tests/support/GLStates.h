#pragma once

#include <GL/gl.h>

#include <map>
#include <vector>

/// Everything of OpenGL's current state that drawing may touch and has to give back: numbers by name.
std::map<GLenum, std::vector<double>> readGLState();
