#include "platform/ffont/FFontData.h"

#include <iostream>
#include <limits>
#include <set>

#include <GL/gl.h>
#include <GL/glext.h>

#include "platform/ffont/FixedFunction.h"
#include "platform/ffont/FontFace.h"
#include "platform/ffont/GlyphAtlas.h"
#include "platform/ffont/TextPainter.h"
#include "platform/ffont/Utf8.h"

namespace {

const double worldUnitsPerSize = 0.025;

void reportOnce(const std::string& path, const std::string& reason) {
    static std::set<std::string> reported;
    if (reported.insert(path).second) {
        std::cerr << "Cannot read font " << path << ": " << reason << std::endl;
    }
}

// Sets the OpenGL state for text, and restores the caller's.
class TextState {
public:
    TextState() {
        glPushAttrib(GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_TEXTURE_BIT |
                     GL_CURRENT_BIT);
        glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
        glActiveTexture(GL_TEXTURE0);
        glEnable(GL_TEXTURE_2D);
        glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
        glEnable(GL_BLEND);
        glBlendEquation(GL_FUNC_ADD);
        glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        // Glyphs overlap their neighbours and must not hide them.
        glDepthMask(GL_FALSE);
        glDisable(GL_ALPHA_TEST);
        glDisable(GL_CULL_FACE);
        glDisable(GL_LIGHTING);
    }
    ~TextState() {
        glPopClientAttrib();
        glPopAttrib();
    }
    TextState(const TextState&) = delete;
    TextState& operator=(const TextState&) = delete;

private:
    FixedFunction noProgram;
};

}  // namespace

FFontData::FFontData(const char* path, unsigned int size_) : size(size_) {
    glGenTextures(1, &texture);
    if (path != nullptr && size_ != 0) {
        init(path, size_);
    }
}

FFontData::~FFontData() {
    release();
}

void FFontData::init(const char* path, unsigned int size_) {
    size = size_;
    atlas.reset();
    face.reset();
    if (path == nullptr || size_ == 0) {
        return;
    }
    std::string reason;
    face = FontFace::open(path, reason);
    if (!face) {
        reportOnce(path, reason);
    }
}

void FFontData::release() {
    if (texture != 0) {
        glDeleteTextures(1, &texture);
        texture = 0;
    }
    size = 0;
    atlas.reset();
    face.reset();
}

double FFontData::emUnits() const {
    return worldUnitsPerSize * size;
}

float FFontData::units(double ems) const {
    return static_cast<float>(ems * emUnits());
}

float FFontData::ascender() const {
    return face ? units(face->ascender() * static_cast<double>(style.height)) : 0.0f;
}
float FFontData::descender() const {
    return face ? units(face->descender() * static_cast<double>(style.height)) : 0.0f;
}

float FFontData::measureString(const char* text, float scaleX) const {
    if (!face || text == nullptr) {
        return 0.0f;
    }
    return units(layOut(*face, style, text).advanceEm * static_cast<double>(scaleX));
}

std::string FFontData::shortenString(const char* text, float scaleX, float width) const {
    if (!face || text == nullptr) {
        return text == nullptr ? "" : text;
    }
    if (measureString(text, scaleX) <= width) {
        return text;
    }
    const std::string ellipsis = face->glyphOf(U'\u2026') != 0 ? "\u2026" : "...";
    std::string best;
    std::string start;
    for (const char* end = text; *end != '\0';) {
        const std::string candidate = start.substr(0, start.find_last_not_of(' ') + 1) + ellipsis;
        if (!(measureString(candidate.c_str(), scaleX) <= width)) {
            break;
        }
        best = candidate;
        const char* character = end;
        nextCharacter(end);
        start.append(character, end);
    }
    return best;
}

float FFontData::drawString(const char* text, float& x, float& y, float scaleX, float scaleY, float boxWidth,
                            float boxHeight) {
    if (!face || text == nullptr) {
        return 0.0f;
    }
    const TextLine line = layOut(*face, style, text);
    paint(line, x, y, scaleX, scaleY, boxWidth, boxHeight);
    const float advance = units(line.advanceEm * static_cast<double>(scaleX));
    x += advance;
    return advance;
}

void FFontData::paint(const TextLine& line, float x, float y, float scaleX, float scaleY, float boxWidth,
                      float boxHeight) {
    if (texture == 0) {
        glGenTextures(1, &texture);
    }
    if (texture == 0) {
        return;
    }
    if (!atlas) {
        atlas = std::make_unique<GlyphAtlas>(texture);
    }
    const double unlimited = std::numeric_limits<double>::infinity();
    TextPlacement placement{};
    placement.x = static_cast<double>(x);
    placement.y = static_cast<double>(y);
    placement.emWidth = emUnits() * static_cast<double>(scaleX) * static_cast<double>(style.width);
    placement.emHeight = emUnits() * static_cast<double>(scaleY) * static_cast<double>(style.height);
    placement.boxLeft = boxWidth > 0.0f ? placement.x : -unlimited;
    placement.boxRight = boxWidth > 0.0f ? placement.x + static_cast<double>(boxWidth) : unlimited;
    const double bottom = placement.y + face->descender() * placement.emHeight;
    placement.boxBottom = boxHeight > 0.0f ? bottom : -unlimited;
    placement.boxTop = boxHeight > 0.0f ? bottom + static_cast<double>(boxHeight) : unlimited;

    const TextState state;
    TextPainter(*face, *atlas).paint(line, placement);
}
