#include "platform/wt/GLState.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cmath>

#include "platform/wt/Polygon.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"

namespace wt {
namespace {

constexpr GLenum textureTargets[] = {GL_TEXTURE_1D,       GL_TEXTURE_2D,    GL_TEXTURE_3D,
                                     GL_TEXTURE_CUBE_MAP, GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T,
                                     GL_TEXTURE_GEN_R,    GL_TEXTURE_GEN_Q};

constexpr GLenum fragmentTests[] = {
    GL_ALPHA_TEST,  GL_COLOR_LOGIC_OP, GL_CULL_FACE,      GL_DEPTH_TEST,      GL_FOG,          GL_LIGHTING,
    GL_LINE_SMOOTH, GL_LINE_STIPPLE,   GL_POLYGON_SMOOTH, GL_POLYGON_STIPPLE, GL_STENCIL_TEST, GL_COLOR_SUM};

void plainTextureUnits() {
    GLint units = 1;
    glGetIntegerv(GL_MAX_TEXTURE_UNITS, &units);
    for (int unit = std::min(units, Polygon::textureUnits) - 1; unit >= 0; --unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        for (const GLenum target : textureTargets) {
            glDisable(target);
        }
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    }
}

void plainFragments() {
    for (const GLenum test : fragmentTests) {
        glDisable(test);
    }
    for (GLenum plane = GL_CLIP_PLANE0; plane <= GL_CLIP_PLANE5; ++plane) {
        glDisable(plane);
    }
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glShadeModel(GL_SMOOTH);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_FALSE);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    // Lines of one pixel would vanish on a large screen.
    glLineWidth(std::max(1.0f, std::round(screen().emPixels() / theme().leastEmPx)));
}

void pushIdentity(GLenum mode) {
    glMatrixMode(mode);
    glPushMatrix();
    glLoadIdentity();
}

void pop(GLenum mode) {
    glMatrixMode(mode);
    glPopMatrix();
}

}  // namespace

GLState::GLState() : colorSumBefore(glIsEnabled(GL_COLOR_SUM) == GL_TRUE) {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    plainTextureUnits();
    plainFragments();
    pushIdentity(GL_TEXTURE);
    pushIdentity(GL_PROJECTION);
    pushIdentity(GL_MODELVIEW);
    const Screen& s = screen();
    glEnable(GL_SCISSOR_TEST);
    glScissor(s.x, s.y, s.width, s.height);
}

GLState::~GLState() {
    glActiveTexture(GL_TEXTURE0);
    pop(GL_MODELVIEW);
    pop(GL_PROJECTION);
    pop(GL_TEXTURE);
    glPopClientAttrib();
    glPopAttrib();
    // Mesa leaves this one out of every attribute group.
    if (colorSumBefore) {
        glEnable(GL_COLOR_SUM);
    }
}

}  // namespace wt
