#pragma once

/// Tells an X11 desktop what a window has beside its title: the class "zanto", by which the desktop entry is
/// found, the process, the icon in the sizes that Images/icon-*.png has, and that it should be no smaller
/// than 320x240 pixels and no narrower than 4:3, where the score would leave the picture. Speaks of the
/// window that OpenGL draws to; does nothing where that is none of X11. Desktops are free to ignore all of
/// it.
void giveDesktopHints();
