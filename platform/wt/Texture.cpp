#include "platform/wt/Texture.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cmath>

namespace wt {
namespace {

/// The formats for 1, 2, 3 and 4 channels.
constexpr GLenum formats[] = {GL_LUMINANCE, GL_LUMINANCE_ALPHA, GL_RGB, GL_RGBA};
constexpr int mostChannels = 4;

/// The picture in half its size, at least 1 by 1: each pixel the mean of four.
tavi::Image<unsigned char> halved(const tavi::Image<unsigned char>& picture) {
    const int lastX = picture.width() - 1;
    const int lastY = picture.height() - 1;
    tavi::Image<unsigned char> half(std::max(picture.width() / 2, 1), std::max(picture.height() / 2, 1),
                                    picture.channels());
    for (int y = 0; y < half.height(); ++y) {
        const int below = std::min(2 * y + 1, lastY);
        for (int x = 0; x < half.width(); ++x) {
            const int right = std::min(2 * x + 1, lastX);
            for (int c = 0; c < half.channels(); ++c) {
                const int sum = picture.at(2 * x, 2 * y, c) + picture.at(right, 2 * y, c) +
                                picture.at(2 * x, below, c) + picture.at(right, below, c);
                half.at(x, y, c) = static_cast<unsigned char>((sum + 2) / 4);
            }
        }
    }
    return half;
}

/// The level of 1 by 1 pixels.
int lastLevel(float longerSide) {
    return std::max(std::ilogb(longerSide), 0);
}

void uploadLevel(int level, const tavi::Image<unsigned char>& picture) {
    const GLenum format = formats[picture.channels() - 1];
    glTexImage2D(GL_TEXTURE_2D, level, static_cast<GLint>(format), picture.width(), picture.height(), 0,
                 format, GL_UNSIGNED_BYTE, picture.data());
}

}  // namespace

Texture::Texture(const tavi::Image<unsigned char>& image)
    : texels(static_cast<float>(image.width()), static_cast<float>(image.height())) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (image.empty() || image.channels() > mostChannels || image.width() > largest ||
        image.height() > largest) {
        return;
    }
    glPushAttrib(GL_TEXTURE_BIT);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glGenTextures(1, &name);
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    // Makes GL expect mipmaps.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    uploadLevel(0, image);
    // glGenerateMipmap is slower on software OpenGL, which compiles a program for it and keeps several MiB.
    const int last = lastLevel(std::max(texels.x, texels.y));
    tavi::Image<unsigned char> smaller = halved(image);
    for (int level = 1; level <= last; ++level, smaller = halved(smaller)) {
        uploadLevel(level, smaller);
    }
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glPopClientAttrib();
    glPopAttrib();
}

Texture::~Texture() {
    if (name != 0) {
        glDeleteTextures(1, &name);
    }
}

void Texture::bind(const tavi::Vec2<float>& size) const {
    const float texelsInAPixel = std::max({1.0f, texels.x / size.x, texels.y / size.y});
    const int level = std::min(std::ilogb(texelsInAPixel), lastLevel(std::max(texels.x, texels.y)));
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, level);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAX_LEVEL, level);
}

}  // namespace wt
