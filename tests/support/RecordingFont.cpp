#include "tests/support/RecordingFont.h"

#include <GL/gl.h>

#include "platform/ffont/FFontData.h"
#include "platform/ffont/FontFace.h"
#include "platform/ffont/GlyphAtlas.h"

namespace {

struct Log {
    std::vector<RecordingFont::Text> texts;
    std::vector<RecordingFont::Face> made;
    int alive = 0;
};

// Never destroyed: the shared face may outlive every other static.
Log& theLog() {
    static Log& instance = *new Log;
    return instance;
}

}  // namespace

RecordingFont::RecordingFont() {
    forget();
}

const std::vector<RecordingFont::Text>& RecordingFont::texts() const {
    return theLog().texts;
}

void RecordingFont::forget() {
    theLog().texts.clear();
}

const std::vector<RecordingFont::Face>& RecordingFont::facesMade() {
    return theLog().made;
}

int RecordingFont::facesAlive() {
    return theLog().alive;
}

FFontData::FFontData(const char* path, unsigned int faceSize) : size(faceSize) {
    theLog().made.push_back({path != nullptr ? path : "", size});
    ++theLog().alive;
}

FFontData::~FFontData() {
    --theLog().alive;
}

float FFontData::drawString(const char* text, float& x, float& y, float scaleX, float scaleY, float boxWidth,
                            float boxHeight) {
    RecordingFont::Text written{text, x, y, scaleX, scaleY, boxWidth, boxHeight, {}};
    glGetFloatv(GL_CURRENT_COLOR, written.color.data());
    theLog().texts.push_back(written);
    const float advance = RecordingFont::advance(text);
    x += advance;
    return advance;
}
