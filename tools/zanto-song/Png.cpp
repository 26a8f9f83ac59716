#include <cairo-ft.h>
#include <cairo.h>

#include <cmath>
#include <memory>

#include "tools/common/Command.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Page.h"

namespace {

constexpr double mostPixels = 32767.0;  // to a side, cairo's limit

using Surface = std::unique_ptr<cairo_surface_t, void (*)(cairo_surface_t*)>;
using Context = std::unique_ptr<cairo_t, void (*)(cairo_t*)>;

// The typeface of a file, for as long as this lives.
class Face {
public:
    explicit Face(const std::string& path) {
        if (FT_Init_FreeType(&library) != 0) {
            library = nullptr;
        } else if (FT_New_Face(library, path.c_str(), 0, &face) != 0) {
            face = nullptr;
        }
    }
    ~Face() {
        if (face != nullptr) {
            FT_Done_Face(face);
        }
        if (library != nullptr) {
            FT_Done_FreeType(library);
        }
    }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    FT_Face get() const { return face; }

private:
    FT_Library library = nullptr;
    FT_Face face = nullptr;
};

void expectSuccess(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw Failure(cairo_status_to_string(status));
    }
}

cairo_status_t append(void* text, const unsigned char* data, unsigned int length) {
    static_cast<std::string*>(text)->append(data, data + length);
    return CAIRO_STATUS_SUCCESS;
}

void choose(cairo_t* context, FT_Face face) {
    cairo_font_face_t* const chosen = cairo_ft_font_face_create_for_ft_face(face, 0);
    cairo_set_font_face(context, chosen);
    cairo_font_face_destroy(chosen);
}

void choose(cairo_t* context, const Page::Color& color) {
    cairo_set_source_rgb(context, color.red, color.green, color.blue);
}

void drawLines(cairo_t* context, const Page& page) {
    for (const Page::Line& line : page.lines) {
        choose(context, line.color);
        cairo_set_line_width(context, line.width);
        cairo_move_to(context, line.x1, line.y1);
        cairo_line_to(context, line.x2, line.y2);
        cairo_stroke(context);
    }
}

void drawTexts(cairo_t* context, const Page& page) {
    for (const Page::Text& text : page.texts) {
        const std::string clean = cleanUtf8(text.text);
        cairo_set_font_size(context, text.size);
        cairo_text_extents_t extents{};
        cairo_text_extents(context, clean.c_str(), &extents);
        const double share =
            text.anchor == Page::Anchor::start ? 0.0 : (text.anchor == Page::Anchor::end ? 1.0 : 0.5);
        choose(context, text.color);
        cairo_move_to(context, text.x - share * extents.x_advance, text.baseline);
        cairo_show_text(context, clean.c_str());
    }
}

}  // namespace

std::string toPng(const Page& page, double pixelsPerMillimetre, const std::string& facePath) {
    const double width = std::ceil(page.width * pixelsPerMillimetre);
    const double height = std::ceil(page.height * pixelsPerMillimetre);
    if (width > mostPixels || height > mostPixels) {
        throw Failure("the song is too long for one PNG picture; SVG has no such limit");
    }
    // Longer than the context, whose font refers to it.
    const Face face(facePath);
    if (face.get() == nullptr) {
        throw Failure("the typeface " + facePath + " cannot be read");
    }
    const Surface surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height)),
        cairo_surface_destroy);
    {
        const Context context(cairo_create(surface.get()), cairo_destroy);
        choose(context.get(), page.background);
        cairo_paint(context.get());
        cairo_scale(context.get(), pixelsPerMillimetre, pixelsPerMillimetre);
        choose(context.get(), face.get());
        drawLines(context.get(), page);
        drawTexts(context.get(), page);
        expectSuccess(cairo_status(context.get()));
    }
    std::string png;
    expectSuccess(cairo_surface_write_to_png_stream(surface.get(), append, &png));
    return png;
}
