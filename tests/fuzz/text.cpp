// Any bytes as text, at any place, size and view: what is drawn has the length that was announced, stays in
// its box, and leaves OpenGL as it was.

#include <GL/gl.h>

#include <cmath>
#include <string>

#include "platform/ffont/FFontData.h"
#include "tests/fuzz/Input.h"
#include "tests/support/GameCamera.h"
#include "tests/support/RecordingGL.h"

namespace {

constexpr std::size_t longestShortened = 48;  // bytes; what is shortened is measured once for each character

void lookAnyhow(Input& input) {
    switch (input.upTo(3)) {
        case 0:
            glOrtho(0.0, 640.0, 0.0, 480.0, -1.0, 1.0);
            return;
        case 1:
            lookThroughGameCamera(4.0 / 3.0);
            return;
        case 2:
            glScaled(input.number(), input.number(), 1.0);
            return;
        default:
            double matrix[16];
            for (double& entry : matrix) {
                entry = input.number();
            }
            glLoadMatrixd(matrix);
    }
}

bool same(float left, float right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

void checkBox(const RecordingGL& gl, float x, float width) {
    if (!(width > 0.0f)) {
        return;
    }
    const double left = static_cast<double>(x);
    const double right = left + static_cast<double>(width);
    for (const RecordingGL::Primitive& primitive : gl.primitives()) {
        for (const RecordingGL::Vertex& vertex : primitive.vertices) {
            require(vertex.at.x >= left && vertex.at.x <= right, "text stays in its box");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Kept from run to run, as in the game: glyphs of all sizes meet in one texture.
    static FFontData face("Fonts/Vera.ttf", 24);
    Input input(data, size);
    RecordingGL gl;
    lookAnyhow(input);
    const auto scaleX = static_cast<float>(input.raw<std::int16_t>()) / 256.0f;
    const auto scaleY = static_cast<float>(input.raw<std::int16_t>()) / 256.0f;
    const bool wild = input.upTo(15) == 0;
    const auto x = wild ? input.raw<float>() : static_cast<float>(input.raw<std::int8_t>());
    const auto y = wild ? input.raw<float>() : static_cast<float>(input.raw<std::int8_t>());
    const auto boxWidth = wild ? input.raw<float>() : static_cast<float>(input.raw<std::int8_t>()) / 8.0f;
    const auto boxHeight = wild ? input.raw<float>() : static_cast<float>(input.raw<std::int8_t>()) / 8.0f;
    TextStyle style;
    style.kerning = input.flag() ? 0.0f : 1.0f;
    face.setStyle(style);
    const std::string text = input.text(size);

    float movedX = x;
    float movedY = y;
    const float advance = face.drawString(text.c_str(), movedX, movedY, scaleX, scaleY, boxWidth, boxHeight);
    require(same(advance, face.measureString(text.c_str(), scaleX)), "text is as long as measured");
    require(same(movedX, x + advance) && same(movedY, y), "the pen is behind the text");
    require(gl.errors().empty(), "text makes no OpenGL error");
    require(gl.pushed() == 0, "text leaves nothing pushed");
    checkBox(gl, x, boxWidth);

    if (text.size() <= longestShortened) {
        const float width = std::abs(boxWidth);
        const std::string shorter = face.shortenString(text.c_str(), 1.0f, width);
        require(shorter.empty() || face.measureString(shorter.c_str(), 1.0f) <= width, "shortened text fits");
    }
    return 0;
}
