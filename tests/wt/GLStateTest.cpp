#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <list>
#include <string>

#include "tests/support/GLStates.h"
#include "tests/wt/DrawnStage.h"

namespace {

/// Changes nearly every GL state from its first value.
void disturb(unsigned int program) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glMatrixMode(GL_PROJECTION);
    glFrustum(-0.1, 0.1, -0.1, 0.1, 0.1, 100);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(1, 2, -10);
    glRotatef(30, 1, 1, 0);
    glActiveTexture(GL_TEXTURE1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glClientActiveTexture(GL_TEXTURE1);
    glActiveTexture(GL_TEXTURE0);
    glMatrixMode(GL_TEXTURE);
    glScalef(0.3f, 0.2f, 1);
    glEnable(GL_TEXTURE_2D);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL);
    glActiveTexture(GL_TEXTURE1);
    glUseProgram(program);
    for (const GLenum capability : std::initializer_list<GLenum>{
             GL_ALPHA_TEST, GL_CULL_FACE, GL_DEPTH_TEST, GL_FOG, GL_LIGHTING, GL_LINE_SMOOTH, GL_LINE_STIPPLE,
             GL_SCISSOR_TEST, GL_STENCIL_TEST, GL_CLIP_PLANE3, GL_COLOR_SUM, GL_TEXTURE_GEN_S}) {
        glEnable(capability);
    }
    glAlphaFunc(GL_NEVER, 0);
    glStencilFunc(GL_NEVER, 0, 0);
    glDepthFunc(GL_NEVER);
    glCullFace(GL_FRONT_AND_BACK);
    glLineStipple(1, 0x1111);
    const std::array<double, 4> nothing = {0, 0, 0, -1};
    glClipPlane(GL_CLIP_PLANE3, nothing.data());
    glScissor(3, 4, 5, 6);
    glBlendFunc(GL_ONE, GL_ONE);
    glBlendEquation(GL_FUNC_SUBTRACT);
    glColorMask(GL_FALSE, GL_TRUE, GL_FALSE, GL_TRUE);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    glShadeModel(GL_FLAT);
    glLineWidth(5);
    glPointSize(3);
    glColor4f(0.1f, 0.2f, 0.3f, 0.4f);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 17);
    glEnableClientState(GL_COLOR_ARRAY);
}

class GLStateTest : public DrawnStage {
protected:
    void SetUp() override {
        Stage::SetUp();
        build();
    }
    static void build() {
        wt::wtWindow* panel = window("panel", {-0.8f, -0.8f, 1.6f, 1.6f}, 0x101);
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(new wt::wtButton(panel, "button", {0, 0}, {-1, -1}, "Button"), attributes(0.01f, 1));
        layout->add(new wt::wtStaticText(panel, "text", {0, 0}, {0.6f, 0.1f}, "text", 0x24),
                    attributes(0.01f, 1));
        auto* list = new wt::wtListBox(panel, "list", {0, 0}, {0.5f, 0.5f});
        std::list<std::string> rows(40, "Row");
        list->append(rows);
        layout->add(list, attributes(0.01f, 1));
        panel->setLayoutManager(layout);

        tavi::Image<unsigned char> image(5, 3, 3);
        for (int i = 0; i < 45; ++i) {
            image.data()[i] = static_cast<unsigned char>(i * 5);
        }
        wt::Polygon textured(wt::makeQuad({0, 0}, {1, 1}));
        textured.setTexture(image, 0);
        textured.setTextureCoords({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, 0);
        wt::GridGraphic grid = oneCell(textured);
        grid.setBorder(1);
        window("pictured", {-0.9f, 0.4f, 0.5f, 0.5f})->setBackground(grid);
    }
};

TEST_F(GLStateTest, EverythingIsAsItWasAfterLoadingUploadingAndDrawing) {
    for (const char* program : {"", "solid_shader"}) {
        disturb(wt::wtSymbols::fragProgs[program]);
        const auto before = readGLState();
        wt::loadDefaults(screenWidth, screenHeight);
        build();
        EXPECT_EQ(readGLState(), before);
        wt::wtWindowManager::displayWidgets();
        EXPECT_EQ(readGLState(), before);
    }
}

TEST_F(GLStateTest, PictureDoesNotDependOnTheStateThatItFinds) {
    draw();
    const tavi::Image<unsigned char> plain = picture;
    glClear(GL_COLOR_BUFFER_BIT);
    disturb(wt::wtSymbols::fragProgs["solid_shader"]);
    wt::wtWindowManager::displayWidgets();
    picture = gl.read();
    EXPECT_TRUE(std::equal(plain.data(), plain.data() + screenWidth * screenHeight * 4, picture.data()));
}

TEST_F(GLStateTest, DrawingWithinTheWidgetsMayLeaveAnythingBehind) {
    class Careless : public wt::wtWidget {
    public:
        Careless() : wtWidget("careless", {0, 0}, {1, 1}, 0) {}
        void draw() override {
            glDisable(GL_BLEND);
            glEnable(GL_TEXTURE_2D);
            glLineWidth(9);
            glColor4f(0, 1, 0, 1);
            glShadeModel(GL_FLAT);
        }
    };
    wt::wtWindowManager::appendWidget(new Careless);
    const auto before = readGLState();
    wt::wtWindowManager::displayWidgets();
    EXPECT_EQ(readGLState(), before);
}

}  // namespace
