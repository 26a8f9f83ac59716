#pragma once

#include "platform/timage/Image.h"
#include "platform/wt/PackedPicture.h"

namespace wt {

/// A picture as GL textures of its own, freed with it. Freeing it after the context is gone does nothing.
class Texture {
public:
    /// Uploads a picture of 1 to 4 channels, rows from the top; GL's state is left as it was.
    explicit Texture(const tavi::Image<unsigned char>& image);
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;
    ~Texture();

    /// Whether there is a picture: false for an empty image and one that GL refused.
    explicit operator bool() const { return whole != 0 || !packed.empty(); }

    /// Whether no pixel of it is transparent.
    bool isOpaque() const { return opaque; }

    /// Binds it to the active texture unit. Only one that is not opaque has mipmaps.
    void bind() const;

    /// Binds it for covering so many whole pixels exactly. An opaque picture is then a copy of just this
    /// size, of which every texel becomes a pixel: sharper, and in software more than twice as fast. The copy
    /// follows another size when that is asked for twice in a row.
    void bindFor(int widthPx, int heightPx) const;

    /// It will not be drawn for a while: an opaque picture gives back the whole texture, and keeps what it
    /// was made from packed and the copy that fits. It may be bound again at any time.
    void putAway() const;

private:
    struct Size {
        int width = 0;
        int height = 0;
        bool operator==(const Size& other) const { return width == other.width && height == other.height; }
    };
    void fit(const Size& size) const;

    bool opaque = false;
    mutable unsigned int whole = 0;
    /// Empty until it was put away.
    mutable PackedPicture packed;
    mutable unsigned int fitted = 0;
    mutable Size fittedSize;
    mutable Size askedFor;  ///< pixels, the last time
};

}  // namespace wt
