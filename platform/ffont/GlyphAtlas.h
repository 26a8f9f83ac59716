#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "platform/ffont/FontFace.h"

/// Where a glyph's picture lies in the texture. Pixel positions as in GlyphImage, the border included.
struct AtlasGlyph {
    int leftPx = 0;
    int topPx = 0;
    int widthPx = 0;  ///< 0 for an empty glyph
    int heightPx = 0;
    float left = 0.0f;  ///< texture coordinates
    float top = 0.0f;
    float right = 0.0f;
    float bottom = 0.0f;
};

/// One OpenGL texture of alpha values, packed with glyph pictures row by row. When it is full, its user draws
/// what still needs it and clears it. All operations except the constructor and `find` need a current
/// context; they leave the texture bound and the pixel store changed.
class GlyphAtlas {
public:
    /// `texture` is a texture name, owned by the caller. The first picture makes the storage, for the size of
    /// the viewport; a new size takes effect after the next `clear`.
    explicit GlyphAtlas(unsigned int texture_) : texture(texture_) {}

    /// Width and height that a picture may have, in samples.
    int maxSamples();
    /// Null when `key` has no picture in it. Valid until `clear`.
    const AtlasGlyph* find(const GlyphKey& key) const;
    /// Null when there is no room left. Requires a picture within `maxSamples`, new to the atlas.
    const AtlasGlyph* add(const GlyphKey& key, const GlyphImage& image);
    void clear();
    /// Binds the texture to the active unit.
    void bind() const;

private:
    struct KeyHash {
        std::size_t operator()(const GlyphKey& key) const;
    };
    struct Shelf {
        int top;
        int height;
        int usedWidth;
    };
    struct Position {
        int x;
        int y;
    };
    void makeStorage();
    bool place(int width, int height, Position& position);

    unsigned int texture;
    int side = 0;
    std::vector<Shelf> shelves;
    std::unordered_map<GlyphKey, AtlasGlyph, KeyHash> glyphs;
};
