#include "platform/ffont/TextLine.h"

#include "platform/ffont/FontFace.h"
#include "platform/ffont/Utf8.h"

TextLine layOut(const FontFace& face, const TextStyle& style, const char* text) {
    TextLine line;
    const double spacing = static_cast<double>(style.width) * static_cast<double>(style.spacing);
    const double kerning = static_cast<double>(style.width) * static_cast<double>(style.kerning);
    while (const char32_t character = nextCharacter(text)) {
        const unsigned int glyph = face.glyphOf(character);
        if (!line.glyphs.empty()) {
            line.advanceEm += kerning * face.kerning(line.glyphs.back().glyph, glyph);
        }
        line.glyphs.push_back({glyph, line.advanceEm});
        line.advanceEm += spacing * face.advance(glyph);
    }
    return line;
}
