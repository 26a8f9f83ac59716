#include "platform/wt/Texture.h"

#include <GL/gl.h>

namespace wt {
namespace {

GLenum formatOf(int channels) {
    switch (channels) {
        case 1:
            return GL_LUMINANCE;
        case 2:
            return GL_LUMINANCE_ALPHA;
        case 3:
            return GL_RGB;
        default:
            return GL_RGBA;
    }
}

}  // namespace

Texture::Texture(const tavi::Image<unsigned char>& image) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (image.empty() || image.channels() > 4 || image.width() > largest || image.height() > largest) {
        return;
    }
    const GLenum format = formatOf(image.channels());
    glPushAttrib(GL_TEXTURE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    // The smallest level that is at least as large as what is drawn: sharper than a mixture of two, and much
    // quicker in software.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_LOD_BIAS, -0.5F);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), image.width(), image.height(), 0, format,
                 GL_UNSIGNED_BYTE, image.data());
    glPopClientAttrib();
    glPopAttrib();
}

Texture::~Texture() {
    if (name != 0) {
        glDeleteTextures(1, &name);
    }
}

void Texture::bind() const {
    glBindTexture(GL_TEXTURE_2D, name);
}

}  // namespace wt
