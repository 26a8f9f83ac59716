#pragma once

#include "platform/timage/Image.h"

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
    /// Binds it to the active texture unit.
    void bind() const;

private:
    unsigned int name = 0;
};

}  // namespace wt
