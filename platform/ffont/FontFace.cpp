#include "platform/ffont/FontFace.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_OUTLINE_H

namespace {

const std::size_t maxFileBytes = std::size_t(64) << 20;
const int borderSamples = 1;

bool readFile(const std::string& path, std::vector<unsigned char>& bytes, std::string& reason) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (!file) {
        reason = std::strerror(errno);
        return false;
    }
    unsigned char block[65536];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        bytes.insert(bytes.end(), block, block + count);
        if (bytes.size() > maxFileBytes) {
            reason = "larger than a font";
            return false;
        }
    }
    bytes.shrink_to_fit();
    if (std::ferror(file.get()) != 0) {
        reason = std::strerror(errno);
        return false;
    }
    return true;
}

std::string describe(FT_Error error) {
    const char* text = FT_Error_String(error);
    return text != nullptr ? text : "not a font (FreeType error " + std::to_string(error) + ")";
}

// The size of a char size unit: FreeType counts 64 to a pixel.
FT_F26Dot6 toFreeType(int steps, int reduction) {
    return static_cast<FT_F26Dot6>(steps) * (64 / GlyphKey::stepsPerPixel) / reduction;
}

}  // namespace

bool GlyphKey::operator==(const GlyphKey& other) const {
    return glyph == other.glyph && emWidthSteps == other.emWidthSteps &&
           emHeightSteps == other.emHeightSteps && phaseX == other.phaseX && phaseY == other.phaseY &&
           hinted == other.hinted;
}

struct FontFace::Loaded {
    std::vector<unsigned char> file;
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    Loaded() = default;
    ~Loaded() {
        FT_Done_Face(face);
        FT_Done_FreeType(library);
    }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;

    double ems(FT_Long fontUnits) const {
        return static_cast<double>(fontUnits) / static_cast<double>(face->units_per_EM);
    }
    bool loadOutline(const GlyphKey& key, int reduction) const;
};

FontFace::FontFace(std::unique_ptr<Loaded> loaded_) : loaded(std::move(loaded_)) {
}

FontFace::~FontFace() = default;

std::unique_ptr<FontFace> FontFace::open(const std::string& path, std::string& reason) {
    auto loaded = std::make_unique<Loaded>();
    if (!readFile(path, loaded->file, reason)) {
        return nullptr;
    }
    FT_Error error = FT_Init_FreeType(&loaded->library);
    if (error == FT_Err_Ok) {
        error = FT_New_Memory_Face(loaded->library, loaded->file.data(),
                                   static_cast<FT_Long>(loaded->file.size()), 0, &loaded->face);
    }
    if (error != FT_Err_Ok) {
        reason = describe(error);
        return nullptr;
    }
    if (!FT_IS_SCALABLE(loaded->face) || loaded->face->units_per_EM == 0) {
        reason = "not a scalable font";
        return nullptr;
    }
    return std::unique_ptr<FontFace>(new FontFace(std::move(loaded)));
}

unsigned int FontFace::glyphOf(char32_t character) const {
    return FT_Get_Char_Index(loaded->face, character);
}

double FontFace::advance(unsigned int glyph) const {
    FT_Fixed fontUnits = 0;
    return FT_Get_Advance(loaded->face, glyph, FT_LOAD_NO_SCALE, &fontUnits) == FT_Err_Ok
               ? loaded->ems(fontUnits)
               : 0.0;
}

double FontFace::kerning(unsigned int left, unsigned int right) const {
    FT_Vector fontUnits{};
    return FT_Get_Kerning(loaded->face, left, right, FT_KERNING_UNSCALED, &fontUnits) == FT_Err_Ok
               ? loaded->ems(fontUnits.x)
               : 0.0;
}

double FontFace::ascender() const {
    return loaded->ems(loaded->face->ascender);
}
double FontFace::descender() const {
    return loaded->ems(loaded->face->descender);
}

bool FontFace::Loaded::loadOutline(const GlyphKey& key, int reduction) const {
    // Light hinting moves outlines up and down only, so that the spacing stays what the layout says.
    const FT_Int32 flags = FT_LOAD_NO_BITMAP | (key.hinted ? FT_LOAD_TARGET_LIGHT : FT_LOAD_NO_HINTING);
    if (FT_Set_Char_Size(face, toFreeType(key.emWidthSteps, reduction),
                         toFreeType(key.emHeightSteps, reduction), 0, 0) != FT_Err_Ok ||
        FT_Load_Glyph(face, key.glyph, flags) != FT_Err_Ok ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
        return false;
    }
    FT_Outline_Translate(&face->glyph->outline, key.phaseX * (64 / GlyphKey::phases) / reduction,
                         key.phaseY * (64 / GlyphKey::phases) / reduction);
    return true;
}

GlyphImage FontFace::rasterise(const GlyphKey& key, int maxSamples) const {
    GlyphImage image;
    const FT_Pos maxExtent = static_cast<FT_Pos>(maxSamples - 2 * borderSamples - 1) * 64;
    for (int reduction = 1; reduction <= GlyphKey::maxSteps; reduction *= 2) {
        if (!loaded->loadOutline(key, reduction)) {
            return image;
        }
        FT_GlyphSlotRec_& slot = *loaded->face->glyph;
        FT_BBox box{};
        FT_Outline_Get_CBox(&slot.outline, &box);
        if (box.xMax - box.xMin > maxExtent || box.yMax - box.yMin > maxExtent) {
            continue;
        }
        if (FT_Render_Glyph(&slot, FT_RENDER_MODE_NORMAL) != FT_Err_Ok || slot.bitmap.width == 0 ||
            slot.bitmap.rows == 0) {
            return image;
        }
        image.pixelsPerSample = reduction;
        image.leftPx = (slot.bitmap_left - borderSamples) * reduction;
        image.topPx = (slot.bitmap_top + borderSamples) * reduction;
        image.width = static_cast<int>(slot.bitmap.width) + 2 * borderSamples;
        image.height = static_cast<int>(slot.bitmap.rows) + 2 * borderSamples;
        image.coverage.resize(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height));
        const unsigned char* source = slot.bitmap.buffer;
        for (int row = borderSamples; row < image.height - borderSamples;
             ++row, source += slot.bitmap.pitch) {
            std::memcpy(
                &image.coverage[static_cast<std::size_t>(row) * static_cast<std::size_t>(image.width) +
                                borderSamples],
                source, slot.bitmap.width);
        }
        return image;
    }
    return image;
}
