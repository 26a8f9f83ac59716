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

/// A filled convex polygon: a colour, an opacity, and optionally a picture or a fragment program. A value:
/// copies share the uploaded picture, which is freed with the last copy.
///
///     wt::Polygon cell(wt::makeQuad({0, 0}, {1, 1}));
///     cell.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
///     cell.setColor(tavi::Vec3<float>(0.9f, 0.9f, 1.0f));
///     cell.setAlpha(0.9f);
///
/// Without a colour of its own a polygon takes the theme's `solid`; a picture then keeps its own colours.
class Polygon {
public:
    /// The texture units that it can use, from 0 on; the game uses one.
    static constexpr int textureUnits = 4;

    Polygon() = default;
    explicit Polygon(const std::vector<tavi::Vec2<float>>& corners);

    /// A GL program used while drawing; 0, the initial value, is the fixed function.
    void setShader(unsigned int program) { shader = program; }
    void setColor(const Color& color_) { color = color_; }
    /// Opacity, 0 to 1; initially 1.
    void setAlpha(float alpha_) { alpha = alpha_; }

    /// Uploads the image immediately for texture unit `unit`, below `textureUnits`; any other is ignored.
    /// With an empty image, or one that GL refuses, the unit has no picture.
    void setTexture(tavi::Image<unsigned char>& image, int unit);
    /// One coordinate for each corner, in order; corners past the end of the list have (0, 0).
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

private:
    struct Layer {
        std::shared_ptr<const Texture> texture;
        std::vector<tavi::Vec2<float>> coordinates;
    };
    Layer* layer(int unit);

    std::vector<tavi::Vec2<float>> points;
    std::optional<Color> color;
    float alpha = 1.0f;
    unsigned int shader = 0;
    std::vector<Layer> layers;
};

}  // namespace wt
