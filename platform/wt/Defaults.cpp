#include "platform/wt/Defaults.h"

#include "platform/wt/Symbols.h"
#include "platform/wt/wtWindowManager.h"

namespace wt {

float wtDefaults::Window::alpha = 1.0F;
float wtDefaults::Window::shadowOffsX = 0.0F;
float wtDefaults::Window::shadowOffsY = 0.0F;
GridGraphic wtDefaults::Window::shadow_bg;

void loadDefaults(int width, int height) {
    wtWindowManager::setViewport(width, height);
    loadFragmentPrograms();
}

}  // namespace wt
