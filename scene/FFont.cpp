#include "scene/FFont.h"

#include <GL/gl.h>

FFont::FFont(const char* path, unsigned int size) : data(nullptr) {
    if (path != nullptr) {
        data = SmartPtr<FFontData>(new FFontData(path, size));
    }
    init();
}

void FFont::init() {
    setScale(1.0f, 1.0f);
    setColor(1.0f, 1.0f, 1.0f, 1.0f);
}

void FFont::setColor(float r, float g, float b, float a) {
    color = {r, g, b, a};
}

void FFont::setScale(float sx, float sy) {
    scaleX = sx;
    scaleY = sy;
}

float FFont::drawString(const char* text, float x, float y, float p, float q) {
    glColor4fv(color.data());
    return data->drawString(text, x, y, scaleX, scaleY, p, q);
}
