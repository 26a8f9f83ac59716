#pragma once

#include "platform/timage/Image.h"
#include "platform/tmath/Vec2.h"

namespace wt {

/// Owns a GL texture with a picture and its mipmaps. Does nothing if the context is gone when it is
/// destroyed.
class Texture {
public:
    /// Uploads a picture of 1 to 4 channels, rows from the top. Leaves GL's state as it was.
    explicit Texture(const tavi::Image<unsigned char>& image);
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;
    ~Texture();

    /// Whether there is a picture: false for an empty image and one that GL refused.
    explicit operator bool() const { return name != 0; }
    /// Binds it to the active texture unit, for a drawing in which the whole picture is as large as `size`,
    /// in pixels: the smallest mipmap that is at least as large. That is sharper than a mixture of two, and
    /// software OpenGL has no level to find at each pixel.
    void bind(const tavi::Vec2<float>& size) const;

private:
    unsigned int name = 0;
    tavi::Vec2<float> texels;
};

}  // namespace wt
