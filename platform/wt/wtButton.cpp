#include "platform/wt/wtButton.h"

#include <algorithm>
#include <cmath>

#include "platform/wt/Align.h"
#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Text.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtWindowManager.h"

namespace wt {
namespace {

constexpr float outlineShade = 0.45f;  // how much darker the outline is
constexpr float shadowDepthEm = 0.12f;
constexpr float textInsetEm = 0.3f;
const Color white(1, 1, 1);
const Color black(0, 0, 0);

}  // namespace

wtButton::wtButton(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                   const tavi::Vec2<float>& size_, const std::string& label_)
    : wtWidget(name, pos, size_, 0), label(label_), pressed(std::make_shared<PressedSignal>()) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

void wtButton::setText(const std::string& text) {
    label = text;
    invalidateLayout();
}

boost::signals2::connection wtButton::connectButtonPressed(const PressedSignal::slot_type& slot) {
    return pressed->connect(slot);
}

SizeHint wtButton::sizeHint() const {
    const Theme& t = theme();
    const float em = emPixels();
    const float textWidth =
        std::ceil(text::width(label, em)) * screen().pixelX() + 2 * emsX(t.buttonPaddingEm);
    const tavi::Vec2<float> own(std::max(textWidth, emsX(t.buttonLeastWidthEm)), emsY(t.buttonHeightEm));
    const tavi::Vec2<float> least(wantedSize.x < 0 ? own.x : std::min(own.x, wantedSize.x),
                                  wantedSize.y < 0 ? own.y : std::min(own.y, wantedSize.y));
    return {least, {wantedSize.x < 0 ? own.x : wantedSize.x, wantedSize.y < 0 ? own.y : wantedSize.y}};
}

void wtButton::draw() {
    const Theme& t = theme();
    const float em = emPixels();
    const float radius = t.cornerEm * em;
    const Rect face = rect();
    Color ground = t.buttonDisabled;
    Color ink = t.buttonTextDisabled;
    if (isEnabled() != 0) {
        ground = mix(mix(t.button, t.buttonHover, hoverFade.value()), t.buttonPressed, pressFade.value());
        ink = t.buttonText;
        const float depth = std::max(1.0f, std::round(em * shadowDepthEm)) * screen().pixelY();
        const Color shadow = t.buttonShadow.faded(alpha * (1 - pressFade.value()));
        paint::fillRounded({face.x, face.y - depth, face.w, face.h}, radius, shadow, shadow);
    }
    ground = ground.faded(alpha);
    const Color top = mix(ground, white.faded(alpha), t.buttonSheen * (1 - pressFade.value()));
    paint::fillRounded(face, radius, ground, top);
    paint::strokeRounded(face, radius, 1, mix(ground, black.faded(alpha), outlineShade));
    text::draw(label, face.inset(emsX(textInsetEm), 0), alignCentreX | alignCentreY, em, ink);
}

void wtButton::animate() {
    hoverFade.animate();
    pressFade.animate();
}

void wtButton::setShowing(int showing) {
    wtWidget::setShowing(showing);
    hoverFade.jump(false);
    pressFade.jump(false);
}

bool wtButton::press(const tavi::Vec2<float>&) {
    arm(true);
    return true;
}

void wtButton::drag(const tavi::Vec2<float>& point) {
    arm(covers(point));
}

void wtButton::release(const tavi::Vec2<float>& point) {
    arm(false);
    if (covers(point)) {
        wtWindowManager::defer([signal = pressed] { (*signal)(); });
    }
}

void wtButton::cancel() {
    arm(false);
}

void wtButton::hover(const tavi::Vec2<float>&) {
    hoverFade.set(true);
}

void wtButton::leave() {
    hoverFade.set(false);
}

void wtButton::arm(bool on) {
    // A press shows immediately, a release fades.
    if (on) {
        pressFade.jump(true);
    } else {
        pressFade.set(false);
    }
}

}  // namespace wt
