#include "platform/wt/Polygon.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>

#include "platform/wt/Screen.h"
#include "platform/wt/Texture.h"
#include "platform/wt/Theme.h"

namespace wt {
namespace {

Rect boundsOf(const std::vector<tavi::Vec2<float>>& points) {
    if (points.empty()) {
        return {};
    }
    tavi::Vec2<float> low = points.front();
    tavi::Vec2<float> high = low;
    for (const tavi::Vec2<float>& p : points) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    return {low.x, low.y, high.x - low.x, high.y - low.y};
}

}  // namespace

std::vector<tavi::Vec2<float>> makeQuad(const tavi::Vec2<float>& origin, const tavi::Vec2<float>& size) {
    return {origin,
            {origin.x + size.x, origin.y},
            {origin.x + size.x, origin.y + size.y},
            {origin.x, origin.y + size.y}};
}

Polygon::Polygon(const std::vector<tavi::Vec2<float>>& corners) : points(corners) {
}

Polygon::Layer* Polygon::layer(int unit) {
    if (unit < 0 || unit >= textureUnits) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(unit);
    layers.resize(std::max(layers.size(), index + 1));
    return &layers[index];
}

void Polygon::setTexture(tavi::Image<unsigned char>& image, int unit) {
    if (Layer* const target = layer(unit)) {
        auto texture = std::make_shared<const Texture>(image);
        target->texture = *texture ? std::move(texture) : nullptr;
    }
}

void Polygon::setTextureCoords(const std::vector<tavi::Vec2<float>>& coordinates, int unit) {
    if (Layer* const target = layer(unit)) {
        target->coordinates = coordinates;
    }
}

tavi::Vec2<float> Polygon::extent() const {
    const Rect box = boundsOf(points);
    return {box.w, box.h};
}

bool Polygon::hasTexture() const {
    return std::any_of(layers.begin(), layers.end(), [](const Layer& l) { return l.texture != nullptr; });
}

Color Polygon::fill() const {
    const Color base = color.value_or(hasTexture() ? Color(1, 1, 1) : theme().solid);
    return base.faded(alpha);
}

void Polygon::draw(const Rect& target, float opacity) const {
    const Rect box = boundsOf(points);
    const Color c = fill().faded(opacity);
    if (box.w <= 0 || box.h <= 0 || c.a <= 0) {
        return;
    }
    for (std::size_t unit = 0; unit < layers.size(); ++unit) {
        if (layers[unit].texture) {
            glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
            glEnable(GL_TEXTURE_2D);
            const Rect part = boundsOf(layers[unit].coordinates);
            layers[unit].texture->bind(
                {target.w / screen().pixelX() / part.w, target.h / screen().pixelY() / part.h});
        }
    }
    if (shader != 0) {
        glUseProgram(shader);
    }
    glColor4f(c.r, c.g, c.b, c.a);
    glBegin(GL_POLYGON);
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t unit = 0; unit < layers.size(); ++unit) {
            const auto& coordinates = layers[unit].coordinates;
            const tavi::Vec2<float> st = i < coordinates.size() ? coordinates[i] : tavi::Vec2<float>();
            glMultiTexCoord2f(GL_TEXTURE0 + static_cast<GLenum>(unit), st.x, st.y);
        }
        glVertex2f(target.x + (points[i].x - box.x) / box.w * target.w,
                   target.y + (points[i].y - box.y) / box.h * target.h);
    }
    glEnd();
    if (shader != 0) {
        glUseProgram(0);
    }
    for (std::size_t unit = 0; unit < layers.size(); ++unit) {
        glActiveTexture(GL_TEXTURE0 + static_cast<GLenum>(unit));
        glDisable(GL_TEXTURE_2D);
    }
    glActiveTexture(GL_TEXTURE0);
}

}  // namespace wt
