#pragma once

#include <vector>

class FontFace;

/// Factors on what the face itself says, all 1 for the face as its designer drew it.
struct TextStyle {
    float width = 1.0f;    ///< of glyphs and distances along the line
    float height = 1.0f;   ///< of glyphs
    float spacing = 1.0f;  ///< of each glyph's advance, not of its picture
    float kerning = 1.0f;  ///< of the pair distances; 0 for none
};

/// A string as glyphs side by side from left to right, in ems from the line's start.
struct TextLine {
    struct Glyph {
        unsigned int glyph;
        double penEm;
    };
    std::vector<Glyph> glyphs;
    double advanceEm = 0.0;
};

/// One glyph per character of the zero-terminated UTF-8 `text`.
TextLine layOut(const FontFace& face, const TextStyle& style, const char* text);
