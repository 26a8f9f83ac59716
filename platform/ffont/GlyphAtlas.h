#pragma once

#include <cstddef>
#include <unordered_map>
#include <vector>

#include "platform/ffont/FontFace.h"

/// Where a glyph's picture lies in the texture. Pixel positions as in GlyphImage, the border included.
struct AtlasGlyph {
    int leftPx = 0;
    int topPx = 0;
    int widthPx = 0;  ///< 0 when nothing is to be seen
    int heightPx = 0;
    float left = 0.0F;  ///< texture coordinates
    float top = 0.0F;
    float right = 0.0F;
    float bottom = 0.0F;
};

/// One OpenGL texture of alpha values that glyph pictures are packed into, row by row. When it is full it is
/// emptied as a whole, by its user, who first draws what still waits to be drawn from it. Needs a current
/// context for every operation but the constructor and `find`; leaves its texture bound and the pixel store
/// changed.
class GlyphAtlas {
public:
    /// `texture` is a texture name, owned by the caller. The storage is made with the first picture, for the
    /// size of the viewport; another size counts from the next `clear` on.
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
