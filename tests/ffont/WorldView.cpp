#include "tests/ffont/WorldView.h"

#include <cmath>

#include <GL/glu.h>

WorldView::WorldView(const OffscreenGL& surface) : widthPx(surface.width()), heightPx(surface.height()) {
    const double pi = 3.141592653589793;
    const double distance = 10.0;
    const double viewDegrees = 45.0;
    unitPx = heightPx / (2.0 * distance * std::tan(viewDegrees / 2 * pi / 180.0));
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(viewDegrees, widthPx / heightPx, 0.1, 100.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(0.0, 0.0, -distance);
}

float WorldView::xOf(double columnPx) const {
    return static_cast<float>((columnPx - widthPx / 2) / unitPx);
}
float WorldView::yOf(double rowPx) const {
    return static_cast<float>((heightPx / 2 - rowPx) / unitPx);
}
double WorldView::columnOf(double x) const {
    return widthPx / 2 + x * unitPx;
}
double WorldView::rowOf(double y) const {
    return heightPx / 2 - y * unitPx;
}

void viewScreen() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

tavi::Image<unsigned char> drawn(const OffscreenGL& gl, FFontData& face, const char* text, float x, float y,
                                 float scaleX, float scaleY) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    face.drawString(text, x, y, scaleX, scaleY, -1.0F, -1.0F);
    return gl.read();
}
