#pragma once

#include <memory>
#include <string>
#include <vector>

/// Which picture of a glyph is wanted. Pixel sizes and offsets are exact, so equal keys draw
/// alike.
struct GlyphKey {
    /// Units of the sizes below.
    static const int stepsPerPixel = 8;
    /// Positions between two pixels at which a glyph can stand.
    static const int phases = 4;
    static const int maxSteps = 0xFFFF;

    unsigned int glyph = 0;
    int emWidthSteps = 0;   ///< 1 to maxSteps
    int emHeightSteps = 0;  ///< 1 to maxSteps
    int phaseX = 0;         ///< origin right of a pixel's edge, in 1/phases pixel
    int phaseY = 0;         ///< origin above a pixel's edge, in 1/phases pixel
    bool hinted = false;    ///< horizontal features moved onto pixel rows

    bool operator==(const GlyphKey& other) const;
};

/// A glyph's coverage as 8-bit samples, top row first, with an empty border one sample wide; without samples
/// when nothing is to be seen. Positions in pixels from the pixel corner at the glyph's origin, y up.
struct GlyphImage {
    int leftPx = 0;
    int topPx = 0;
    int width = 0;   ///< samples
    int height = 0;  ///< samples
    int pixelsPerSample = 1;
    std::vector<unsigned char> coverage;
};

/// One scalable font file, read into memory: lengths in ems for layout, pictures of glyphs for drawing. Needs
/// no OpenGL. A file that FreeType takes but that is damaged inside has empty glyphs and lengths of 0.
///
///     std::string reason;
///     if (auto face = FontFace::open("Fonts/Vera.ttf", reason)) width = face->advance(face->glyphOf(U'A'));
class FontFace {
public:
    /// Null, with a `reason` to show, when the file cannot be read or is no scalable font.
    static std::unique_ptr<FontFace> open(const std::string& path, std::string& reason);
    ~FontFace();
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    /// 0, the box for missing glyphs, when the face lacks the character.
    unsigned int glyphOf(char32_t character) const;
    /// Ems from the glyph's origin to the next one's, not rounded to pixels.
    double advance(unsigned int glyph) const;
    /// Ems to add between two neighbours, mostly negative: the pair table of the file.
    double kerning(unsigned int left, unsigned int right) const;
    /// Ems above the baseline.
    double ascender() const;
    /// Ems above the baseline: negative.
    double descender() const;

    /// The glyph as `key` says. A picture that would be wider or higher than `maxSamples` is made at half the
    /// size, a quarter and so on, as `pixelsPerSample` tells.
    GlyphImage rasterise(const GlyphKey& key, int maxSamples) const;

private:
    struct Loaded;
    explicit FontFace(std::unique_ptr<Loaded> loaded);

    std::unique_ptr<Loaded> loaded;
};
