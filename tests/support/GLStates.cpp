#include "tests/support/GLStates.h"

#include <GL/glext.h>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr GLenum capabilities[] = {
    GL_ALPHA_TEST,     GL_BLEND,         GL_CLIP_PLANE0,         GL_CLIP_PLANE3,
    GL_COLOR_LOGIC_OP, GL_CULL_FACE,     GL_DEPTH_TEST,          GL_FOG,
    GL_LIGHTING,       GL_LINE_SMOOTH,   GL_LINE_STIPPLE,        GL_POLYGON_STIPPLE,
    GL_SCISSOR_TEST,   GL_STENCIL_TEST,  GL_TEXTURE_1D,          GL_TEXTURE_2D,
    GL_TEXTURE_GEN_S,  GL_TEXTURE_GEN_T, GL_COLOR_SUM,           GL_NORMALIZE,
    GL_VERTEX_ARRAY,   GL_COLOR_ARRAY,   GL_TEXTURE_COORD_ARRAY, GL_NORMAL_ARRAY};

constexpr GLenum modes[] = {
    GL_ACTIVE_TEXTURE,     GL_ARRAY_BUFFER_BINDING, GL_BLEND_DST_ALPHA, GL_BLEND_DST_RGB,
    GL_BLEND_SRC_ALPHA,    GL_BLEND_SRC_RGB,        GL_MATRIX_MODE,     GL_CLIENT_ACTIVE_TEXTURE,
    GL_BLEND_EQUATION_RGB, GL_BLEND_EQUATION_ALPHA, GL_POLYGON_MODE,    GL_CURRENT_PROGRAM,
    GL_SHADE_MODEL,        GL_TEXTURE_BINDING_2D,   GL_DEPTH_WRITEMASK, GL_COLOR_WRITEMASK};

constexpr GLenum numbers[] = {
    GL_CURRENT_COLOR,     GL_CURRENT_NORMAL,   GL_CURRENT_TEXTURE_COORDS, GL_LINE_WIDTH,
    GL_POINT_SIZE,        GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX,      GL_TEXTURE_MATRIX,
    GL_SCISSOR_BOX,       GL_VIEWPORT,         GL_PACK_ALIGNMENT,         GL_UNPACK_ALIGNMENT,
    GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,     GL_TEXTURE_STACK_DEPTH};

constexpr GLenum depths[] = {GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH,
                             GL_PROJECTION_STACK_DEPTH};

}  // namespace

std::map<GLenum, std::vector<double>> readGLState() {
    std::map<GLenum, std::vector<double>> state;
    for (const GLenum capability : capabilities) {
        state[capability] = {static_cast<double>(glIsEnabled(capability))};
    }
    const auto read = [&state](GLenum name) {
        std::array<double, 16> values{};
        glGetDoublev(name, values.data());
        state[name].assign(values.begin(), values.end());
    };
    std::for_each(std::begin(modes), std::end(modes), read);
    std::for_each(std::begin(numbers), std::end(numbers), read);
    std::for_each(std::begin(depths), std::end(depths), read);
    std::array<GLint, 3> texture{};
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &texture[0]);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &texture[1]);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &texture[2]);
    state[GL_TEXTURE].assign(texture.begin(), texture.end());
    return state;
}
