#include "platform/ffont/GlyphAtlas.h"

#include <algorithm>
#include <cstdint>

#include <GL/gl.h>
#include <GL/glext.h>

namespace {

// The side grows with the viewport's height: room for about three hundred glyphs of a score, and for
// thousands of a menu. 256 KiB for 640x480, 1 MiB for 1920x1080, 4 MiB for 4K.
const int leastSide = 512;
const int mostSide = 2048;
const int rowsOfLeastSide = 600;  // pixels
// Shelves of few heights fill better than one height per glyph.
const int shelfStep = 8;

int wantedSide() {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    int side = leastSide;
    for (int rows = rowsOfLeastSide; rows < viewport[3] && side < mostSide; rows *= 2) {
        side *= 2;
    }
    return std::min<int>(side, largest);
}

}  // namespace

std::size_t GlyphAtlas::KeyHash::operator()(const GlyphKey& key) const {
    std::uint64_t bits = key.glyph;
    bits = bits << 16 ^ static_cast<std::uint64_t>(key.emWidthSteps);
    bits = bits << 16 ^ static_cast<std::uint64_t>(key.emHeightSteps);
    bits = bits << 5 ^ static_cast<std::uint64_t>(key.phaseX << 3 | key.phaseY << 1 | (key.hinted ? 1 : 0));
    return std::hash<std::uint64_t>()(bits * 0x9E3779B97F4A7C15u);
}

int GlyphAtlas::maxSamples() {
    makeStorage();
    return side;
}

const AtlasGlyph* GlyphAtlas::find(const GlyphKey& key) const {
    const auto found = glyphs.find(key);
    return found == glyphs.end() ? nullptr : &found->second;
}

const AtlasGlyph* GlyphAtlas::add(const GlyphKey& key, const GlyphImage& image) {
    makeStorage();
    if (image.coverage.empty()) {
        return &glyphs.emplace(key, AtlasGlyph()).first->second;
    }
    Position position{};
    if (!place(image.width, image.height, position)) {
        return nullptr;
    }
    bind();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 0);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 0);
    glTexSubImage2D(GL_TEXTURE_2D, 0, position.x, position.y, image.width, image.height, GL_ALPHA,
                    GL_UNSIGNED_BYTE, image.coverage.data());
    AtlasGlyph glyph;
    glyph.leftPx = image.leftPx;
    glyph.topPx = image.topPx;
    glyph.widthPx = image.width * image.pixelsPerSample;
    glyph.heightPx = image.height * image.pixelsPerSample;
    const auto coordinate = [this](int sample) {
        return static_cast<float>(sample) / static_cast<float>(side);
    };
    glyph.left = coordinate(position.x);
    glyph.top = coordinate(position.y);
    glyph.right = coordinate(position.x + image.width);
    glyph.bottom = coordinate(position.y + image.height);
    return &glyphs.emplace(key, glyph).first->second;
}

void GlyphAtlas::clear() {
    shelves.clear();
    glyphs.clear();
}

void GlyphAtlas::bind() const {
    glBindTexture(GL_TEXTURE_2D, texture);
}

void GlyphAtlas::makeStorage() {
    if (!glyphs.empty()) {
        return;
    }
    const int wanted = wantedSide();
    if (side == wanted) {
        return;
    }
    side = wanted;
    bind();
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_ALPHA8, side, side, 0, GL_ALPHA, GL_UNSIGNED_BYTE, nullptr);
}

bool GlyphAtlas::place(int width, int height, Position& position) {
    Shelf* best = nullptr;
    for (Shelf& shelf : shelves) {
        const bool fits = shelf.height >= height && side - shelf.usedWidth >= width;
        if (fits && (best == nullptr || shelf.height < best->height)) {
            best = &shelf;
        }
    }
    const int stepped = (height + shelfStep - 1) / shelfStep * shelfStep;
    const int top = shelves.empty() ? 0 : shelves.back().top + shelves.back().height;
    if ((best == nullptr || best->height > stepped) && top + height <= side && width <= side) {
        shelves.push_back({top, std::min(stepped, side - top), 0});
        best = &shelves.back();
    }
    if (best == nullptr) {
        return false;
    }
    position = {best->usedWidth, best->top};
    best->usedWidth += width;
    return true;
}
