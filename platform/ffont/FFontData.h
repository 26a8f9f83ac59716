#pragma once

#include <memory>
#include <string>

#include "platform/ffont/TextLine.h"

class FontFace;
class GlyphAtlas;

/// A TrueType face (or any scalable one that FreeType reads) at one nominal size, drawn as text through the
/// one OpenGL texture that it owns. Owned and shared by FFont; on the GLUT thread only.
///
///     FFontData face("Fonts/Vera.ttf", 24);
///     glColor4f(1, 1, 1, 1);
///     face.drawString("Score:  100", x, y, 1, 1, -1, -1);   // x is now behind the last glyph
///
/// A size of 1 is an em of 0.025 world units: at size 24 and scale 1 the em has 0.6. World units are those of
/// the plane z = 0 of the current model-view transform. Text is sharp at whatever size that plane has on the
/// screen.
///
/// Text is UTF-8, one glyph per character from left to right, kerned by the face's pair table; nothing is
/// shaped and no character, the line feed included, has a meaning of its own. A character that the face lacks
/// shows the face's box for missing glyphs, a byte that belongs to no character shows U+FFFD.
///
/// Without a face everything draws nothing and measures 0. Without a current OpenGL context nothing is drawn,
/// but everything else goes on. The texture belongs to the context that was current when it was first drawn
/// with.
class FFontData {
public:
    /// Makes a texture name. Calls `init` if there is a path and the size is not 0.
    FFontData(const char* path, unsigned int size);
    ~FFontData();
    FFontData(const FFontData&) = delete;
    FFontData& operator=(const FFontData&) = delete;

    /// Loads the face and drops an earlier one. With a null path, a size of 0 or a file that cannot be read
    /// there is no face. The first time that a path fails, one line on standard error says why.
    void init(const char* path, unsigned int size);

    /// Draws `text` from (`x`, `y`), the start of its baseline, in the current colour, blended by its alpha.
    /// Adds the result, the advance of the whole text in world units (`measureString`), to `x`. `y` stays, as
    /// the line is horizontal.
    ///
    /// The text does not leave the box from `x` to `x` + `boxWidth` and, from the line's bottom at `y` +
    /// `descender()` * `scaleY`, `boxHeight` upwards, in world units: what is outside is cut off, in the
    /// middle of a glyph too. A width or height that is not positive sets no limit in its direction.
    ///
    /// Depth test, stencil and scissor apply as the caller has set them, and no depth is written; lighting,
    /// alpha test, culling and GLSL programs do not apply. All OpenGL state is left as it was.
    float drawString(const char* text, float& x, float& y, float scaleX, float scaleY, float boxWidth,
                     float boxHeight);

    /// The advance of `text` in world units at a scale, as drawn; the empty text, and null, have 0.
    float measureString(const char* text, float scaleX) const;
    /// `text` if it is no wider than `width` world units, else as many of its first characters as fit with an
    /// ellipsis behind them (without blanks before it); empty when not even the ellipsis fits. Without a
    /// face, `text`.
    std::string shortenString(const char* text, float scaleX, float width) const;

    /// World units above the baseline at scale 1; the descender is negative.
    float ascender() const;
    float descender() const;

    /// Deletes the texture and sets the size to 0. Draws nothing until the next `init`.
    void release();

    unsigned int getSize() const { return size; }
    void setStyle(const TextStyle& textStyle) { style = textStyle; }

private:
    double emUnits() const;
    float units(double ems) const;
    void paint(const TextLine& line, float x, float y, float scaleX, float scaleY, float boxWidth,
               float boxHeight);

    unsigned int texture = 0;
    unsigned int size;
    TextStyle style;
    std::unique_ptr<FontFace> face;
    std::unique_ptr<GlyphAtlas> atlas;
};
