#include "scene/Globals.h"

namespace {

constexpr const char* fontPath = "Fonts/Vera.ttf";
constexpr unsigned int fontSize = 24;
constexpr float scoreFontScale = 0.5f;

}  // namespace

Globals& Globals::getInstance() {
    static Globals instance;
    return instance;
}

Globals::Globals() : defaultFont(nullptr, 0) {
    defaultFont = FFont(fontPath, fontSize);
}

FFont& Globals::getDefaultFont() {
    return defaultFont;
}

FFont Globals::getScoreFont() {
    FFont font = defaultFont;
    font.setScale(scoreFontScale, scoreFontScale);
    return font;
}
