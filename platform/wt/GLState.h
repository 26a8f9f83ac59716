#pragma once

#include "platform/ffont/FixedFunction.h"

namespace wt {

/// Sets GL up for the toolkit: fixed function, blending, screen units, and nothing drawn outside the
/// viewport. Its destructor restores all state that it or the drawing in between has changed.
class GLState {
public:
    GLState();
    GLState(const GLState&) = delete;
    GLState& operator=(const GLState&) = delete;
    ~GLState();

private:
    FixedFunction noProgram;
    bool colorSumBefore;
};

}  // namespace wt
