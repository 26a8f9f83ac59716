#include "platform/wt/Defaults.h"

#include "platform/wt/Symbols.h"
#include "platform/wt/Text.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtWindowManager.h"

namespace wt {

float wtDefaults::Window::alpha = 1.0f;
float wtDefaults::Window::shadowOffsX = 0.0f;
float wtDefaults::Window::shadowOffsY = 0.0f;
GridGraphic wtDefaults::Window::shadow_bg;

void loadDefaults(int width, int height) {
    wtWindowManager::setViewport(width, height);
    text::loadTypeface();
    loadFragmentPrograms();

    wtDefaults::Window::alpha = 1.0f;
    wtDefaults::Window::shadowOffsX = theme().shadowOffsetX;
    wtDefaults::Window::shadowOffsY = theme().shadowOffsetY;
    Polygon shadow(makeQuad({0, 0}, {1, 1}));
    shadow.setShader(wtSymbols::fragProgs["solid_shader"]);
    shadow.setColor(theme().shadow);
    wtDefaults::Window::shadow_bg.init(1, 1);
    wtDefaults::Window::shadow_bg(0, 0) = shadow;
}

}  // namespace wt
