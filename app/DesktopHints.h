#pragma once

/// Tells an X11 desktop more about the window that OpenGL draws to: the class "zanto", by which the desktop
/// finds the desktop entry, the process, and the icon in the sizes of Images/icon-*.png. Asks for at least
/// 320x240 pixels and for 4:3 or wider, because the score leaves a narrower picture. Desktops may ignore
/// all of it. Does nothing if the window is not an X11 window.
void giveDesktopHints();
