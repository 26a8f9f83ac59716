#include "tests/support/RecordingFont.h"

#include <GL/gl.h>

#include "platform/ffont/FFontData.h"
#include "platform/ffont/FontFace.h"
#include "platform/ffont/GlyphAtlas.h"

// Never destroyed: the shared face may outlive every other static.
RecordingFont::Log& RecordingFont::log() {
    static Log& instance = *new Log;
    return instance;
}

FFontData::FFontData(const char* path, unsigned int faceSize) : size(faceSize) {
    RecordingFont::log().made.push_back({path != nullptr ? path : "", size});
    ++RecordingFont::log().alive;
}

FFontData::~FFontData() {
    --RecordingFont::log().alive;
}

float FFontData::drawString(const char* text, float& x, float& y, float scaleX, float scaleY, float boxWidth,
                            float boxHeight) {
    RecordingFont::Text written{text, x, y, scaleX, scaleY, boxWidth, boxHeight, {}};
    glGetFloatv(GL_CURRENT_COLOR, written.color.data());
    RecordingFont::log().texts.push_back(written);
    const float advance = RecordingFont::advance(text);
    x += advance;
    return advance;
}
