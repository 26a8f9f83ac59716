#include "platform/wt/Texture.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <cstddef>
#include <initializer_list>

#include "platform/wt/Resample.h"

namespace wt {
namespace {

constexpr int mostChannels = 4;

std::size_t pixels(const tavi::Image<unsigned char>& image) {
    return static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
}

GLint largestSide() {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return largest;
}

/// The picture with blue, green, red and opacity for each pixel: the order of nearly every window, which
/// makes drawing it little more than copying.
tavi::Image<unsigned char> inOrderOfWindows(const tavi::Image<unsigned char>& image) {
    const int channels = image.channels();
    const bool coloured = channels > 2;
    tavi::Image<unsigned char> result(image.width(), image.height(), 4);
    const unsigned char* in = image.data();
    unsigned char* out = result.data();
    for (const unsigned char* const end = out + 4 * pixels(image); out != end; out += 4, in += channels) {
        out[0] = in[coloured ? 2 : 0];
        out[1] = in[coloured ? 1 : 0];
        out[2] = in[0];
        out[3] = channels % 2 == 0 ? in[channels - 1] : 255;
    }
    return result;
}

bool hasAlpha(const tavi::Image<unsigned char>& ordered) {
    const std::size_t samples = 4 * pixels(ordered);
    for (std::size_t sample = 3; sample < samples; sample += 4) {
        if (ordered.data()[sample] != 255) {
            return true;
        }
    }
    return false;
}

/// While it lives, bound textures and the way that pixels go to and from GL may be changed.
class TextureState {
public:
    TextureState() {
        glPushAttrib(GL_TEXTURE_BIT);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        for (const GLenum direction : std::initializer_list<GLenum>{GL_UNPACK_ALIGNMENT, GL_PACK_ALIGNMENT}) {
            glPixelStorei(direction, 1);
        }
        for (const GLenum skipped :
             std::initializer_list<GLenum>{GL_UNPACK_ROW_LENGTH, GL_UNPACK_SKIP_ROWS, GL_UNPACK_SKIP_PIXELS,
                                           GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
            glPixelStorei(skipped, 0);
        }
    }
    TextureState(const TextureState&) = delete;
    TextureState& operator=(const TextureState&) = delete;
    ~TextureState() {
        glPopClientAttrib();
        glPopAttrib();
    }
};

/// Makes a texture of the picture in `name`, a new name if that is 0, by `filter`: what is asked of it while
/// it is bound.
void upload(const tavi::Image<unsigned char>& ordered, GLuint& name, void (*filter)()) {
    const TextureState state;
    if (name == 0) {
        glGenTextures(1, &name);
    }
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    filter();
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, ordered.width(), ordered.height(), 0, GL_BGRA, GL_UNSIGNED_BYTE,
                 ordered.data());
}

/// The picture of a texture, as it was uploaded.
tavi::Image<unsigned char> download(GLuint name) {
    const TextureState state;
    glBindTexture(GL_TEXTURE_2D, name);
    GLint width = 0;
    GLint height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
    tavi::Image<unsigned char> ordered(width, height, 4);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, ordered.data());
    return ordered;
}

void smoothly() {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
}

void inAnySize() {
    smoothly();
    // The smallest level that is at least as large as what is drawn: sharper than a mixture of two, and much
    // quicker in software.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST);
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_LOD_BIAS, -0.5F);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
}

void texelByTexel() {
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
}

}  // namespace

Texture::Texture(const tavi::Image<unsigned char>& image) {
    const GLint largest = largestSide();
    if (image.empty() || image.channels() > mostChannels || image.width() > largest ||
        image.height() > largest) {
        return;
    }
    const tavi::Image<unsigned char> ordered = inOrderOfWindows(image);
    opaque = !hasAlpha(ordered);
    // An opaque one is fitted before it is drawn much smaller, and mipmaps take time and memory.
    upload(ordered, whole, opaque ? smoothly : inAnySize);
}

Texture::~Texture() {
    for (const GLuint name : {whole, fitted}) {
        if (name != 0) {
            glDeleteTextures(1, &name);
        }
    }
}

void Texture::bind() const {
    if (whole == 0) {
        upload(packed.unpacked(), whole, smoothly);
    }
    glBindTexture(GL_TEXTURE_2D, whole);
}

void Texture::bindFor(int widthPx, int heightPx) const {
    const Size size{widthPx, heightPx};
    // Not while the size changes with every frame.
    const bool stays = fitted == 0 || size == askedFor;
    askedFor = size;
    const GLint largest = largestSide();
    if (!opaque || widthPx < 1 || heightPx < 1 || widthPx > largest || heightPx > largest || !stays) {
        bind();
        return;
    }
    if (!(fittedSize == size)) {
        fit(size);
    }
    glBindTexture(GL_TEXTURE_2D, fitted);
}

void Texture::fit(const Size& size) const {
    const tavi::Image<unsigned char> picture = whole != 0 ? download(whole) : packed.unpacked();
    upload(resampled(picture, size.width, size.height), fitted, texelByTexel);
    fittedSize = size;
}

void Texture::putAway() const {
    if (!opaque || whole == 0) {
        return;
    }
    if (packed.empty()) {
        packed = PackedPicture(download(whole));
    }
    glDeleteTextures(1, &whole);
    whole = 0;
}

}  // namespace wt
