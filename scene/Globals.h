#pragma once

#include "scene/FFont.h"

/// What the whole process shares: the one font face, "Fonts/Vera.ttf" at size 24. The first call of
/// `getInstance()` loads it, so it is made once there is a GL context (a face loaded without one is harmless,
/// but draws nothing).
///
///     FFont font = Globals::getInstance().getScoreFont();
class Globals {
public:
    static Globals& getInstance();
    Globals(const Globals&) = delete;
    Globals& operator=(const Globals&) = delete;

    /// At scale 1, white. What is changed on the reference is changed for everyone who copies it later.
    FFont& getDefaultFont();

    /// A new handle on the same face at half size.
    FFont getScoreFont();

private:
    Globals();

    FFont defaultFont;
};
