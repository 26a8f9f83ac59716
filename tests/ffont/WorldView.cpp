#include "tests/ffont/WorldView.h"

#include <GL/gl.h>

#include "tests/support/GameCamera.h"

WorldView::WorldView(const OffscreenGL& surface) : widthPx(surface.width()), heightPx(surface.height()) {
    const double aspect = widthPx / heightPx;
    unitPx = widthPx / (2.0 * halfViewWidth(aspect));
    lookThroughGameCamera(aspect);
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
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    face.drawString(text, x, y, scaleX, scaleY, -1.0f, -1.0f);
    return gl.read();
}
