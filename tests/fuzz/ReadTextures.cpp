// A driver reads the pictures that it is given; the double that stands in for it here would not. This does,
// so that a picture shorter than it claims to be is a find.

#include <GL/gl.h>

#include <cstddef>

#include "tests/fuzz/Input.h"

namespace {

/// Written and never read, so that the reading is done.
volatile unsigned char lastRead;

}  // namespace

extern "C" void glTexSubImage2D(GLenum /*target*/, GLint /*level*/, GLint x, GLint y, GLsizei width,
                                GLsizei height, GLenum format, GLenum type, const void* picture) {
    require(x >= 0 && y >= 0 && width > 0 && height > 0, "a picture lies in its texture");
    require(format == GL_ALPHA && type == GL_UNSIGNED_BYTE, "a glyph's picture has one byte a sample");
    const auto* const bytes = static_cast<const unsigned char*>(picture);
    // The ends of each row are enough to see whether it is there.
    for (GLsizei row = 0; row < height; ++row) {
        const auto* const first = bytes + static_cast<std::ptrdiff_t>(row) * width;
        lastRead = first[0];
        lastRead = first[width - 1];
    }
}
