// A driver reads the pictures that it is given; the double that stands in for it here would not. This does,
// so that a picture shorter than it claims to be is a find.

#include <GL/gl.h>

#include "tests/fuzz/Input.h"

extern "C" void glTexSubImage2D(GLenum /*target*/, GLint /*level*/, GLint x, GLint y, GLsizei width,
                                GLsizei height, GLenum format, GLenum type, void const* picture) {
    require(x >= 0 && y >= 0 && width > 0 && height > 0, "a picture lies in its texture");
    require(format == GL_ALPHA && type == GL_UNSIGNED_BYTE, "a glyph's picture has one byte a sample");
    auto const* const bytes = static_cast<unsigned char const*>(picture);
    std::size_t const count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    std::size_t sum = 0;
    for (std::size_t i = 0; i < count; ++i) {
        sum += bytes[i];
    }
    require(sum <= 255 * count, "a sample is a byte");
}
