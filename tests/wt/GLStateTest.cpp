#include <GL/gl.h>
#include <GL/glext.h>

#include <array>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "tests/support/OffscreenGL.h"
#include "tests/wt/Stage.h"

namespace {

constexpr GLenum capabilities[] = {
    GL_ALPHA_TEST,     GL_BLEND,         GL_CLIP_PLANE0,         GL_CLIP_PLANE3,
    GL_COLOR_LOGIC_OP, GL_CULL_FACE,     GL_DEPTH_TEST,          GL_FOG,
    GL_LIGHTING,       GL_LINE_SMOOTH,   GL_LINE_STIPPLE,        GL_POLYGON_STIPPLE,
    GL_SCISSOR_TEST,   GL_STENCIL_TEST,  GL_TEXTURE_1D,          GL_TEXTURE_2D,
    GL_TEXTURE_GEN_S,  GL_TEXTURE_GEN_T, GL_COLOR_SUM,           GL_NORMALIZE,
    GL_VERTEX_ARRAY,   GL_COLOR_ARRAY,   GL_TEXTURE_COORD_ARRAY, GL_NORMAL_ARRAY};

constexpr GLenum values[] = {GL_ACTIVE_TEXTURE,
                             GL_ARRAY_BUFFER_BINDING,
                             GL_BLEND_DST_ALPHA,
                             GL_BLEND_DST_RGB,
                             GL_BLEND_EQUATION_RGB,
                             GL_BLEND_SRC_ALPHA,
                             GL_BLEND_SRC_RGB,
                             GL_CLIENT_ACTIVE_TEXTURE,
                             GL_COLOR_WRITEMASK,
                             GL_CURRENT_COLOR,
                             GL_CURRENT_PROGRAM,
                             GL_CURRENT_TEXTURE_COORDS,
                             GL_DEPTH_WRITEMASK,
                             GL_LINE_WIDTH,
                             GL_MATRIX_MODE,
                             GL_MODELVIEW_MATRIX,
                             GL_MODELVIEW_STACK_DEPTH,
                             GL_POINT_SIZE,
                             GL_POLYGON_MODE,
                             GL_PROJECTION_MATRIX,
                             GL_PROJECTION_STACK_DEPTH,
                             GL_SCISSOR_BOX,
                             GL_SHADE_MODEL,
                             GL_TEXTURE_BINDING_2D,
                             GL_TEXTURE_MATRIX,
                             GL_TEXTURE_STACK_DEPTH,
                             GL_UNPACK_ALIGNMENT,
                             GL_UNPACK_ROW_LENGTH,
                             GL_VIEWPORT,
                             GL_ATTRIB_STACK_DEPTH,
                             GL_CLIENT_ATTRIB_STACK_DEPTH};

using State = std::map<GLenum, std::vector<double>>;

State readState() {
    State state;
    for (const GLenum capability : capabilities) {
        state[capability] = {static_cast<double>(glIsEnabled(capability))};
    }
    for (const GLenum value : values) {
        std::array<double, 16> numbers{};
        glGetDoublev(value, numbers.data());
        state[value].assign(numbers.begin(), numbers.end());
    }
    GLint environment = 0;
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &environment);
    state[GL_TEXTURE_ENV_MODE] = {static_cast<double>(environment)};
    return state;
}

/// Leaves hardly anything as GL has it at first.
void disturb(unsigned int program, unsigned int texture) {
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
    glScalef(0.3F, 0.2F, 1);
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
    glColor4f(0.1F, 0.2F, 0.3F, 0.4F);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 2);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 17);
    glEnableClientState(GL_COLOR_ARRAY);
}

class GLStateTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        build();
    }
    void TearDown() override {
        EXPECT_TRUE(gl.noErrors());
        Stage::TearDown();
    }
    static void build() {
        wt::wtWindow* panel = window("panel", {-0.8F, -0.8F, 1.6F, 1.6F}, 0x101);
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(new wt::wtButton(panel, "button", {0, 0}, {-1, -1}, "Button"), attributes(0.01F, 1));
        layout->add(new wt::wtStaticText(panel, "text", {0, 0}, {0.6F, 0.1F}, "text", 0x24),
                    attributes(0.01F, 1));
        auto* list = new wt::wtListBox(panel, "list", {0, 0}, {0.5F, 0.5F});
        std::list<std::string> rows(40, "Row");
        list->append(rows);
        layout->add(list, attributes(0.01F, 1));
        panel->setLayoutManager(layout);

        tavi::Image<unsigned char> image(5, 3, 3);
        for (int i = 0; i < 45; ++i) {
            image.data()[i] = static_cast<unsigned char>(i * 5);
        }
        wt::GridGraphic grid(1, 1);
        grid(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {1, 1}));
        grid(0, 0).setTexture(image, 0);
        grid(0, 0).setTextureCoords({{0, 1}, {1, 1}, {1, 0}, {0, 0}}, 0);
        grid.setBorder(1);
        wt::wtWindow* pictured = window("pictured", {-0.9F, 0.4F, 0.5F, 0.5F});
        pictured->setBackground(grid);
    }

    void expectSameInDisturbedState(const tavi::Image<unsigned char>& plain) {
        glClear(GL_COLOR_BUFFER_BIT);
        GLuint texture = 0;
        glGenTextures(1, &texture);
        disturb(wt::linkedProgram(wt::wtSymbols::fragProgs["solid_shader"]), texture);
        wt::wtWindowManager::displayWidgets();
        const tavi::Image<unsigned char> disturbed = gl.read();
        EXPECT_TRUE(
            std::equal(plain.data(), plain.data() + screenWidth * screenHeight * 4, disturbed.data()));
    }

    OffscreenGL gl{screenWidth, screenHeight};
};

TEST_F(GLStateTest, EverythingIsAsItWasAfterDrawing) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    disturb(wt::linkedProgram(wt::wtSymbols::fragProgs["solid_shader"]), texture);
    const State before = readState();
    wt::wtWindowManager::displayWidgets();
    const State after = readState();
    for (const auto& [name, value] : before) {
        EXPECT_EQ(after.at(name), value) << "0x" << std::hex << name;
    }
}

TEST_F(GLStateTest, EverythingIsAsItWasAfterLoadingAndUploading) {
    GLuint texture = 0;
    glGenTextures(1, &texture);
    disturb(0, texture);
    const State before = readState();
    wt::loadDefaults(screenWidth, screenHeight);
    build();
    const State after = readState();
    for (const auto& [name, value] : before) {
        EXPECT_EQ(after.at(name), value) << "0x" << std::hex << name;
    }
}

TEST_F(GLStateTest, PictureDoesNotDependOnTheStateThatItFinds) {
    wt::wtWindowManager::displayWidgets();
    const tavi::Image<unsigned char> plain = gl.read();
    expectSameInDisturbedState(plain);
}

TEST_F(GLStateTest, FittingAPictureDoesNotDependOnTheStateThatItFinds) {
    wt::wtWindowManager::displayWidgets();
    const tavi::Image<unsigned char> plain = gl.read();
    // Fitted to another size, and seen once in the first one, it is fitted anew in the next frame.
    glViewport(0, 0, screenWidth / 2, screenHeight / 2);
    wt::wtWindowManager::displayWidgets();
    wt::wtWindowManager::displayWidgets();
    glViewport(0, 0, screenWidth, screenHeight);
    wt::wtWindowManager::displayWidgets();
    expectSameInDisturbedState(plain);
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
    const State before = readState();
    wt::wtWindowManager::displayWidgets();
    EXPECT_EQ(readState(), before);
}

}  // namespace
