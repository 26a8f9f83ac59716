#include "platform/wt/Texture.h"

#include <GL/gl.h>

#include "platform/wt/Resample.h"

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

GLint largestSide() {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return largest;
}

bool hasAlpha(const tavi::Image<unsigned char>& image) {
    if (image.channels() % 2 != 0) {
        return false;
    }
    const std::size_t channels = static_cast<std::size_t>(image.channels());
    const std::size_t samples =
        static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()) * channels;
    for (std::size_t sample = channels - 1; sample < samples; sample += channels) {
        if (image.data()[sample] != 255) {
            return true;
        }
    }
    return false;
}

/// Makes a texture of the image in `name`, a new name if that is 0, by `filter`: what is asked of it while it
/// is bound.
void upload(const tavi::Image<unsigned char>& image, GLuint& name, void (*filter)()) {
    const GLenum format = formatOf(image.channels());
    glPushAttrib(GL_TEXTURE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    if (name == 0) {
        glGenTextures(1, &name);
    }
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    filter();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glTexImage2D(GL_TEXTURE_2D, 0, static_cast<GLint>(format), image.width(), image.height(), 0, format,
                 GL_UNSIGNED_BYTE, image.data());
    glPopClientAttrib();
    glPopAttrib();
}

void filterAnySize() {
    // The smallest level that is at least as large as what is drawn: sharper than a mixture of two, and much
    // quicker in software.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_LOD_BIAS, -0.5F);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
}

void takeEachTexel() {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
}

}  // namespace

Texture::Texture(const tavi::Image<unsigned char>& image) {
    const GLint largest = largestSide();
    if (image.empty() || image.channels() > 4 || image.width() > largest || image.height() > largest) {
        return;
    }
    upload(image, mipmapped, filterAnySize);
    if (!hasAlpha(image)) {
        picture = image;
    }
}

Texture::~Texture() {
    for (const GLuint name : {mipmapped, fitted}) {
        if (name != 0) {
            glDeleteTextures(1, &name);
        }
    }
}

void Texture::bind() const {
    glBindTexture(GL_TEXTURE_2D, mipmapped);
}

void Texture::bindFor(int widthPx, int heightPx) const {
    const Size size{widthPx, heightPx};
    // Not while the size changes with every frame.
    const bool stays = size == askedFor;
    askedFor = size;
    const GLint largest = largestSide();
    if (picture.empty() || widthPx < 1 || heightPx < 1 || widthPx > largest || heightPx > largest || !stays) {
        bind();
        return;
    }
    if (!(fittedSize == size)) {
        fit(size);
    }
    glBindTexture(GL_TEXTURE_2D, fitted);
}

void Texture::fit(const Size& size) const {
    upload(resampled(picture, size.width, size.height), fitted, takeEachTexel);
    fittedSize = size;
}

}  // namespace wt
