#pragma once

namespace wt {

/// While it lives, GL is set up for the toolkit: fixed function, blending, screen units, nothing drawn
/// outside the viewport. Every piece of state that it or the drawing between changes comes back with its end.
class GLState {
public:
    GLState();
    GLState(const GLState&) = delete;
    GLState& operator=(const GLState&) = delete;
    ~GLState();

private:
    int programBefore = 0;
    bool colorSumBefore;
};

/// The toolkit's blend function: what is drawn over what was there, by its alpha.
void blendByAlpha();

}  // namespace wt
