#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/timage/Image.h"
#include "platform/tmath/Vec2.h"
#include "platform/wt/Color.h"
#include "platform/wt/Rect.h"

namespace wt {

class Texture;

/// The corners of the upright rectangle at `origin` with `size`, counter-clockwise from its lower left one.
std::vector<tavi::Vec2<float>> makeQuad(const tavi::Vec2<float>& origin, const tavi::Vec2<float>& size);

/// A filled convex polygon: one colour, an opacity, and at will a picture or a fragment program. A value:
/// copies share the uploaded picture, which is freed with the last of them.
///
///     wt::Polygon cell(wt::makeQuad({0, 0}, {1, 1}));
///     cell.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
///     cell.setColor(tavi::Vec3<float>(0.9F, 0.9F, 1.0F));
///     cell.setAlpha(0.9F);
///
/// Without a colour of its own a polygon takes the theme's `solid`; a picture then keeps its own colours.
class Polygon {
public:
    Polygon() = default;
    explicit Polygon(const std::vector<tavi::Vec2<float>>& corners);

    /// A GL program used while drawing; 0, the initial value, is the fixed function.
    void setShader(unsigned int program) { shader = program; }
    void setColor(const Color& color_) { color = color_; }
    /// Opacity, 0 to 1; initially 1.
    void setAlpha(float alpha_) { alpha = alpha_; }

    /// Uploads the image at once for texture unit `unit` (0 to 3; any other is ignored). An
    /// empty image, or one that GL refuses, leaves the unit without a picture.
    void setTexture(tavi::Image<unsigned char>& image, int unit);
    /// One coordinate for each corner in their order; corners past the list's end have (0, 0).
    void setTextureCoords(const std::vector<tavi::Vec2<float>>& coordinates, int unit);

    /// Width and height of the corners' bounding box.
    tavi::Vec2<float> extent() const;
    /// The colour and opacity that it draws with; white where a picture shows its own colours.
    Color fill() const;
    /// Whether a picture covers it.
    bool hasTexture() const;

    /// Draws it with its bounding box stretched over `target`, its opacity multiplied by `opacity`. A picture
    /// is sharpest where the target's edges lie between pixels.
    void draw(const Rect& target, float opacity) const;
    /// It will not be drawn for a while: its pictures give back the memory that drawing them takes.
    void putAway() const;

private:
    struct Layer {
        std::shared_ptr<const Texture> texture;
        std::vector<tavi::Vec2<float>> coordinates;
    };
    Rect bounds() const;
    Layer* layer(int unit);
    bool coversBox(const Layer& layer) const;
    bool isPlainPicture(const Color& tint) const;
    void bindTextures(const Rect& target) const;

    std::vector<tavi::Vec2<float>> points;
    std::optional<Color> color;
    float alpha = 1.0F;
    unsigned int shader = 0;
    std::vector<Layer> layers;
};

}  // namespace wt
