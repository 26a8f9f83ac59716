// Any bytes as a font: a face is loaded whole or not at all, its lengths are numbers, and drawing with it
// makes no OpenGL error and leaves no state behind.

#include <GL/gl.h>

#include <cmath>
#include <string>

#include "platform/ffont/FFontData.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/InputFile.h"
#include "tests/support/RecordingGL.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    file.write(std::string(reinterpret_cast<const char*>(data), size));
    RecordingGL gl;
    glOrtho(0.0, 640.0, 0.0, 480.0, -1.0, 1.0);
    FFontData face(file.path(), 24);
    require(std::isfinite(face.ascender()) && std::isfinite(face.descender()),
            "a face's measures are numbers");
    for (const float scale : {20.0f, 100.0f, -30.0f}) {
        float x = 10.0f;
        float y = 10.0f;
        const char* const text = "AVg \xC3\xA4\xE2\x80\xA6\xFF";
        const float advance = face.drawString(text, x, y, scale, std::abs(scale), -1.0f, -1.0f);
        require(std::isfinite(advance), "text has a length");
        require(advance == face.measureString(text, scale), "text is as long as measured");
    }
    require(gl.errors().empty(), "text makes no OpenGL error");
    require(gl.pushed() == 0, "text leaves nothing pushed");
    face.release();
    require(gl.textures() == 0, "a face takes its texture with it");
    return 0;
}
