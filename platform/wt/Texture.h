#pragma once

#include "platform/timage/Image.h"

namespace wt {

/// A GL texture of its own, freed with it. Freeing it after the context is gone does nothing.
class Texture {
public:
    /// Uploads a picture of 1 to 4 channels with mipmaps, rows from the top; GL's state is left as it was.
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
